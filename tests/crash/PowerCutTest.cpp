#include <algorithm>
#include <fstream>
#include <map>
#include <random>

#include "tests/crash/Office.h"

namespace bw {
namespace {

// A file as the disk has it: what was synced, and what was done since.
struct DiskFile {
  std::string synced;
  std::vector<Deed> since;
};

// A write as far as it came, in sectors, or nothing of a deed.
enum class Fate : unsigned { done, torn, lost };

void apply(const Deed& deed, Fate fate, std::string& bytes, std::mt19937& random) {
  constexpr std::size_t kSector = 512;
  const auto at = static_cast<std::size_t>(deed.at);
  if (fate == Fate::lost) return;
  if (deed.call == Call::truncate) return bytes.resize(at);
  std::size_t size = deed.bytes.size();
  if (fate == Fate::torn) size = std::min(size, random() % (size / kSector + 1) * kSector);
  bytes.resize(std::max(bytes.size(), at + size));
  bytes.replace(at, size, deed.bytes, 0, size);
}

class PowerCutTest : public CrashTest {
 protected:
  // Does one thing after another; a deed with the path "" stands where each was acknowledged.
  void work(int steps) {
    connect(file_);
    run("PRAGMA wal_autocheckpoint=20");
    contents_.push_back(contentOf(file_));
    std::mt19937 random{20260309};
    for (int n = 0; n < steps; ++n) {
      recordDeeds(&deeds_);
      call(writingRoutines()[random() % writingRoutines().size()], n);
      recordDeeds(nullptr);
      deeds_.emplace_back();
      contents_.push_back(contentOf(file_));
    }
  }

  void take(const Deed& deed) {
    if (deed.path.empty()) {
      ++acknowledged_;
    } else if (deed.path.ends_with(".db") || deed.path.ends_with("-wal")) {
      DiskFile& file = disk_[deed.path.substr(file_.size())];
      if (deed.call != Call::sync) return file.since.push_back(deed);
      for (const Deed& done : file.since) apply(done, Fate::done, file.synced, random_);
      file.since.clear();
    }
  }

  // "" when an office whose power is cut now is sound and has what was acknowledged. `fate` is that
  // of all that was not synced; without one chance decides.
  std::string faultOfCut(std::optional<Fate> fate) {
    const std::string cut = folder_ / "cut.db";
    std::filesystem::remove(cut + "-shm");
    for (const auto& [part, file] : disk_) {
      std::string bytes = file.synced;
      for (const Deed& deed : file.since)
        apply(deed, fate.value_or(static_cast<Fate>(random_() % 3)), bytes, random_);
      std::ofstream(cut + part, std::ios::binary) << bytes;
    }
    if (openSqlite(cut)->findDamage() != Strings{}) return "damaged";
    const std::string found = contentOf(cut);
    const bool isThere = found == contents_.at(acknowledged_) ||
                         found == contents_.at(std::min(acknowledged_ + 1, contents_.size() - 1));
    return isThere ? "" : "other rows";
  }

  std::vector<Deed> deeds_;
  std::vector<std::string> contents_;  // before the first thing, and after each
  std::map<std::string, DiskFile> disk_;
  std::size_t acknowledged_ = 0;
  std::mt19937 random_{20260309};
};

TEST_F(PowerCutTest, WhatWasAcknowledgedIsOnTheDisk) {
  const int steps = askedFor(25);
  disk_[""].synced = folder_.read("office.db");
  disk_["-wal"];
  work(steps);
  int cuts = 0;
  const auto cut = [&](std::optional<Fate> fate) {
    ++cuts;
    EXPECT_EQ(faultOfCut(fate), "") << "cut " << cuts << ", behind " << acknowledged_;
  };
  for (const Deed& deed : deeds_) {
    if (deed.call == Call::sync)
      for (const std::optional<Fate> fate : {std::optional(Fate::lost), std::optional(Fate::done),
                                             std::optional<Fate>(), std::optional<Fate>()})
        cut(fate);
    take(deed);
    if (deed.path.empty()) cut(Fate::lost);
  }
  std::cout << cuts << " cuts\n";
  EXPECT_GT(cuts, 3 * steps);
}

}  // namespace
}  // namespace bw
