#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "records/Column.h"

namespace bw {

// When two patients look like one person, and how those who do are found without comparing each
// with each.

// What is compared of a patient. Nothing that is missing is like anything.
struct LikenessOf {
  std::u32string name;    // folded, without accents and signs, words parted by one blank
  std::u32string sorted;  // its words in order
  std::string exactName;  // folded alone
  std::int64_t birth = Column::kNull;
  std::string account;       // folded, letters and digits alone
  std::string exactAccount;  // folded alone
};
LikenessOf likenessOf(std::string_view name, std::int64_t birth, std::string_view account);

// A reason to take two patients for one. Whoever shares it shares a key.
struct Likeness {
  const char* words;
  bool isExact = false;  // the program's own lists of doubles show it
  bool (*holds)(const LikenessOf& one, const LikenessOf& other);
  void (*keys)(const LikenessOf& one, const std::function<void(std::uint64_t)>& take);
};

// The surest first.
std::span<const Likeness> likenesses();

// One letter more, less or another, or two neighbours swapped; not the same text.
bool isOneEditAway(std::u32string_view one, std::u32string_view other) noexcept;
bool isOneSwapAway(std::u32string_view one, std::u32string_view other) noexcept;

}  // namespace bw
