#include "tools/TableFile.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

constexpr std::string_view kTsv = ".tsv";
constexpr std::string_view kCsv = ".csv";

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
    : TableFile(file.filename().string(), readText(file, code),
                tableEnding(file) == kCsv ? Cells::quoted : Cells::plain) {}

TableFile::TableFile(std::string name, std::string text, Cells cells)
    : name_(std::move(name)), text_(std::move(text)), quotes_(cells == Cells::quoted) {
  if (quotes_) separator_ = text_.find(',') < text_.find('\n') ? ',' : ';';
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
