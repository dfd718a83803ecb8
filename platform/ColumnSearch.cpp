#include "platform/ColumnSearch.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <span>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace bw {
namespace {

// Takes letters and accents apart and leaves the accents out.
std::string withoutAccents(const std::string& folded) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* apart = icu::Normalizer2::getNFDInstance(status);
  if (U_FAILURE(status)) throw RuntimeError(ErrorNumber::outOfMemory);
  const icu::UnicodeString letters = apart->normalize(icu::UnicodeString::fromUTF8(folded), status);
  if (U_FAILURE(status)) throw RuntimeError(ErrorNumber::outOfMemory);
  icu::UnicodeString plain;
  for (std::int32_t i = 0; i < letters.length(); i = letters.moveIndex32(i, 1)) {
    const UChar32 letter = letters.char32At(i);
    if (u_charType(letter) != U_NON_SPACING_MARK) plain.append(letter);
  }
  std::string text;
  return plain.toUTF8String(text);
}

}  // namespace

std::string searchText(std::string_view text) {
  std::string folded = fold(text);
  return isAscii(folded) ? folded : withoutAccents(folded);
}

ColumnSearch::ColumnSearch(const Column& column, const std::vector<std::uint32_t>& rows)
    : column_(column) {
  if (column_.isText())
    takeDictionary();
  else
    takeValues(rows);
}

void ColumnSearch::add(std::string_view text) {
  if (isAscii(text)) {
    texts_ += text;
    makeLower(std::span(texts_).last(text.size()));
  } else {
    texts_ += searchText(text);
  }
  close();
}

void ColumnSearch::close() {
  texts_ += '\0';
  starts_.push_back(static_cast<std::uint32_t>(texts_.size()));
}

void ColumnSearch::takeDictionary() {
  const TextDictionary& dictionary = column_.dictionary();
  const auto text = [&](std::size_t i) { return dictionary.text(static_cast<std::int64_t>(i)); };
  starts_.reserve(dictionary.size() + 1);
  texts_.reserve(dictionary.allTexts().size() + dictionary.size());
  if (!isAscii(dictionary.allTexts())) {
    for (std::size_t i = 0; i < dictionary.size(); ++i) add(text(i));
    return;
  }
  for (std::size_t i = 0; i < dictionary.size(); ++i) {
    texts_ += text(i);
    close();
  }
  makeLower(texts_);
}

// Numbers and days lie close together as a rule: their texts stand in a table over the whole range,
// with nothing where no row has the value.
void ColumnSearch::takeValues(const std::vector<std::uint32_t>& rows) {
  std::vector<std::pair<std::int64_t, std::uint32_t>> values;
  values.reserve(rows.size());
  for (const std::uint32_t row : rows)
    if (const std::int64_t raw = column_.raw(row); raw != Column::kNull)
      values.emplace_back(raw, row);
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end(),
                           [](const auto& a, const auto& b) { return a.first == b.first; }),
               values.end());
  if (values.empty()) return;
  base_ = values.front().first;
  constexpr std::uint64_t kFarApart = 8;
  const std::uint64_t range =
      static_cast<std::uint64_t>(values.back().first) - static_cast<std::uint64_t>(base_);
  const bool close = range / kFarApart <= values.size();
  constexpr std::size_t kUsualText = 12;  // bytes
  texts_.reserve(values.size() * kUsualText);
  starts_.reserve(close ? static_cast<std::size_t>(range) + 2 : values.size() + 1);
  if (!close) sparse_.reserve(values.size());
  for (const auto& [raw, row] : values) {
    if (!close) sparse_.push_back(raw);
    while (close && static_cast<std::int64_t>(starts_.size()) <= raw - base_) add("");
    add(textOf(column_.value(row)));
  }
}

Hit ColumnSearch::search(std::string_view wanted) {
  hits_.assign(starts_.size() - 1, Hit::none);
  Hit best = Hit::none;
  std::size_t number = 0;
  // The library's routine is many times as quick as that of std::string when the text begins with a
  // common letter.
  const auto next = [&](std::size_t from) {
    const char* begin = texts_.data();
    const void* found = memmem(begin + from, texts_.size() - from, wanted.data(), wanted.size());
    return found == nullptr ? std::string::npos
                            : static_cast<std::size_t>(static_cast<const char*>(found) - begin);
  };
  for (std::size_t at = next(0); at != std::string::npos; at = next(starts_[number])) {
    while (starts_[number + 1] <= at) ++number;
    hits_[number] = at == starts_[number] ? Hit::atStart : Hit::inside;
    best = std::max(best, hits_[number]);
    ++number;
  }
  return best;
}

Hit ColumnSearch::hit(std::uint32_t row) const noexcept {
  const std::int64_t raw = column_.raw(row);
  if (raw == Column::kNull || raw < base_) return Hit::none;
  auto number = static_cast<std::size_t>(raw - base_);
  if (!sparse_.empty()) {
    const auto found = std::lower_bound(sparse_.begin(), sparse_.end(), raw);
    if (found == sparse_.end() || *found != raw) return Hit::none;
    number = static_cast<std::size_t>(found - sparse_.begin());
  }
  return number < hits_.size() ? hits_[number] : Hit::none;
}

}  // namespace bw
