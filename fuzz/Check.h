#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "text/RuntimeError.h"

namespace bw {

// Ends the process, which the fuzzer reports with the text that led there.
inline void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

// Runs what succeeds or raises one of these errors; nothing else may leave it.
template <ErrorNumber... refusals, class Run>
void attempt(Run run) {
  try {
    run();
  } catch (const RuntimeError& error) {
    check(((error.number() == refusals) || ...), "no other error is raised");
  }
}

inline std::string_view inputText(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace bw
