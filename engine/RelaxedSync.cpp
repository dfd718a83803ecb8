#include "engine/RelaxedSync.h"

#include <utility>

#include "engine/Connection.h"
#include "text/Text.h"

namespace bw {
namespace {

// A disk that has failed to sync may have dropped what it was given: no later sync helps that.
const char* reasonOf(Refusal why) noexcept {
  switch (why) {
    case Refusal::full:
      return "the disk is full. Please make room. The next record that is stored makes it safe.";
    case Refusal::locked:
      return "another station has the database locked. The next record that is stored makes it "
             "safe.";
    default:
      return "the disk did not confirm it. Please make a copy of the database on another disk.";
  }
}

}  // namespace

RelaxedSync::RelaxedSync(Connection& connection) : connection_(connection) {
  relaxed_ = connection_.relaxSync();
}

RelaxedSync::~RelaxedSync() {
  try {
    finish();
  } catch (const RuntimeError&) {
    // Whoever wants to know has called finish().
  }
}

void RelaxedSync::finish() {
  if (!std::exchange(relaxed_, false)) return;
  try {
    connection_.restoreSync();
  } catch (const DatabaseRefusal& refusal) {
    if (isLoss(refusal.why())) throw DatabaseRefusal(Refusal::lostSome);
    throw RuntimeError(ErrorNumber::database,
                       concat("Everything that was done is stored, but it is not safe from a power "
                              "cut yet: ",
                              reasonOf(refusal.why())));
  }
}

}  // namespace bw
