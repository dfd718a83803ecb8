#include "engine/RelaxedSync.h"

#include <utility>

#include "engine/Connection.h"

namespace bw {

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
  if (std::exchange(relaxed_, false)) connection_.restoreSync();
}

}  // namespace bw
