#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bw {

// Distinct texts, numbered from 0 in the order of their first appearance.
class TextDictionary {
 public:
  std::int64_t number(std::string_view text) { return number(text, findPlace(text)); }

  // The same in two steps, for many texts at a time: the memory that the second step looks at comes
  // while the first one goes on.
  using Place = std::uint32_t;
  Place findPlace(std::string_view text) const noexcept;
  std::int64_t number(std::string_view text, Place place);  // adds it when new

  std::string_view text(std::int64_t number) const noexcept {
    const auto i = static_cast<std::size_t>(number);
    return {arena_.data() + starts_[i], starts_[i + 1] - starts_[i]};
  }
  std::size_t size() const noexcept { return starts_.size() - 1; }
  std::string_view allTexts() const noexcept { return arena_; }  // one after another

  // Position of a text among all of them, without regard to case: equal but for case, equal rank.
  // prepareRanks() must have been called since the last new text.
  std::int64_t rank(std::int64_t number) const noexcept {
    return ranks_[static_cast<std::size_t>(number)];
  }
  void prepareRanks() const;

  std::size_t bytes() const noexcept;

 private:
  void grow();
  std::size_t slotOf(std::string_view text, Place hash) const noexcept;

  struct Slot {
    Place hash = 0;
    std::uint32_t number = kFree;
  };
  static constexpr std::uint32_t kFree = 0xffffffffU;

  std::string arena_;
  std::vector<std::size_t> starts_{0};
  std::vector<Slot> slots_;
  std::int64_t last_ = -1;  // the text asked for before: neighbours are often equal
  mutable std::vector<std::uint32_t> ranks_;
};

}  // namespace bw
