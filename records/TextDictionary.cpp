#include "records/TextDictionary.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "text/FoldedTexts.h"

namespace bw {
namespace {

template <class Word>
std::uint64_t load(const char* at) noexcept {
  Word word = 0;
  std::memcpy(&word, at, sizeof word);
  return word;
}

// Word by word, the last one overlapping the one before it. The texts have at least one word.
template <class Word>
bool sameWords(const char* a, const char* b, std::size_t size) noexcept {
  const std::size_t last = size - sizeof(Word);
  for (std::size_t at = 0; at < last; at += sizeof(Word))
    if (load<Word>(a + at) != load<Word>(b + at)) return false;
  return load<Word>(a + last) == load<Word>(b + last);
}

// Texts of one size. Most are short: the library's routine is a call and a branch for each.
bool sameBytes(const char* a, const char* b, std::size_t size) noexcept {
  if (size > 4 * sizeof(std::uint64_t)) return std::memcmp(a, b, size) == 0;
  if (size >= sizeof(std::uint64_t)) return sameWords<std::uint64_t>(a, b, size);
  if (size >= sizeof(std::uint32_t)) return sameWords<std::uint32_t>(a, b, size);
  return std::equal(a, a + size, b);
}

bool same(std::string_view a, std::string_view b) noexcept {
  return a.size() == b.size() && sameBytes(a.data(), b.data(), a.size());
}

__extension__ using Wide = unsigned __int128;

// Multiply and fold, eight bytes at a time: texts here are short and need no stronger mixing. Both
// halves of the product count: the lower one of texts that end in different figures is the same in
// its low bits, which find the slot. The last bytes are read in one go, overlapping those before.
std::uint64_t hashOf(std::string_view text) noexcept {
  constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15U;
  constexpr std::size_t kLong = sizeof(std::uint64_t);
  constexpr std::size_t kShort = sizeof(std::uint32_t);
  std::uint64_t hash = text.size() * kMultiplier;
  const auto mix = [&hash](std::uint64_t word) {
    const Wide product = static_cast<Wide>(hash ^ word) * kMultiplier;
    hash = static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
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
  const auto hash = static_cast<Place>(hashOf(wanted));
  if (!slots_.empty()) __builtin_prefetch(&slots_[hash & (slots_.size() - 1)]);
  return hash;
}

std::size_t TextDictionary::slotOf(std::string_view wanted, Place hash) const noexcept {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
    const Slot& candidate = slots_[slot];
    if (candidate.number == kFree) return slot;
    if (candidate.hash == hash && same(text(candidate.number), wanted)) return slot;
  }
}

void TextDictionary::grow() {
  constexpr std::size_t kFirst = 64;
  constexpr std::size_t kSmall = 4096;  // up to here, space is cheaper than growing often
  std::vector<Slot> grown(slots_.empty() ? kFirst
                                         : slots_.size() * (slots_.size() <= kSmall ? 4 : 2));
  const std::size_t mask = grown.size() - 1;
  for (const Slot& slot : slots_) {
    if (slot.number == kFree) continue;
    std::size_t place = slot.hash & mask;
    while (grown[place].number != kFree) place = (place + 1) & mask;
    grown[place] = slot;
  }
  slots_ = std::move(grown);
}

std::int64_t TextDictionary::number(std::string_view wanted, Place hash) {
  if (last_ >= 0 && same(text(last_), wanted)) return last_;
  if ((size() + 1) * 2 > slots_.size()) grow();
  Slot& slot = slots_[slotOf(wanted, hash)];
  if (slot.number == kFree) {
    slot = {hash, static_cast<std::uint32_t>(size())};
    arena_ += wanted;
    starts_.push_back(arena_.size());
  }
  last_ = slot.number;
  return last_;
}

void TextDictionary::prepareRanks() const {
  if (ranks_.size() == size()) return;
  ranks_ = FoldedTexts(arena_, starts_).ranks();
}

std::size_t TextDictionary::bytes() const noexcept {
  return arena_.capacity() + starts_.capacity() * sizeof(std::size_t) +
         slots_.capacity() * sizeof(Slot) + ranks_.capacity() * sizeof(std::uint32_t);
}

}  // namespace bw
