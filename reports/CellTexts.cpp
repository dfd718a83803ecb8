#include "reports/CellTexts.h"

#include <algorithm>

#include "records/KeyIndex.h"
#include "text/Conversions.h"
#include "text/Text.h"

namespace bw {

bool needsNoChange(std::string_view text) noexcept {
  return std::none_of(text.begin(), text.end(),
                      [](char c) { return (c & 0x80) != 0 || c == '\n' || c == '\r'; });
}

std::string fileText(std::string_view text) {
  if (needsNoChange(text)) return std::string(text);
  std::string out = toWindows1252(text);
  std::replace(out.begin(), out.end(), '\r', ' ');
  std::replace(out.begin(), out.end(), '\n', ' ');
  return out;
}

void CellTexts::read(const Column& column, std::span<const std::uint32_t> rows) {
  const RowLookUp* lookUp = column.isText() && column.written().empty() ? column.lookUp() : nullptr;
  column_ = &column;
  isFound_ = lookUp != nullptr;
  for (std::size_t i = 0; i < rows.size(); ++i)
    values_[i] = isFound_ ? lookUp->row(rows[i]) : column.raw(rows[i]);
}

std::string_view CellTexts::text(std::size_t place, std::uint32_t row) {
  const std::int64_t value = values_[place];
  if (isFound_) return found(static_cast<std::uint32_t>(value));
  if (value == raw_) return text_;
  raw_ = value;
  text_ = column_->isText() ? ofRaw(value) : textOrEmpty(column_->value(row));
  return text_;
}

std::string CellTexts::ofRaw(std::int64_t raw) const {
  return raw == Column::kNull ? std::string() : fileText(column_->textOfRaw(raw));
}

std::string_view CellTexts::found(std::uint32_t row) {
  if (row == KeyIndex::kNone) return "";
  if (row >= foundTexts_.size()) foundTexts_.resize(std::size_t{row} + 1);
  std::optional<std::string>& text = foundTexts_[row];
  if (!text) text = ofRaw(column_->rawFound(row));
  return *text;
}

}  // namespace bw
