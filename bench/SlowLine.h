#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "tests/tools/TemporaryFolder.h"

namespace bw::bench {

// A line to a server on this computer that takes its time, and counts the trips: each begins with
// what the client sends after it has heard from the server. For one connection at a time.
class SlowLine {
 public:
  explicit SlowLine(const std::string& serverFolder);
  SlowLine(const SlowLine&) = delete;
  SlowLine& operator=(const SlowLine&) = delete;
  ~SlowLine();

  // Where its socket lies, like that of a server.
  std::string folder() const { return folder_.path(); }
  // Of a whole trip, from here on.
  void take(std::chrono::microseconds time) { time_ = time; }
  // Since the last call.
  int trips() { return trips_.exchange(0); }

 private:
  void serve();
  void relay(int client);

  TemporaryFolder folder_;
  std::string server_;
  int listener_;
  std::atomic<std::chrono::microseconds> time_{};
  std::atomic<int> trips_{0};
  std::atomic<bool> ended_{false};
  std::thread thread_;
};

}  // namespace bw::bench
