#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <sstream>

#include "core/MachineSettings.h"
#include "tests/tools/TemporaryFolder.h"
#include "text/RuntimeError.h"
#include "tools/Commands.h"

namespace bw {
namespace {

constexpr const char* kKey = "SOFTWARE\\Fenmoor Systems\\Brantiwell PC";
constexpr const char* kFile = "Fenmoor Systems/Brantiwell PC.ini";

// Machine settings in two folders of the test.
class RegisterTest : public testing::Test {
 protected:
  RegisterTest() {
    if (const char* set = std::getenv("XDG_CONFIG_DIRS")) before_ = set;
    const std::string dirs =
        "relative:" + (folder_ / "first").string() + "::" + (folder_ / "second").string();
    setenv("XDG_CONFIG_DIRS", dirs.c_str(), 1);
  }
  ~RegisterTest() override {
    if (before_)
      setenv("XDG_CONFIG_DIRS", before_->c_str(), 1);
    else
      unsetenv("XDG_CONFIG_DIRS");
  }
  static std::string text(const char* name, const char* key = kKey) {
    const auto value = readMachineSetting(key, name);
    return value ? std::get<std::string>(*value) : "(none)";
  }

  TemporaryFolder folder_;
  std::optional<std::string> before_;
};

TEST_F(RegisterTest, WritesTheAbsolutePathForAllToRead) {
  std::ostringstream out;
  createDatabase(folder_ / "office.db", out);
  const std::filesystem::path crooked =
      std::filesystem::relative(folder_ / "office.db").parent_path() / "." / "office.db";
  ASSERT_EQ(registerDatabase(crooked, out), Exit::done);
  EXPECT_EQ(text("Database"), (folder_ / "office.db").string());
  using enum std::filesystem::perms;
  EXPECT_EQ(status(folder_ / "first" / kFile).permissions(),
            owner_read | owner_write | group_read | others_read);
  EXPECT_EQ(status((folder_ / "first" / kFile).parent_path()).permissions(),
            owner_all | group_read | group_exec | others_read | others_exec);

  EXPECT_THROW(registerDatabase(folder_ / "none.db", out), RuntimeError);
  folder_.write("foreign.db", "");
  folder_.write("foreign.dw", "");
  EXPECT_THROW(registerDatabase(folder_ / "foreign.db", out), Refused);
  // Whatever the program would not open.
  EXPECT_THROW(registerDatabase(folder_.path(), out), RuntimeError);
  createDatabase(folder_ / "a;b.db", out);
  EXPECT_THROW(registerDatabase(folder_ / "a;b.db", out), Refused);
  createDatabase(folder_ / "other.db", out);
  folder_.write("other.dw", "rubbish");
  EXPECT_THROW(registerDatabase(folder_ / "other.db", out), Refused);
  std::filesystem::remove(folder_ / "office.dw");
  EXPECT_THROW(registerDatabase(folder_ / "office.db", out), Refused);
  EXPECT_EQ(text("Database"), (folder_ / "office.db").string());
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
