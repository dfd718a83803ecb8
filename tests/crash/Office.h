#pragma once

#include <cstdlib>

#include "tests/crash/Shim.h"
#include "tests/data/DataFixture.h"
#include "tests/tools/DatabaseContent.h"
#include "tests/tools/TemporaryFolder.h"

namespace bw {

// Every routine that writes, on an office as CrashTest makes it; 0 for stored. `n` varies what it
// writes, and which of the records is touched that no other uses.
struct Routine {
  std::string name;
  std::function<int(int n, std::string& message)> call;
};
const std::vector<Routine>& writingRoutines();

// How often what is done by chance is done, and that all is tried of what is otherwise sampled.
inline int askedFor(int usually) {
  const char* asked = std::getenv("BW_CRASHES");
  return asked == nullptr ? usually : std::atoi(asked);
}
inline bool isAllAskedFor() { return std::getenv("BW_CRASHES") != nullptr; }

// An office in a file, to which nothing is connected at first.
class CrashTest : public DataTest {
 protected:
  static void SetUpTestSuite();  // makes the office that every test begins with
  void SetUp() override { makeAnew(file_); }
  void TearDown() override {
    closeConnection();
    DataTest::TearDown();
  }

  static void makeAnew(const std::string& file);
  static void connect(const std::string& file);
  // Calls it, which leaves its text in `message_`, and forgets what it showed.
  int call(const Routine& routine, int n);
  // Every cell of what would be found at the next start if this process ended now.
  std::string foundAtNextStart() const;

  TemporaryFolder folder_;
  std::string file_ = folder_ / "office.db";
  std::string message_;
};

}  // namespace bw
