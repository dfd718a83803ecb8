#include "tools/TableFile.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>

#include "text/RuntimeError.h"

namespace bw {
namespace {

std::string wholeText(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  if (!stream)
    throw RuntimeError(ErrorNumber::fileNotFound, "The file cannot be read: " + file.string());
  return std::move(text).str();
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

TableFile::TableFile(const std::filesystem::path& file) : text_(wholeText(file)), rest_(text_) {
  if (rest_.starts_with("\xEF\xBB\xBF")) rest_.remove_prefix(3);
  readCells();
  header_ = cells_;
}

const std::vector<std::string_view>* TableFile::next() {
  if (rest_.empty()) return nullptr;
  readCells();
  return &cells_;
}

double TableFile::done() const noexcept {
  return text_.empty() ? 1
                       : 1 - static_cast<double>(rest_.size()) / static_cast<double>(text_.size());
}

void TableFile::readCells() {
  const std::size_t end = std::min(rest_.find('\n'), rest_.size());
  std::string_view line = rest_.substr(0, end);
  rest_.remove_prefix(std::min(end + 1, rest_.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  ++line_;
  cells_.clear();
  for (;;) {
    const std::size_t tab = line.find('\t');
    cells_.push_back(line.substr(0, tab));
    if (tab == std::string_view::npos) return;
    line.remove_prefix(tab + 1);
  }
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

}  // namespace bw
