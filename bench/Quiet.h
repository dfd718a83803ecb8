#pragma once

#include <chrono>

namespace bw::bench {

// Whether the processor is ours alone. While another guest of the machine computes on the same
// core, or the core has just been woken, what computes takes up to half as long again; then a fixed
// piece of arithmetic takes longer, too, and a measure waits for better times. What is measured
// never decides whether it counts.
class Quiet {
 public:
  // Looks for the speed of the processor alone, 300 ms. The fastest look of all runs is kept in the
  // folder of the runs: a machine may be busy as long as one of them lasts.
  Quiet();

  // One look, of less than a millisecond.
  bool isNow();
  // Looks until it is, or until then.
  void await(std::chrono::steady_clock::time_point end);

 private:
  double look();

  double fastest_;  // ms, of a look
};

}  // namespace bw::bench
