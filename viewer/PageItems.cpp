#include "viewer/PageItems.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

#include "viewer/Windows1252.h"

namespace bw {

namespace {

constexpr double kMaxTwips = 1000 * kTwipsPerInch;
constexpr double kMaxPoints = 500;
constexpr std::string_view kPageTotalToken = "#TotalPaginas";

enum Field : std::size_t {
  fieldX = 1,
  fieldY,
  fieldWidth,
  fieldHeight,
  fieldPageTotal,
  fieldKind,
  fieldAlign,
  fieldValign,
  fieldColour = 11,
  fieldFill,
  fieldFontSize = 14,
  fieldBold,
  fieldNoCaption,
  fieldLineWidth,
  fieldText,
};

using Fields = std::array<std::string_view, kItemFields>;

// False when there are fewer than 19. The last field holds the rest of the line, commas included.
bool split(std::string_view line, Fields& fields) {
  const char* at = line.data();
  const char* const end = at + line.size();
  for (std::size_t i = 0; i < fieldText; ++i) {
    const void* found =
        at == end ? nullptr : std::memchr(at, ',', static_cast<std::size_t>(end - at));
    if (found == nullptr) return false;
    const char* comma = static_cast<const char*>(found);
    fields[i] = {at, static_cast<std::size_t>(comma - at)};
    at = comma + 1;
  }
  fields[fieldText] = {at, static_cast<std::size_t>(end - at)};
  return true;
}

Align alignOf(std::string_view field) {
  if (field == "1") return Align::centre;
  return field == "2" ? Align::end : Align::start;
}

// A writer's 32-bit number can be signed or not; the low 24 bits are the colour.
bool readColour(std::string_view field, std::uint32_t& colour) {
  std::int64_t number = 0;
  const char* end = field.data() + field.size();
  const auto [rest, error] = std::from_chars(field.data(), end, number);
  if (error != std::errc() || rest != end) return false;
  colour = static_cast<std::uint32_t>(number & 0xFFFFFF);
  return true;
}

bool readNumber(std::string_view field, double limit, double& number) {
  const auto read = parseDecimal(field, limit);
  if (read) number = *read;
  return read.has_value();
}

bool readText(const Fields& fields, PageItem& item) {
  item.kind = ItemKind::text;
  item.align = alignOf(fields[fieldAlign]);
  item.valign = alignOf(fields[fieldValign]);
  item.pageTotal = fields[fieldPageTotal] == "1";
  item.bold = fields[fieldBold] == "1";
  item.caption = fields[fieldNoCaption] == "0";
  item.text = fields[fieldText];
  return readColour(fields[fieldColour], item.colour) &&
         readNumber(fields[fieldFontSize], kMaxPoints, item.fontSize) && item.fontSize > 0;
}

bool readShape(const Fields& fields, PageItem& item) {
  item.kind = ItemKind::shape;
  return readColour(fields[fieldColour], item.colour) && readColour(fields[fieldFill], item.fill) &&
         readNumber(fields[fieldLineWidth], kMaxTwips, item.lineWidth) && item.lineWidth >= 0;
}

// The whole of the text as a number.
template <class T>
std::optional<T> parsed(std::string_view text) noexcept {
  T number{};
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

// Of a line that is no item.
Fault faultOf(std::string_view line) {
  Fields fields;
  return split(line, fields) ? Fault::number : Fault::fields;
}

}  // namespace

std::optional<double> parseDecimal(std::string_view text, double limit) noexcept {
  // Nearly all numbers of a document are whole, and those are read in a fourth of the time.
  if (const auto whole = parsed<std::uint32_t>(text)) {
    return *whole <= limit ? std::optional<double>(*whole) : std::nullopt;
  }
  const auto number = parsed<double>(text);
  return number && std::abs(*number) <= limit ? number : std::nullopt;
}

std::optional<PageItem> parseItem(std::string_view line) {
  Fields fields;
  PageItem item;
  const bool placed = split(line, fields) && readNumber(fields[fieldX], kMaxTwips, item.x) &&
                      readNumber(fields[fieldY], kMaxTwips, item.y) &&
                      readNumber(fields[fieldWidth], kMaxTwips, item.width) &&
                      readNumber(fields[fieldHeight], kMaxTwips, item.height);
  if (!placed) return std::nullopt;
  if (fields[fieldKind] == "0" && readText(fields, item)) return item;
  if (fields[fieldKind] == "2" && readShape(fields, item)) return item;
  return std::nullopt;
}

PageItems parsePage(std::string_view document, std::span<const LineRun> runs) {
  PageItems page;
  for (const LineRun& run : runs) {
    std::string_view rest = document.substr(run.begin, run.end - run.begin);
    for (std::size_t number = run.firstLine; !rest.empty(); ++number) {
      const std::size_t end = std::min(rest.find('\n'), rest.size());
      std::string_view line = rest.substr(0, end);
      rest.remove_prefix(std::min(end + 1, rest.size()));
      if (line.ends_with('\r')) line.remove_suffix(1);
      if (line.empty()) continue;
      if (const auto item = parseItem(line)) {
        page.items.push_back(*item);
      } else if (!page.damage) {
        page.damage = {faultOf(line), number};
      }
    }
  }
  return page;
}

std::string itemBytes(const PageItem& item, std::size_t pageTotal) {
  std::string text(item.text);
  if (!item.pageTotal) return text;
  const std::string total = std::to_string(pageTotal);
  for (std::size_t at = 0; (at = text.find(kPageTotalToken, at)) != text.npos;) {
    text.replace(at, kPageTotalToken.size(), total);
    at += total.size();
  }
  return text;
}

std::u16string itemText(const PageItem& item, std::size_t pageTotal) {
  return item.pageTotal ? fromWindows1252(itemBytes(item, pageTotal)) : fromWindows1252(item.text);
}

}  // namespace bw
