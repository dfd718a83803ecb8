#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace bw {

// Texts without regard to case, to be brought into order: many at once, eight bytes at a time.
class FoldedTexts {
 public:
  // Texts that stand one after another: each begins at a start and ends at the next one.
  FoldedTexts(std::string_view texts, const std::vector<std::size_t>& starts);

  // The position of each text among all, from 0; equal but for case, equal position.
  std::vector<std::uint32_t> ranks() const;

 private:
  struct Key {
    std::uint64_t head;  // eight bytes of the text as a number that is ordered as they are
    std::uint32_t number;
  };
  // Neighbours that agree in their first bytes.
  struct Run {
    std::span<Key> keys;
    std::size_t agreed;
  };

  std::string_view text(Key key) const noexcept {
    return {arena_.data() + starts_[key.number], starts_[key.number + 1] - starts_[key.number]};
  }
  std::string_view tail(Key key, std::size_t from) const noexcept;
  std::size_t agreedBytes(const Run& run) const noexcept;
  void orderByHeads(const Run& run) const;
  static void sortByBytes(std::span<Key> keys);
  void addUndecided(const Run& run, std::vector<Run>& runs) const;
  void addEqual(const Run& run, std::vector<Run>& runs) const;
  std::vector<Key> order() const;

  std::string arena_;
  std::vector<std::size_t> starts_;
};

}  // namespace bw
