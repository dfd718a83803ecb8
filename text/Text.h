#pragma once

#include <concepts>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace bw {

// Text is UTF-8. Positions count code points from 1; an ill-formed byte counts as one.

std::size_t length(std::string_view text) noexcept;  // code points

// Beyond the end there is what there is; a negative length raises 5, as does Mid from below 1.
std::string Left(std::string_view text, std::ptrdiff_t count);
std::string Right(std::string_view text, std::ptrdiff_t count);
std::string Mid(std::string_view text, std::ptrdiff_t from);
std::string Mid(std::string_view text, std::ptrdiff_t from, std::ptrdiff_t count);

// Position of the first occurrence, 0 when absent. Case matters. An empty part is found at 1,
// in an empty text nothing is.
std::size_t InStr(std::string_view text, std::string_view part) noexcept;

std::string_view Trim(std::string_view text) noexcept;  // blanks only

constexpr bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }  // of ASCII
bool isAscii(std::string_view text) noexcept;
void makeLower(std::span<char> letters) noexcept;  // those of ASCII

// Unicode case folding. Two texts are the same without regard to case when their foldings are
// equal; foldings ordered by bytes are in code point order.
std::string fold(std::string_view text);
void appendFolded(std::string& out, std::string_view text);

// Names in the program's own tables (columns, settings, operations): ASCII letters without case.
bool sameName(std::string_view a, std::string_view b) noexcept;

// Windows-1252; a character outside it becomes "?".
std::string toWindows1252(std::string_view text);

namespace detail {
// Truth values and characters are no numbers here: they would slip in unintended.
template <class T>
concept WholeNumber = std::integral<T> && sizeof(T) > 1 && !std::same_as<T, wchar_t> &&
                      !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

template <class T>
concept Piece = WholeNumber<T> || std::convertible_to<const T&, std::string_view>;

inline void append(std::string& out, std::string_view piece) { out += piece; }
template <WholeNumber Number>
void append(std::string& out, Number number) {
  out += std::to_string(number);
}
}  // namespace detail

// One string of all arguments: texts as they are, integers in decimal.
template <detail::Piece... Pieces>
std::string concat(const Pieces&... pieces) {
  std::string out;
  (detail::append(out, pieces), ...);
  return out;
}

// The texts of all items with a separator between them; textOf gives one as a string or a view.
template <class Items, class TextOf>
std::string joined(const Items& items, std::string_view separator, TextOf textOf) {
  std::string out;
  for (bool first = true; const auto& item : items) {
    if (!first) out += separator;
    out += textOf(item);
    first = false;
  }
  return out;
}

}  // namespace bw
