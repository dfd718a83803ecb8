#pragma once

#include <sys/types.h>

#include <array>
#include <string>
#include <vector>

namespace bw {

// What the calls of this test program to the system meet, those of its libraries included. Nothing
// is synced in fact.

enum class Call { write, sync, truncate, open, name };
inline constexpr std::size_t kCalls = 5;

// The nth call of a kind fails while this lives, or all from the nth on.
struct Fault {
  Call call = Call::write;
  int nth = 0;  // 0: none
  int error = 0;
  bool lasts = false;
};
class FaultyDisk {
 public:
  explicit FaultyDisk(const Fault& fault);
  ~FaultyDisk();

  // How many calls of each kind there were.
  static const std::array<int, kCalls>& counts();
};

// Kills this process at the nth call from now on, of whatever kind; a write is half done then.
void dieAt(int nth);

// What was done to the contents of files, in its order.
struct Deed {
  Call call = Call::write;  // or sync, or truncate to the size `at`
  std::string path;
  off_t at = 0;
  std::string bytes;
};
// Where deeds are added to; null for nowhere.
void recordDeeds(std::vector<Deed>* deeds);

}  // namespace bw
