#include "tools/TableFile.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>

#include "text/CodePage.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

constexpr std::string_view kTsv = ".tsv";
constexpr std::string_view kCsv = ".csv";

std::string wholeText(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  if (!stream)
    throw RuntimeError(ErrorNumber::fileNotFound, "The file cannot be read: " + file.string());
  return std::move(text).str();
}

void appendUtf8(std::string& out, char16_t character) {
  const auto add = [&out](unsigned byte) { out += static_cast<char>(byte); };
  if (character < 0x80) return add(character);
  if (character < 0x800)
    add(0xC0U | character >> 6U);
  else {
    add(0xE0U | character >> 12U);
    add(0x80U | (character >> 6U & 0x3FU));
  }
  add(0x80U | (character & 0x3FU));
}

std::string fromWindows1252(std::string_view name, std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    const char16_t character = byte < 0x80 || byte >= 0xA0 ? byte : kWindows1252.at(byte - 0x80U);
    if (character == 0 && byte != 0)
      throw Refused(concat(name, ", line ", 1 + std::ranges::count(bytes.substr(0, i), '\n'),
                           ": this is no text in Windows-1252."));
    appendUtf8(text, character);
  }
  return text;
}

bool isContinuation(unsigned char byte) noexcept { return (byte & 0xC0U) == 0x80U; }

// Bytes of the well-formed character that a text begins with, 0 when it is none.
std::size_t characterSize(std::string_view text) noexcept {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80U) return lead == 0 ? 0 : 1;
  const std::size_t size = lead < 0xC2U   ? 0
                           : lead < 0xE0U ? 2
                           : lead < 0xF0U ? 3
                           : lead < 0xF5U ? 4
                                          : 0;
  if (size == 0 || text.size() < size) return 0;
  for (std::size_t i = 1; i < size; ++i)
    if (!isContinuation(byte(i))) return 0;
  // Longer than need be, a surrogate, or beyond the last character.
  if ((lead == 0xE0U && byte(1) < 0xA0U) || (lead == 0xEDU && byte(1) > 0x9FU) ||
      (lead == 0xF0U && byte(1) < 0x90U) || (lead == 0xF4U && byte(1) > 0x8FU))
    return 0;
  return size;
}

bool isText(std::string_view cell) noexcept {
  while (!cell.empty()) {
    const std::size_t size = characterSize(cell);
    if (size == 0) return false;
    cell.remove_prefix(size);
  }
  return true;
}

std::optional<Value> integerIn(std::string_view cell) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), number);
  if (error != std::errc() || end != cell.data() + cell.size()) return {};
  return number;
}

template <class T>
std::optional<Value> asValue(const std::optional<T>& moment) {
  return moment ? std::optional<Value>(*moment) : std::nullopt;
}

}  // namespace

TableFile::TableFile(const std::filesystem::path& file, TextCode code)
    : name_(file.filename().string()), text_(wholeText(file)), quotes_(tableEnding(file) == kCsv) {
  if (code == TextCode::windows1252) text_ = fromWindows1252(name_, text_);
  const std::string_view text = text_;
  if (text.starts_with("\xEF\xBB\xBF")) at_ = 3;
  if (quotes_) separator_ = text.find(',') < text.find('\n') ? ',' : ';';
  readCells();
  header_ = cells_;
}

const std::vector<std::string_view>* TableFile::next() {
  if (at_ == text_.size()) return nullptr;
  readCells();
  return &cells_;
}

double TableFile::done() const noexcept {
  return text_.empty() ? 1 : static_cast<double>(at_) / static_cast<double>(text_.size());
}

void TableFile::readCells() {
  line_ = nextLine_;
  cells_.clear();
  do
    cells_.push_back(quotes_ && at_ < text_.size() && text_[at_] == '"' ? quotedCell()
                                                                        : plainCell());
  while (stepsToCell());
}

bool TableFile::isAtEndOfCell() const noexcept {
  return at_ == text_.size() || text_[at_] == separator_ || text_[at_] == '\n';
}

// Over what stands behind a cell; false at the end of the row.
bool TableFile::stepsToCell() {
  if (at_ == text_.size()) return false;
  if (text_[at_++] == separator_) return true;
  ++nextLine_;
  return false;
}

std::string_view TableFile::plainCell() {
  const std::size_t from = at_;
  while (!isAtEndOfCell()) ++at_;
  std::string_view cell(text_.data() + from, at_ - from);
  const bool endsRow = at_ == text_.size() || text_[at_] == '\n';
  if (endsRow && cell.ends_with('\r')) cell.remove_suffix(1);
  return cell;
}

std::string_view TableFile::quotedCell() {
  char* const begin = text_.data() + ++at_;
  char* end = begin;
  for (;; ++at_) {
    const std::size_t quote = text_.find('"', at_);
    if (quote == std::string::npos) refuse("a quoted cell does not end.");
    const std::string_view piece(text_.data() + at_, quote - at_);
    nextLine_ += static_cast<std::size_t>(std::ranges::count(piece, '\n'));
    end = std::ranges::copy(piece, end).out;
    at_ = quote + 1;
    if (at_ == text_.size() || text_[at_] != '"') break;
    *end++ = '"';
  }
  if (at_ < text_.size() && text_[at_] == '\r') ++at_;
  if (!isAtEndOfCell()) refuse("text stands behind the closing quote of a cell.");
  return {begin, end};
}

void TableFile::refuse(std::string_view sentence) const {
  throw Refused(concat(name_, ", line ", line_, ": ", sentence));
}

std::optional<std::string_view> tableEnding(const std::filesystem::path& file) {
  for (const std::string_view ending : {kTsv, kCsv})
    if (sameName(file.extension().string(), ending)) return ending;
  return {};
}

std::optional<Value> cellValue(FieldType type, std::string_view cell) {
  if (type == FieldType::text)
    return isText(cell) ? std::optional<Value>(std::string(cell)) : std::nullopt;
  if (cell.empty()) return Value();
  switch (type) {
    case FieldType::date:
      return asValue(parseIsoDate(cell));
    case FieldType::time:
      return asValue(parseIsoTime(cell));
    case FieldType::dateTime:
      return asValue(parseIsoDateTime(cell));
    default:
      return integerIn(cell);
  }
}

std::string cellText(const Value& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  if (const auto* date = std::get_if<Date>(&value)) return isoDate(*date);
  if (const auto* time = std::get_if<TimeOfDay>(&value)) return isoTime(*time);
  if (const auto* moment = std::get_if<DateTime>(&value)) return isoDateTime(*moment);
  return textOrEmpty(value);
}

}  // namespace bw
