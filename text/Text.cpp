#include "text/Text.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "text/CodePage.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

constexpr char32_t kIllFormed = 0xffffffffU;

struct CodePoint {
  char32_t value = kIllFormed;
  std::size_t bytes = 1;
};

char lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// The code point that begins at that byte.
CodePoint codePointAt(std::string_view text, std::size_t at) noexcept {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(at);
  if (lead < 0x80) return {lead, 1};
  const std::size_t bytes = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
  if (lead < 0xc2 || lead > 0xf4 || text.size() - at < bytes) return {};
  char32_t value = lead & (0xffU >> (bytes + 1));
  for (std::size_t i = at + 1; i < at + bytes; ++i) {
    if ((byte(i) & 0xc0U) != 0x80U) return {};
    value = value << 6U | (byte(i) & 0x3fU);
  }
  constexpr std::array<char32_t, 5> kLowest{0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = value >= 0xd800 && value <= 0xdfff;
  if (value < kLowest[bytes] || value > 0x10ffff || surrogate) return {};
  return {value, bytes};
}

// The byte at which the code point with that index (from 0) begins; the size when there is none.
std::size_t offsetOf(std::string_view text, std::size_t index) noexcept {
  std::size_t at = 0;
  for (; index > 0 && at < text.size(); --index) at += codePointAt(text, at).bytes;
  return at;
}

std::size_t requireCount(std::ptrdiff_t count) {
  if (count < 0) throw RuntimeError(ErrorNumber::invalidCall);
  return static_cast<std::size_t>(count);
}

char windows1252(char32_t value) noexcept {
  if (value < 0x80 || (value >= 0xa0 && value <= 0xff)) return static_cast<char>(value);
  const auto* found = std::find(kWindows1252.begin(), kWindows1252.end(), value);
  if (found == kWindows1252.end()) return '?';
  return static_cast<char>(0x80 + (found - kWindows1252.begin()));
}

}  // namespace

std::size_t length(std::string_view text) noexcept {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); at += codePointAt(text, at).bytes) ++count;
  return count;
}

std::string Left(std::string_view text, std::ptrdiff_t count) {
  return std::string(text.substr(0, offsetOf(text, requireCount(count))));
}

std::string Right(std::string_view text, std::ptrdiff_t count) {
  const std::size_t wanted = requireCount(count);
  const std::size_t all = length(text);
  return std::string(text.substr(offsetOf(text, all > wanted ? all - wanted : 0)));
}

std::string Mid(std::string_view text, std::ptrdiff_t from) {
  return Mid(text, from, static_cast<std::ptrdiff_t>(text.size()));
}

std::string Mid(std::string_view text, std::ptrdiff_t from, std::ptrdiff_t count) {
  if (from < 1) throw RuntimeError(ErrorNumber::invalidCall);
  return Left(text.substr(offsetOf(text, static_cast<std::size_t>(from) - 1)), count);
}

std::size_t InStr(std::string_view text, std::string_view part) noexcept {
  const std::size_t at = text.empty() ? std::string_view::npos : text.find(part);
  return at == std::string_view::npos ? 0 : length(text.substr(0, at)) + 1;
}

std::string_view Trim(std::string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Both loops are free of branches, so that compilers take many letters at a time.
bool isAscii(std::string_view text) noexcept {
  unsigned char bits = 0;
  for (const char c : text) bits |= static_cast<unsigned char>(c);
  return bits < 0x80;
}

void makeLower(std::span<char> letters) noexcept {
  for (char& c : letters) c = static_cast<char>(c + (c >= 'A' && c <= 'Z') * 32);
}

void appendFolded(std::string& out, std::string_view text) {
  if (isAscii(text)) {
    out += text;
    return makeLower(std::span(out).last(text.size()));
  }
  UErrorCode status = U_ZERO_ERROR;
  icu::StringByteSink<std::string> sink(&out, static_cast<std::int32_t>(text.size()));
  icu::CaseMap::utf8Fold(0, text, sink, nullptr, status);
  if (U_FAILURE(status)) throw RuntimeError(ErrorNumber::outOfMemory);
}

std::string fold(std::string_view text) {
  std::string folded;
  appendFolded(folded, text);
  return folded;
}

bool sameName(std::string_view a, std::string_view b) noexcept {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lower(x) == lower(y); });
}

std::string toWindows1252(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const CodePoint point = codePointAt(text, at);
    out += windows1252(point.value);
    at += point.bytes;
  }
  return out;
}

}  // namespace bw
