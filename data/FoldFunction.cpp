#include "data/FoldFunction.h"

#include <vector>

#include "text/Text.h"

namespace bw {
namespace {

constexpr char32_t kFirst = 0x80;  // below it letters of ASCII, which are folded without a table
constexpr char32_t kLast = 0x10ffff;

constexpr bool isSurrogate(char32_t point) noexcept { return point >= 0xd800 && point <= 0xdfff; }

std::string utf8(char32_t point) {
  const auto byte = [point](unsigned shift, unsigned lead) {
    return static_cast<char>(
        lead | (shift == 0 || lead == 0x80 ? point >> shift & 0x3fU : point >> shift));
  };
  if (point < 0x800) return {byte(6, 0xc0), byte(0, 0x80)};
  if (point < 0x10000) return {byte(12, 0xe0), byte(6, 0x80), byte(0, 0x80)};
  return {byte(18, 0xf0), byte(12, 0x80), byte(6, 0x80), byte(0, 0x80)};
}

struct Foldings {
  std::string from, to;  // letters that become one letter, in one order
  std::vector<std::pair<std::string, std::string>> longer;
};

Foldings foldings() {
  Foldings all;
  for (char32_t point = kFirst; point <= kLast; ++point) {
    if (isSurrogate(point)) continue;
    const std::string letter = utf8(point);
    const std::string folded = fold(letter);
    if (folded == letter) continue;
    if (length(folded) > 1) {
      all.longer.emplace_back(letter, folded);
      continue;
    }
    all.from += letter;
    all.to += folded;
  }
  return all;
}

}  // namespace

// A text of ASCII takes the short way. What a letter becomes is not folded again, so that the
// longer ones can be replaced one after another.
std::string foldFunctionStatement() {
  const Foldings all = foldings();
  std::string folded =
      concat("translate(lower($1 COLLATE \"C\"), '", all.from, "', '", all.to, "')");
  for (const auto& [letter, letters] : all.longer)
    folded = concat("replace(", folded, ", '", letter, "', '", letters, "')");
  return concat(
      "CREATE FUNCTION bw_fold(text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $bw$"
      "SELECT CASE WHEN octet_length($1) = char_length($1) THEN lower($1 COLLATE \"C\") ELSE ",
      folded, " END$bw$");
}

}  // namespace bw
