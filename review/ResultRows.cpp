#include "review/ResultRows.h"

#include <utility>

namespace bw {
namespace {

struct Append {
  Column& column;
  void operator()(std::monostate) const { column.appendNull(); }
  void operator()(std::int64_t number) const { column.appendInteger(number); }
  void operator()(const std::string& text) const { column.appendText(text); }
  void operator()(Date date) const { column.appendText(isoDate(date)); }
  void operator()(TimeOfDay time) const { column.appendText(isoTime(time)); }
  void operator()(DateTime moment) const { column.appendText(isoDateTime(moment)); }
};

}  // namespace

ResultRows::ResultRows(std::span<const Field> fields) {
  rows_->columns.reserve(fields.size());
  for (const Field& field : fields)
    rows_->columns.emplace_back(std::string(field.name), field.type);
}

void ResultRows::add(std::span<const Value> values) {
  auto column = rows_->columns.begin();
  for (const Value& value : values) std::visit(Append{*column++}, value);
}

std::shared_ptr<const RowStore> ResultRows::take() {
  for (Column& column : rows_->columns) column.finish();
  return std::exchange(rows_, nullptr);
}

}  // namespace bw
