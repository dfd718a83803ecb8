#include <array>
#include <cstdlib>

#include "core/MachineSettings.h"
#include "tests/tools/ToolsTest.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

constexpr const char* kKey = "SOFTWARE\\Fenmoor Systems\\Brantiwell PC";
constexpr const char* kFile = "Fenmoor Systems/Brantiwell PC.ini";

// Machine settings in two folders of the test.
class RegisterTest : public ToolsTest {
 protected:
  RegisterTest() {
    const std::string dirs =
        "relative:" + (folder_ / "first").string() + "::" + (folder_ / "second").string();
    setenv("XDG_CONFIG_DIRS", dirs.c_str(), 1);
  }
  ~RegisterTest() override { unsetenv("XDG_CONFIG_DIRS"); }
  static std::string text(const char* name, const char* key = kKey) {
    const auto value = readMachineSetting(key, name);
    return value ? std::get<std::string>(*value) : "(none)";
  }
};

TEST_F(RegisterTest, WritesTheAbsolutePathForAllToRead) {
  createDatabase(file_, out_);
  const std::filesystem::path crooked =
      std::filesystem::relative(file_).parent_path() / "." / "office.db";
  ASSERT_EQ(registerDatabase(crooked, out_), Exit::done);
  EXPECT_EQ(text("Database"), file_);
  using enum std::filesystem::perms;
  const std::filesystem::path setting = folder_ / "first" / kFile;
  EXPECT_EQ(status(setting).permissions(), owner_read | owner_write | group_read | others_read);
  EXPECT_EQ(status(setting.parent_path()).permissions(),
            owner_all | group_read | group_exec | others_read | others_exec);
}

TEST_F(RegisterTest, WhatTheProgramWouldNotOpenIsNotRegistered) {
  for (const char* name : {"office.db", "a;b.db", "other.db", "lone.db"})
    createDatabase(folder_ / name, out_);
  registerDatabase(file_, out_);
  folder_.write("foreign.db", "");
  folder_.write("foreign.dw", "");
  folder_.write("other.dw", "rubbish");
  std::filesystem::remove(folder_ / "lone.dw");
  for (const char* name : {"none.db", "."})
    EXPECT_THROW(registerDatabase(folder_ / name, out_), RuntimeError) << name;
  for (const char* name : {"foreign.db", "a;b.db", "other.db", "lone.db"})
    EXPECT_THROW(registerDatabase(folder_ / name, out_), Refused) << name;
  EXPECT_EQ(text("Database"), file_);
}

TEST_F(RegisterTest, ReadsWithoutRegardToCaseFromTheFirstFolderThatHasIt) {
  folder_.write(std::string("second/") + kFile, "[General]\r\nDATABASE = /srv/b.db \r\nMail=x=y\n");
  folder_.write("first/fenmoor systems/BRANTIWELL PC.INI", "; Mail=no\nOther=dword:0000002A\n");
  EXPECT_EQ(text("database"), "/srv/b.db");
  EXPECT_EQ(text("Mail", "software\\FENMOOR SYSTEMS\\brantiwell pc"), "x=y");
  EXPECT_EQ(readMachineSetting(kKey, "Other"), MachineValue(std::uint32_t{42}));
  EXPECT_EQ(text("Missing"), "(none)");
  for (const char* key : {"SOFTWARE\\..\\second\\x", "SYSTEM\\Fenmoor Systems\\Brantiwell PC",
                          "SOFTWARE\\", "SOFTWARE\\A/B", "SOFTWARE\\Fenmoor Systems", ""})
    EXPECT_EQ(text("Database", key), "(none)") << key;

  // Stored where it stands, the other lines untouched.
  writeMachineSetting(kKey, "OTHER", std::string("new"));
  writeMachineSetting(kKey, "Database", std::string("/srv/a.db"));
  EXPECT_EQ(folder_.read("first/fenmoor systems/BRANTIWELL PC.INI"),
            "; Mail=no\nOTHER=new\nDatabase=/srv/a.db\n");
  EXPECT_EQ(text("Database"), "/srv/a.db");
}

TEST_F(RegisterTest, GivesBackWhatWasWritten) {
  const std::array<MachineValue, 8> values{std::uint32_t{0},     std::uint32_t{0xffffffffU},
                                           std::string(),        std::string("  a  "),
                                           std::string("\"q\""), std::string("dword:00000001"),
                                           std::string("a=b;c"), std::string("\"")};
  for (const MachineValue& value : values) {
    writeMachineSetting(kKey, "Value", value);
    EXPECT_EQ(readMachineSetting(kKey, "Value"), value)
        << folder_.read(std::string("first/") + kFile);
  }
  EXPECT_THROW(writeMachineSetting(kKey, "Value", std::string("two\nlines")), RuntimeError);
  EXPECT_THROW(writeMachineSetting("elsewhere", "Value", std::string("x")), RuntimeError);
}

}  // namespace
}  // namespace bw
