#include "bench/Measure.h"

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <vector>

#include "bench/Quiet.h"

namespace bw::bench {
namespace {

bool missed = false;

struct Pair {
  double ours = 0;
  double limit = 0;
  double ratio() const noexcept { return ours / limit; }
};

using Clock = std::chrono::steady_clock;

// Runs of a quiet machine, or of one that was not quiet long enough all of them. What takes a
// millisecond is taken often: five such runs differ by more than a limit may leave.
template <class Take>
auto takeRuns(Take take) {
  constexpr std::size_t kFewest = 5;
  constexpr std::chrono::milliseconds kLeast{200};
  constexpr std::chrono::seconds kPatience{20};
  static Quiet quiet;
  std::vector<decltype(take())> counted;
  std::vector<decltype(take())> disturbed;
  const auto begin = Clock::now();
  while (counted.size() < kFewest || Clock::now() - begin < kLeast) {
    quiet.await(begin + kPatience);
    const auto run = take();
    (quiet.isNow() ? counted : disturbed).push_back(run);
    if (counted.size() + disturbed.size() < kFewest || Clock::now() - begin < kPatience) continue;
    if (counted.size() < kFewest) {
      std::fprintf(stderr, "The machine was busy: %zu of these runs are slowed.\n",
                   disturbed.size());
      counted.insert(counted.end(), disturbed.begin(), disturbed.end());
    }
    break;
  }
  return counted;
}

}  // namespace

double allocatedBytes() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

double median(const std::function<double()>& measure) {
  std::vector<double> runs = takeRuns(measure);
  std::sort(runs.begin(), runs.end());
  return runs[runs.size() / 2];
}

void report(const std::string& name, const char* unit, double ours, double limit) {
  if (ours > limit) missed = true;
  std::printf("%s, %s\t%.2f\t%.2f\t%.2f\n", name.c_str(), unit, ours, limit, ours / limit);
  std::fflush(stdout);
}

void compare(const std::string& name, double factor, const std::function<double()>& ours,
             const std::function<double()>& other) {
  std::vector<Pair> pairs = takeRuns([&] {
    const double limit = factor * other();
    return Pair{ours(), limit};
  });
  std::sort(pairs.begin(), pairs.end(),
            [](const Pair& a, const Pair& b) { return a.ratio() < b.ratio(); });
  const Pair& middle = pairs[pairs.size() / 2];
  report(name, "ms", middle.ours, middle.limit);
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
