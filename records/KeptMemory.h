#pragma once

#include <malloc.h>

namespace bw {

// Every refresh throws a list away and reads another one, every click on a column one order of its
// rows. Memory of that size stays with the process: handed back to the system and asked for again,
// it would be a sixth of a refresh's time, and more than half of a click's.
inline void keepFreedMemory() noexcept {
  constexpr int kSingly = 32 << 20;    // bytes; a larger piece goes back at once
  constexpr int kTogether = 64 << 20;  // bytes free at the end of the heap
  mallopt(M_MMAP_THRESHOLD, kSingly);
  mallopt(M_TRIM_THRESHOLD, kTogether);
}

}  // namespace bw
