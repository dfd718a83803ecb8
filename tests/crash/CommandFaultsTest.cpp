#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <ranges>

#include "engine/Workgroup.h"
#include "tests/crash/Office.h"
#include "tools/Commands.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

const DateTime kNow{*makeDate(2026, 3, 1), {36000}};

// A command in a folder as CommandFaultsTest fills it.
struct Command {
  const char* name;
  Exit (*run)(const fs::path& folder, std::ostream& out);
};
// clang-format off
constexpr Command kCommands[] = {
    {"create", [](auto& f, auto& out) { return createDatabase(f / "new/a.db", out, {}, {.starter = true}); }},
    {"practice", [](auto& f, auto& out) { return createPractice(f / "a.db", kNow.date, out); }},
    {"load", [](auto& f, auto& out) { return loadTables(f / "office.db", f / "tables", out, nullptr); }},
    {"export", [](auto& f, auto& out) { return exportTables(f / "office.db", f / "out", TableForm::tabs, out); }},
    {"template", [](auto& f, auto& out) { return writeTemplates(f / "out", TableForm::commas, out); }},
    {"codes import", [](auto& f, auto& out) { return importCodes(f / "hcpcs.csv", f / "office.db", TextCode::utf8, out); }},
    {"copy", [](auto& f, auto& out) { return copyDatabase(f / "office.db", f / "a.db", out); }},
    {"upgrade", [](auto& f, auto& out) { return upgradeDatabase(f / "old.db", kNow, out); }},
    {"changelog", [](auto& f, auto& out) { return switchChangeLog(f / "office.db", false, out); }},
    {"history", [](auto& f, auto& out) { return pruneHistory(f / "office.db", *makeDate(2200, 1, 1), f / "lines", out); }},
    {"backup", [](auto& f, auto& out) { return backUpDatabase(f / "office.db", f / "copies", kNow, out); }},
    {"restore", [](auto& f, auto& out) { return restoreDatabase(f / "old.db", f / "office.db", kNow, out); }},
    {"register", [](auto& f, auto& out) { return registerDatabase(f / "office.db", out); }},
};
// clang-format on

constexpr std::array kPassedOver{".db-", ".new", ".before"};

using Files = std::map<std::string, std::string>;

std::string schemaOf(const std::string& database) {
  const std::unique_ptr<Engine> engine = openSqlite(database);
  std::string text;
  for (const char* query : {"SELECT sql FROM sqlite_schema", "PRAGMA user_version"}) {
    const std::shared_ptr<RowStore> rows = engine->read(query);
    for (std::size_t row = 0; row < rows->rowCount(); ++row)
      text += textOrEmpty(rows->columns[0].value(row)) + "\f";
  }
  if (engine->hasTable("ChangeLog"))
    text += concat(engine->read("SELECT 1 FROM ChangeLog")->rowCount(), " lines");
  return text;
}

class CommandFaultsTest : public CrashTest {
 protected:
  void SetUp() override {
    // Settings of this computer, of which one stands already.
    folder_.write("xdg/Fenmoor Systems/Brantiwell PC.ini", "Other=1\n");
    setenv("XDG_CONFIG_DIRS", (work_.path() / "xdg").c_str(), 1);
    std::ostringstream out;
    createDatabase(folder_ / "office.db", out, {}, {.changeLog = true});
    createDatabase(folder_ / "old.db", out);
    openSqlite(folder_ / "old.db")->execute("DROP INDEX ChargesByStatus");
    connect(file_);
    seedOffice();
    closeConnection();
    folder_.write("tables/Insurance.tsv",
                  "InsuranceCode\tDescription\tBillingInsuranceCode\n7\tSeven\t\n");
    folder_.write("hcpcs.csv", "HCPC,Long,Short\nJ1100,A long one,A\n");
    folder_.write("office.db.codes", "D\tE119\t1\tDiabetes\tDiabetes\n");
  }
  void TearDown() override { unsetenv("XDG_CONFIG_DIRS"); }

  void fillAnew() {
    for (const fs::directory_entry& entry : fs::directory_iterator(work_.path()))
      fs::remove_all(entry);
    fs::copy(folder_.path(), work_.path(), fs::copy_options::recursive);
  }

  // The files in the folder by their names, databases by all that is in them. What is begun means
  // nothing, what the engine puts beside a database goes with it, and an upgrade that fails keeps
  // the copy that it made.
  Files files() const {
    Files files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(work_.path())) {
      const std::string name = fs::relative(entry, work_.path());
      if (name.starts_with("copies/old")) continue;
      if (name.ends_with(".db"))
        files[name] = contentOf(entry.path()) + schemaOf(entry.path());
      else if (name.ends_with(".dw"))  // no two are alike
        files[name] = workgroupAdmits(entry.path(), "Kelps", "Kelps") ? "admits" : "refuses";
      else if (entry.is_regular_file() && std::ranges::none_of(kPassedOver, [&](auto part) {
                 return name.find(part) != name.npos;
               }))
        files[name] = work_.read(name);
    }
    return files;
  }

  // Whether it was done; `said_` is what it said.
  bool run(const Command& command) {
    std::ostringstream out;
    bool isDone = false;
    try {
      isDone = command.run(work_.path(), out) == Exit::done;
    } catch (const std::exception& error) {
      out << error.what();
    }
    said_ = out.str();
    return isDone;
  }
  bool runOn(const Fault& fault, const Command& command) {
    fillAnew();
    const FaultyDisk disk(fault);
    return run(command);
  }

  std::string faultOf(const Command& command, const Fault& fault) {
    const bool isDone = runOn(fault, command);
    const Files found = files();
    if (isDone) return found == after_ ? "" : "told as done, and is not: " + said_;
    const bool isSure = said_.find(refusalSentence(Refusal::unconfirmed)) == said_.npos;
    if (found != before_ && (isSure || found != after_)) return "not done, and changed: " + said_;
    if (found != after_ && !run(command)) return "does not work later: " + said_;
    return files() == after_ ? "" : "done later, and is not";
  }

  // What an end at the nth call has done to a file that is neither as before nor as after.
  std::string killAt(const Command& command, int nth) {
    fillAnew();
    const pid_t child = fork();
    if (child == 0) {
      dieAt(nth);
      run(command);
      _exit(0);
    }
    waitpid(child, nullptr, 0);
    const Files found = files();
    for (const auto& file : found) {
      const bool isKnown = before_.contains(file.first) || after_.contains(file.first);
      if (isKnown && std::ranges::count(before_, file) + std::ranges::count(after_, file) == 0)
        return "half-done: " + file.first;
    }
    // Another file may be on its way to another name.
    for (const auto& [name, content] : before_)
      if (!found.contains(name) &&
          (name.ends_with(".db") || std::ranges::count(std::views::values(found), content) == 0))
        return "gone: " + name;
    return "";
  }

  // Returns how many calls of each kind the command makes.
  std::array<int, kCalls> learn(const Command& command) {
    fillAnew();
    before_ = files();
    EXPECT_TRUE(runOn({}, command)) << command.name << ": " << said_;
    const std::array<int, kCalls> counts = FaultyDisk::counts();
    after_ = files();
    EXPECT_NE(before_, after_) << command.name;
    return counts;
  }

  std::string said_;
  TemporaryFolder work_;
  Files before_;
  Files after_;
};

TEST_F(CommandFaultsTest, WhatIsNotDoneLeavesAllAsItWas) {
  constexpr std::array kErrors{ENOSPC, EIO, EACCES};
  constexpr int kSample = 2;  // of the calls of a kind that a command makes
  int tried = 0;
  for (const Command& command : kCommands) {
    const std::array<int, kCalls> counts = learn(command);
    for (std::size_t call = 0; call < kCalls; ++call) {
      const int all = counts.at(call) * static_cast<int>(kErrors.size());
      const int step = isAllAskedFor() ? 1 : 1 + all / kSample;
      for (int place = step / 2; place < all; place += step, ++tried) {
        const int nth = 1 + place / static_cast<int>(kErrors.size());
        const int error = kErrors.at(static_cast<std::size_t>(place) % kErrors.size());
        EXPECT_EQ(faultOf(command, {static_cast<Call>(call), nth, error}), "")
            << command.name << ", kind " << call << ", call " << nth << ", error " << error;
      }
    }
  }
  std::cout << tried << " faults\n";
  EXPECT_GT(tried, 99);
}

// Or a power cut could leave the name with empty files behind it.
TEST_F(CommandFaultsTest, FilesOfAFolderAreOnTheDiskBeforeItHasItsName) {
  fillAnew();
  std::vector<Deed> deeds;
  std::ostringstream out;
  recordDeeds(&deeds);
  exportTables(work_ / "office.db", work_ / "out", TableForm::tabs, out);
  recordDeeds(nullptr);
  const std::string begun = concat((work_ / "out").string(), ".", getpid(), ".new");
  const auto isSynced = [&](const std::string& path) {
    return std::ranges::any_of(
        deeds, [&](const Deed& deed) { return deed.call == Call::sync && deed.path == path; });
  };
  EXPECT_TRUE(isSynced(begun));
  for (const fs::directory_entry& entry : fs::directory_iterator(work_ / "out"))
    EXPECT_TRUE(isSynced(concat(begun, "/", entry.path().filename().string()))) << entry;
}

TEST_F(CommandFaultsTest, AKillLeavesEveryFileAsItWasOrAsItIsToBe) {
  const int kills = askedFor(3);
  for (const Command& command : kCommands) {
    int calls = 0;
    for (const int count : learn(command)) calls += count;
    for (int kill = 0; kill < kills; ++kill)
      EXPECT_EQ(killAt(command, 1 + calls * kill / kills), "") << command.name << ", " << kill;
  }
}

}  // namespace
}  // namespace bw
