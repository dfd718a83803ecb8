#include "text/FoldedTexts.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <numeric>

#include "text/Text.h"

namespace bw {
namespace {

constexpr std::size_t kHead = sizeof(std::uint64_t);
constexpr std::size_t kByteValues = 256;
constexpr std::size_t kFewKeys = kByteValues;  // not worth the counting

// Behind the end there are zeros.
std::uint64_t headOf(std::string_view text) noexcept {
  static_assert(std::endian::native == std::endian::little);
  std::uint64_t head = 0;
  std::memcpy(&head, text.data(), std::min(text.size(), kHead));
  return __builtin_bswap64(head);
}

std::size_t byteOf(std::uint64_t head, std::size_t byte) noexcept {
  return (head >> (byte * 8)) & 0xffU;
}

}  // namespace

FoldedTexts::FoldedTexts(std::string_view texts, const std::vector<std::size_t>& starts) {
  if (isAscii(texts)) {
    arena_ = texts;
    makeLower(arena_);
    starts_ = starts;
    return;
  }
  arena_.reserve(texts.size());
  starts_.reserve(starts.size());
  starts_.push_back(0);
  for (std::size_t i = 0; i + 1 < starts.size(); ++i) {
    appendFolded(arena_, texts.substr(starts[i], starts[i + 1] - starts[i]));
    starts_.push_back(arena_.size());
  }
}

std::string_view FoldedTexts::tail(Key key, std::size_t from) const noexcept {
  std::string_view rest = text(key);
  rest.remove_prefix(std::min(from, rest.size()));
  return rest;
}

std::size_t FoldedTexts::agreedBytes(const Run& run) const noexcept {
  std::string_view agreed = tail(run.keys.front(), run.agreed);
  for (const Key& key : run.keys) {
    if (agreed.empty()) break;
    const std::string_view other = tail(key, run.agreed);
    const auto end = std::mismatch(agreed.begin(), agreed.end(), other.begin(), other.end()).first;
    agreed = {agreed.begin(), end};
  }
  return run.agreed + agreed.size();
}

void FoldedTexts::orderByHeads(const Run& run) const {
  for (Key& key : run.keys) key.head = headOf(tail(key, run.agreed));
  if (run.keys.size() < kFewKeys)
    std::sort(run.keys.begin(), run.keys.end(), [](Key a, Key b) { return a.head < b.head; });
  else
    sortByBytes(run.keys);
}

// One stable pass a byte, from the last to the first; bytes that all keys agree in are left out.
void FoldedTexts::sortByBytes(std::span<Key> keys) {
  std::array<std::array<std::uint32_t, kByteValues>, kHead> counts{};
  for (const Key& key : keys)
    for (std::size_t byte = 0; byte < kHead; ++byte) ++counts[byte][byteOf(key.head, byte)];
  std::vector<Key> spare(keys.size());
  std::span<Key> from = keys;
  std::span<Key> to = spare;
  for (std::size_t byte = 0; byte < kHead; ++byte) {
    auto& starts = counts[byte];
    if (starts[byteOf(keys.front().head, byte)] == keys.size()) continue;
    std::exclusive_scan(starts.begin(), starts.end(), starts.begin(), 0U);
    for (const Key& key : from) to[starts[byteOf(key.head, byte)]++] = key;
    std::swap(from, to);
  }
  if (from.data() != keys.data()) std::copy(from.begin(), from.end(), keys.begin());
}

// Texts that differ only in zeros behind the shorter one's end are ordered by their sizes.
void FoldedTexts::addUndecided(const Run& run, std::vector<Run>& runs) const {
  for (auto from = run.keys.begin(); from != run.keys.end();) {
    const auto differs = [from](const Key& key) { return key.head != from->head; };
    const auto to = std::find_if(from + 1, run.keys.end(), differs);
    if (to - from > 1) addEqual({{from, to}, run.agreed + kHead}, runs);
    from = to;
  }
}

void FoldedTexts::addEqual(const Run& run, std::vector<Run>& runs) const {
  const auto shorter = [this](Key a, Key b) { return text(a).size() < text(b).size(); };
  const Key longest = *std::max_element(run.keys.begin(), run.keys.end(), shorter);
  if (text(longest).size() > run.agreed)
    runs.push_back(run);
  else
    std::sort(run.keys.begin(), run.keys.end(), shorter);
}

std::vector<FoldedTexts::Key> FoldedTexts::order() const {
  std::vector<Key> keys(starts_.size() - 1);
  for (std::uint32_t i = 0; i < keys.size(); ++i) keys[i].number = i;
  if (keys.empty()) return keys;
  std::vector<Run> runs{{keys, 0}};
  while (!runs.empty()) {
    Run run = runs.back();
    runs.pop_back();
    run.agreed = agreedBytes(run);
    orderByHeads(run);
    addUndecided(run, runs);
  }
  return keys;
}

std::vector<std::uint32_t> FoldedTexts::ranks() const {
  const std::vector<Key> keys = order();
  std::vector<std::uint32_t> ranks(keys.size());
  std::uint32_t rank = 0;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    // Equal texts have equal heads; the heads are cheaper to compare.
    if (i > 0 && (keys[i].head != keys[i - 1].head || text(keys[i]) != text(keys[i - 1]))) ++rank;
    ranks[keys[i].number] = rank;
  }
  return ranks;
}

}  // namespace bw
