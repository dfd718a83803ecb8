#include "text/TextSearch.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <cstring>
#include <span>

#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

UChar32 onKeyboard(UChar32 sign) {
  if (sign == 0x2018 || sign == 0x2019 || sign == 0x02BC || sign == 0x00B4) return '\'';
  switch (u_charType(sign)) {
    case U_DASH_PUNCTUATION:
      return '-';
    case U_SPACE_SEPARATOR:
      return ' ';
    default:
      return sign;
  }
}

// Takes letters and accents apart and leaves the accents out.
std::string plainSigns(const std::string& folded) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* apart = icu::Normalizer2::getNFDInstance(status);
  if (U_FAILURE(status)) throw RuntimeError(ErrorNumber::outOfMemory);
  const icu::UnicodeString letters = apart->normalize(icu::UnicodeString::fromUTF8(folded), status);
  if (U_FAILURE(status)) throw RuntimeError(ErrorNumber::outOfMemory);
  icu::UnicodeString plain;
  for (std::int32_t i = 0; i < letters.length(); i = letters.moveIndex32(i, 1)) {
    const UChar32 letter = letters.char32At(i);
    if (u_charType(letter) != U_NON_SPACING_MARK) plain.append(onKeyboard(letter));
  }
  std::string text;
  return plain.toUTF8String(text);
}

// Of a search text. Its bytes beyond ASCII belong to letters.
bool beginsWord(std::string_view text, std::size_t at) {
  const char before = text[at - 1];
  const bool letter = static_cast<unsigned char>(before) >= 0x80U ||
                      (before >= 'a' && before <= 'z') || (before >= '0' && before <= '9');
  return !letter;
}

// Of a text in which `wanted` stands first at `at`.
Hit bestHit(std::string_view text, std::string_view wanted, std::size_t at) {
  if (at == 0) return Hit::atStart;
  for (; at != std::string_view::npos; at = text.find(wanted, at + 1))
    if (beginsWord(text, at)) return Hit::atWord;
  return Hit::inside;
}

}  // namespace

std::string searchText(std::string_view text) {
  std::string folded = fold(text);
  return isAscii(folded) ? folded : plainSigns(folded);
}

Hit hitOf(std::string_view text, std::string_view wanted) {
  const std::string ready = searchText(text);
  const std::size_t at = ready.find(wanted);
  return at == std::string::npos ? Hit::none : bestHit(ready, wanted, at);
}

void TextSearch::reserve(std::size_t texts, std::size_t bytes) {
  starts_.reserve(texts + 1);
  texts_.reserve(bytes + texts);
}

void TextSearch::add(std::string_view text) {
  if (isAscii(text)) {
    texts_ += text;
    makeLower(std::span(texts_).last(text.size()));
  } else {
    texts_ += searchText(text);
  }
  close();
}

void TextSearch::addPlain(std::string_view text) {
  texts_ += text;
  close();
}

void TextSearch::makeReady() { makeLower(texts_); }

void TextSearch::close() {
  texts_ += '\0';
  starts_.push_back(static_cast<std::uint32_t>(texts_.size()));
}

Hit TextSearch::search(std::string_view wanted) {
  hits_.assign(count(), Hit::none);
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
    const std::size_t start = starts_[number];
    const std::string_view text(texts_.data() + start, starts_[number + 1] - start - 1);
    hits_[number] = bestHit(text, wanted, at - start);
    best = std::max(best, hits_[number]);
    ++number;
  }
  return best;
}

}  // namespace bw
