#pragma once

#include <string>
#include <string_view>

namespace bw {

// Tables as text, for spreadsheets: fields parted by commas, records ended by CR and LF, in UTF-8
// behind its mark.

inline constexpr std::string_view kCsvMark = "\xEF\xBB\xBF";
inline constexpr std::string_view kCsvRecordEnd = "\r\n";

// A spreadsheet would take it for a formula. A number with a sign is none.
inline bool isFormula(std::string_view field) {
  constexpr std::string_view kBeginnings = "=+-@";
  constexpr std::string_view kNumber = "0123456789.,";
  if (field.empty() || kBeginnings.find(field.front()) == kBeginnings.npos) return false;
  const bool sign = field.front() == '+' || field.front() == '-';
  return !sign || field.find_first_not_of(kNumber, 1) != field.npos;
}

inline void appendCsvField(std::string& out, std::string_view field) {
  const bool quoted = field.find_first_of(",;\"\r\n") != field.npos;
  if (quoted) out += '"';
  if (isFormula(field)) out += '\'';
  for (const char c : field) {
    if (c == '"') out += '"';
    out += c;
  }
  if (quoted) out += '"';
}

// A record of all items; textOf gives the field of one.
template <class Items, class TextOf>
void appendCsvRecord(std::string& out, const Items& items, TextOf textOf) {
  for (bool first = true; const auto& item : items) {
    if (!first) out += ',';
    appendCsvField(out, textOf(item));
    first = false;
  }
  out += kCsvRecordEnd;
}

}  // namespace bw
