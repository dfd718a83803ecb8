#include <sys/wait.h>
#include <unistd.h>

#include "tests/tools/ToolsTest.h"
#include "tools/Copies.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

class BackupTest : public ToolsTest {
 protected:
  BackupTest() { makePractice(); }

  Exit backUp() {
    out_.str("");
    now_.time.second += 1;
    return backUpDatabase(file_, copiesFolder_, now_, out_);
  }
  std::vector<Copy> copies() const { return copiesIn(copiesFolder_, file_); }
  void change(int number) const { run(concat("UPDATE Doctors SET Description = 'd", number, "'")); }
  std::string doctor() const { return cells("SELECT DISTINCT Description FROM Doctors"); }
  std::string verdicts() {
    out_.str("");
    listCopies(file_, copiesFolder_, out_);
    return out_.str();
  }
  // The last byte of a text that stands somewhere in a file.
  static void spoil(const fs::path& file, const std::string& text) {
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    stream.seekp(static_cast<std::streamoff>(content.find(text) + text.size() - 1));
    stream.put('?');
  }

  std::string copiesFolder_ = folder_ / "copies";
  DateTime now_{*makeDate(2026, 3, 1), {36000}};
};

TEST_F(BackupTest, ACopyIsPrivateCheckedAndNotMadeTwice) {
  change(1);
  // What the program has stored last stands in the log beside the file.
  const std::unique_ptr<Engine> program = openSqlite(file_);
  program->execute("UPDATE Doctors SET Description = 'in the log'");
  ASSERT_EQ(backUp(), Exit::done) << out_.str();
  EXPECT_EQ(backUp(), Exit::done);
  ASSERT_EQ(copies().size(), 1U);
  using enum fs::perms;
  EXPECT_EQ(fs::status(copiesFolder_).permissions(), owner_all);
  for (const fs::directory_entry& entry : fs::directory_iterator(copiesFolder_))
    EXPECT_EQ(entry.status().permissions(), owner_read | owner_write) << entry.path();
  EXPECT_EQ(copies().front().file.filename(), "office-2026-03-01-100001.db");
  EXPECT_EQ(contentOf(copies().front().file), contentOf(file_));
  EXPECT_TRUE(has(verdicts(), {"rows  good"}));

  // A copy that has gone bad counts no longer.
  spoil(copies().front().file, "in the log");
  EXPECT_TRUE(has(verdicts(), {"not good: "}));
  EXPECT_EQ(backUp(), Exit::done);
  EXPECT_EQ(copies().size(), 2U);
}

TEST_F(BackupTest, RestoringKeepsWhatWasThereAndWaitsForThePrograms) {
  change(1);
  backUp();
  const std::string copy = copies().front().file;
  change(2);
  {
    const std::unique_ptr<Engine> mine = openSqlite(file_);
    const pid_t other = fork();
    if (other == 0)
      _exit(refusalOf([&] { restoreDatabase(copy, file_, now_, out_); }).empty() ? 0 : 1);
    int status = 0;
    waitpid(other, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 1);
  }
  EXPECT_EQ(doctor(), "d2|");
  folder_.write("office.db-wal", "what an office without its database left");
  ASSERT_EQ(restoreDatabase(copy, file_, now_, out_), Exit::done) << out_.str();
  EXPECT_EQ(doctor(), "d1|");
  spoil(copy, "d1");
  EXPECT_THROW(restoreDatabase(copy, file_, now_, out_), Refused);
  EXPECT_EQ(doctor(), "d1|");
  file_ = folder_ / "office-before-2026-03-01-100001.db";
  EXPECT_TRUE(fs::remove(file_ + "-wal"));
  EXPECT_EQ(doctor(), "d2|");
}

TEST_F(BackupTest, TwentyStayAndTheLastOfEachMonth) {
  std::vector<Copy> copies;
  for (const char* month : {"2025-11", "2025-12", "2026-01"})
    for (int day = 10; day < 25; ++day)
      copies.push_back({fs::path(), concat(month, "-", day, "-120000")});
  std::string dropped;
  for (const Copy& copy : outlived(copies)) dropped += copy.moment.substr(5, 5) + " ";
  EXPECT_EQ(dropped,
            "12-19 12-18 12-17 12-16 12-15 12-14 12-13 12-12 12-11 12-10 11-23 11-22 11-21 11-20 "
            "11-19 11-18 11-17 11-16 11-15 11-14 11-13 11-12 11-11 11-10 ");
}

TEST_F(BackupTest, CheckTellsOfCopiesThatAreMissingOldOrNotWhole) {
  EXPECT_TRUE(has(checked(Exit::done), {"no copy"}));
  backUp();
  EXPECT_EQ(checked(Exit::done).find("copy"), std::string::npos);
  const fs::path sums = copies().front().sums();
  fs::last_write_time(sums, fs::file_time_type::clock::now() - std::chrono::hours(24 * 8));
  EXPECT_TRUE(has(checked(Exit::findings), {"copy is 8 days old"}));
  fs::remove(sums);
  EXPECT_TRUE(has(checked(Exit::findings), {"not whole", sums}));
}

TEST_F(BackupTest, MakesNoMoreThanOneFolder) {
  EXPECT_EQ(backUpDatabase(file_, folder_ / "mistyped/copies", now_, out_), Exit::unavailable);
  EXPECT_FALSE(fs::exists(folder_ / "mistyped"));
}

}  // namespace
}  // namespace bw
