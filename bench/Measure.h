#pragma once

#include <chrono>
#include <ctime>
#include <functional>
#include <string>

namespace bw::bench {

// A measure is a line: name, ours, limit, ratio of the two, parted by tabs. A ratio above 1 is a
// limit missed.

// Milliseconds that a call takes.
template <class F>
double milliseconds(F f) {
  const auto begin = std::chrono::steady_clock::now();
  f();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
      .count();
}

// Milliseconds of the processor that a call takes: what computes without waiting takes these on a
// machine that does nothing else.
template <class F>
double processorMilliseconds(F f) {
  const std::clock_t begin = std::clock();
  f();
  return 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

// Bytes that are allocated at this moment.
double allocatedBytes();

// The median of five calls of `measure` on a quiet machine (see Quiet.h), of more when they are
// short. Twenty seconds without five quiet ones, and all count.
double median(const std::function<double()>& measure);

// Prints a measure. `unit` stands behind the name.
void report(const std::string& name, const char* unit, double ours, double limit);

// Takes both in turns, so that a busy machine slows both, and prints the pair with the median
// ratio, of as many as for a median; the limit is `factor` times what the other took.
void compare(const std::string& name, double factor, const std::function<double()>& ours,
             const std::function<double()>& other);

// Success when no limit was missed: what main() returns.
int verdict() noexcept;

// Measures and tells an error; what main() returns.
int run(const std::function<void()>& measure);

}  // namespace bw::bench
