#include "bench/Measure.h"

#include <malloc.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>

namespace bw::bench {
namespace {

bool missed = false;

struct Pair {
  double ours = 0;
  double limit = 0;
  double ratio() const noexcept { return ours / limit; }
};

}  // namespace

double allocatedBytes() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

double median(const std::function<double()>& measure) {
  std::array<double, kRuns> runs{};
  for (double& run : runs) run = measure();
  std::sort(runs.begin(), runs.end());
  return runs[kRuns / 2];
}

void report(const std::string& name, const char* unit, double ours, double limit) {
  if (ours > limit) missed = true;
  std::printf("%s, %s\t%.2f\t%.2f\t%.2f\n", name.c_str(), unit, ours, limit, ours / limit);
  std::fflush(stdout);
}

void compare(const std::string& name, double factor, const std::function<double()>& ours,
             const std::function<double()>& other) {
  std::array<Pair, kRuns> pairs{};
  for (Pair& pair : pairs) {
    pair.limit = factor * other();
    pair.ours = ours();
  }
  std::sort(pairs.begin(), pairs.end(),
            [](const Pair& a, const Pair& b) { return a.ratio() < b.ratio(); });
  report(name, "ms", pairs[kRuns / 2].ours, pairs[kRuns / 2].limit);
}

int verdict() noexcept { return missed ? EXIT_FAILURE : EXIT_SUCCESS; }

int run(const std::function<void()>& measure) {
  try {
    measure();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return EXIT_FAILURE;
  }
  return verdict();
}

}  // namespace bw::bench
