#pragma once

#include <malloc.h>

namespace bw {

// Every refresh throws a list away and reads another one. Memory of that size stays with the
// process: handed back to the system and asked for again, it would be a sixth of a refresh's time.
inline void keepFreedMemory() noexcept {
  constexpr int kSingly = 1 << 20;    // bytes; a larger piece goes back at once
  constexpr int kTogether = 4 << 20;  // bytes free at the end of the heap
  mallopt(M_MMAP_THRESHOLD, kSingly);
  mallopt(M_TRIM_THRESHOLD, kTogether);
}

}  // namespace bw
