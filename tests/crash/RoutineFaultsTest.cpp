#include <cerrno>

#include "tests/crash/Office.h"
#include "tests/text/Raised.h"

namespace bw {
namespace {

class RoutineFaultsTest : public CrashTest {
 protected:
  // From connecting to the end of the routine; what keeps it from connecting refuses it, too.
  int callOn(const Fault& fault, const Routine& routine) {
    makeAnew(file_);
    const FaultyDisk disk(fault);
    message_ = refusalOf([&] { connect(file_); });
    if (!message_.empty()) return 1;
    const int result = call(routine, 0);
    counts_ = FaultyDisk::counts();
    return result;
  }

  // "" when it did what it said, and works again once the disk does.
  std::string faultOf(const Fault& fault, const Routine& routine) {
    const bool isStored = callOn(fault, routine) == 0;
    const std::string found = foundAtNextStart();
    if (isStored) return found == after_ ? "" : "told as stored, and is not";
    const bool isSure = message_ != refusalSentence(Refusal::unconfirmed);
    if (found != before_ && (isSure || found != after_))
      return "not stored, and changed: " + message_;
    isUnsure_ += isSure ? 0 : 1;
    connect(file_);
    if (call(routine, 0) != 0) return "does not work later: " + message_;
    return foundAtNextStart() == after_ ? "" : "stored later, and is not";
  }

  void learn(const Routine& routine) {
    makeAnew(file_);
    before_ = foundAtNextStart();
    EXPECT_EQ(callOn({}, routine), 0) << routine.name << ": " << message_;
    after_ = foundAtNextStart();
    EXPECT_NE(before_, after_) << routine.name;
  }

  std::string before_;
  std::string after_;
  std::array<int, kCalls> counts_{};
  int isUnsure_ = 0;
};

TEST_F(RoutineFaultsTest, WhatIsRefusedIsNotStoredAndWhatIsNotIs) {
  constexpr int kSample = 31;
  const int each = isAllAskedFor() ? 1 : kSample;
  int tried = 0;
  int place = 0;
  for (const Routine& routine : writingRoutines()) {
    learn(routine);
    const std::array<int, kCalls> counts = counts_;
    for (std::size_t call = 0; call < kCalls; ++call)
      for (const int error : {ENOSPC, EIO, EACCES})
        for (const bool lasts : {false, true})
          for (int nth = 1; nth <= counts.at(call); ++nth) {
            if (++place % each != 0) continue;
            ++tried;
            EXPECT_EQ(faultOf({static_cast<Call>(call), nth, error, lasts}, routine), "")
                << routine.name << ", kind " << call << ", call " << nth << ", error " << error
                << (lasts ? " for good" : " once");
          }
  }
  std::cout << tried << " faults, " << isUnsure_ << " of them unconfirmed\n";
  EXPECT_GT(tried, 100);
}

}  // namespace
}  // namespace bw
