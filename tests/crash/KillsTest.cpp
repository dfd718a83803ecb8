#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <random>

#include "core/Principal.h"
#include "data/BWSQLInsurances.h"
#include "tests/crash/Office.h"

namespace bw {
namespace {

// A process that runs `work`, which tells lines to the other end of a pipe.
class Child {
 public:
  explicit Child(const std::function<void(int pipe)>& work) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    process_ = fork();
    if (process_ == 0) {
      work(ends[1]);
      _exit(0);
    }
    close(ends[1]);
    pipe_ = ends[0];
  }
  // All that it told until its end.
  Strings told() const {
    Strings lines;
    std::ifstream stream(concat("/proc/self/fd/", pipe_));
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    close(pipe_);
    waitpid(process_, nullptr, 0);
    return lines;
  }

 private:
  pid_t process_ = 0;
  int pipe_ = -1;
};

class KillsTest : public CrashTest {
 protected:
  void SetUp() override {
    makeAnew(file_);
    makeAnew(model_);
  }

  // The nth thing that is done to an office.
  int doNth(int n) {
    std::mt19937 random(static_cast<unsigned>(n));
    return call(writingRoutines()[random() % writingRoutines().size()], n);
  }

  // The results that were told until the kill.
  Strings resultsUntil(int callsToLive, int first) {
    constexpr int kMost = 12;
    return Child([&](int pipe) {
             dieAt(callsToLive);
             connect(file_);
             for (int n = first; n < first + kMost; ++n) dprintf(pipe, "%d\n", doNth(n));
             dieAt(1);  // between two of them
             write(pipe, "", 0);
           })
        .told();
  }

  // Brings the model to where the office is; false when the office is nowhere on its way. What was
  // being written at the kill may be stored.
  bool follow(const Strings& results, int& next) {
    const std::string found = contentOf(file_);
    connect(model_);
    for (const std::string& result : results) EXPECT_EQ(std::to_string(doNth(next++)), result);
    if (found != contentOf(model_)) doNth(next++);
    closeConnection();
    return found == contentOf(model_);
  }

  std::string model_ = folder_ / "model.db";
};

TEST_F(KillsTest, WhatWasAcknowledgedIsThereAndNothingHalf) {
  constexpr int kOffice = 40;  // kills that one has to bear
  const int kills = askedFor(50);
  std::mt19937 random{20260309};
  std::size_t acknowledged = 0;
  int next = 0;
  for (int kill = 0; kill < kills; ++kill) {
    if (kill % kOffice == 0) SetUp();
    const Strings results = resultsUntil(1 + static_cast<int>(random() % 150), next);
    acknowledged += results.size();
    ASSERT_TRUE(follow(results, next)) << "kill " << kill << ", before the " << next;
    EXPECT_EQ(openSqlite(file_)->findDamage(), Strings{}) << kill;
  }
  std::cout << kills << " kills, " << acknowledged << " acknowledged\n";
  EXPECT_GT(acknowledged, static_cast<std::size_t>(kills));
}

// Each adds and changes records of its own while the others do; a number that another was quicker
// to take is refused.
TEST_F(KillsTest, FourProcessesOnOneFileLoseNothing) {
  const int records = askedFor(25);
  const auto work = [&](int process, int pipe) {
    connect(file_);
    std::int16_t code = 0;
    for (int n = 0; n < records; ++n) {
      const std::string text = concat("own ", process, " ", n);
      if (InsuranceInsert(code, text, "", message_) != 0) continue;
      const bool isChanged = InsuranceUpdate(code, text, "B", message_) == 0;
      dprintf(pipe, "%s|%s\n", text.c_str(), isChanged ? "B" : "");
    }
    closeConnection();
  };
  std::vector<Child> processes;
  for (int process = 0; process < 4; ++process)
    processes.emplace_back([&](int pipe) { work(process, pipe); });
  Strings told;
  for (const Child& process : processes) std::ranges::copy(process.told(), back_inserter(told));
  std::ranges::sort(told);
  connect(file_);
  std::string all;
  for (const std::string& line : told) all += (all.empty() ? "" : " ") + line;
  EXPECT_EQ(rows("SELECT Description, BillingInsuranceCode FROM Insurance WHERE Description LIKE "
                 "'own %' ORDER BY Description || '|' || BillingInsuranceCode"),
            all);
  EXPECT_FALSE(told.empty());
}

}  // namespace
}  // namespace bw
