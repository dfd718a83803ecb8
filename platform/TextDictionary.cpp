#include "platform/TextDictionary.h"

#include <algorithm>
#include <cstring>
#include <numeric>

#include "platform/Text.h"

namespace bw {
namespace {

template <class Word>
std::uint64_t load(const char* at) noexcept {
  Word word = 0;
  std::memcpy(&word, at, sizeof word);
  return word;
}

// Texts of one size. Most are short: the library's routine is a call and a branch for each.
bool sameBytes(const char* a, const char* b, std::size_t size) noexcept {
  constexpr std::size_t kLong = sizeof(std::uint64_t);
  if (size < kLong || size > 4 * kLong) return std::memcmp(a, b, size) == 0;
  std::size_t at = 0;
  for (; at + kLong < size; at += kLong)
    if (load<std::uint64_t>(a + at) != load<std::uint64_t>(b + at)) return false;
  return load<std::uint64_t>(a + size - kLong) == load<std::uint64_t>(b + size - kLong);
}

bool same(std::string_view a, std::string_view b) noexcept {
  return a.size() == b.size() && sameBytes(a.data(), b.data(), a.size());
}

// Multiply and fold, eight bytes at a time: texts here are short and need no stronger mixing. The
// last bytes are read in one go, overlapping those before them.
std::uint64_t hashOf(std::string_view text) noexcept {
  constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15U;
  constexpr std::size_t kLong = sizeof(std::uint64_t);
  constexpr std::size_t kShort = sizeof(std::uint32_t);
  std::uint64_t hash = text.size() * kMultiplier;
  const auto mix = [&hash](std::uint64_t word) {
    hash = (hash ^ word) * kMultiplier;
    hash ^= hash >> 32U;
  };
  const char* at = text.data();
  const char* end = at + text.size();
  if (text.size() >= kLong) {
    for (; end - at > static_cast<std::ptrdiff_t>(kLong); at += kLong) mix(load<std::uint64_t>(at));
    mix(load<std::uint64_t>(end - kLong));
  } else if (text.size() >= kShort) {
    mix(load<std::uint32_t>(at) << 32U | load<std::uint32_t>(end - kShort));
  } else {
    for (; at != end; ++at) mix(static_cast<unsigned char>(*at));
  }
  return hash;
}

}  // namespace

TextDictionary::Place TextDictionary::findPlace(std::string_view wanted) const noexcept {
  const std::uint64_t hash = hashOf(wanted);
  if (!slots_.empty()) __builtin_prefetch(&slots_[hash & (slots_.size() - 1)]);
  return hash;
}

std::size_t TextDictionary::slotOf(std::string_view wanted, Place hash) const noexcept {
  const std::size_t mask = slots_.size() - 1;
  const auto stored = static_cast<std::uint32_t>(hash >> 32U);
  for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
    const Slot& candidate = slots_[slot];
    if (candidate.number == kFree) return slot;
    if (candidate.hash == stored && same(text(candidate.number), wanted)) return slot;
  }
}

void TextDictionary::grow() {
  slots_.assign(std::max<std::size_t>(16, slots_.size() * 2), Slot{});
  for (std::size_t i = 0; i < size(); ++i) {
    const std::string_view entry = text(static_cast<std::int64_t>(i));
    const std::uint64_t hash = hashOf(entry);
    slots_[slotOf(entry, hash)] = {static_cast<std::uint32_t>(hash >> 32U),
                                   static_cast<std::uint32_t>(i)};
  }
}

std::int64_t TextDictionary::number(std::string_view wanted, Place hash) {
  if (last_ >= 0 && same(text(last_), wanted)) return last_;
  if ((size() + 1) * 2 > slots_.size()) grow();
  Slot& slot = slots_[slotOf(wanted, hash)];
  if (slot.number == kFree) {
    slot = {static_cast<std::uint32_t>(hash >> 32U), static_cast<std::uint32_t>(size())};
    arena_ += wanted;
    starts_.push_back(arena_.size());
  }
  last_ = slot.number;
  return last_;
}

void TextDictionary::prepareRanks() const {
  if (ranks_.size() == size()) return;
  std::vector<std::string> folded(size());
  for (std::size_t i = 0; i < size(); ++i) folded[i] = fold(text(static_cast<std::int64_t>(i)));
  std::vector<std::uint32_t> order(size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(),
            [&](std::uint32_t a, std::uint32_t b) { return folded[a] < folded[b]; });
  ranks_.resize(size());
  std::uint32_t rank = 0;
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (i > 0 && folded[order[i]] != folded[order[i - 1]]) ++rank;
    ranks_[order[i]] = rank;
  }
}

std::size_t TextDictionary::bytes() const noexcept {
  return arena_.capacity() + starts_.capacity() * sizeof(std::size_t) +
         slots_.capacity() * sizeof(Slot) + ranks_.capacity() * sizeof(std::uint32_t);
}

}  // namespace bw
