#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "records/RecordSet.h"

namespace bw {

struct Field {
  const char* name;
  FieldType type;
};
using Row = std::vector<Value>;

namespace detail {
inline Value valueOf(std::nullptr_t) { return {}; }
inline Value valueOf(Value value) { return value; }
}  // namespace detail

// A row of plain literals; nullptr is no value.
template <class... Values>
Row row(Values... values) {
  return {detail::valueOf(values)...};
}

inline void appendTo(Column& column, const Value& value) {
  if (isNull(value)) return column.appendNull();
  if (const auto* number = std::get_if<std::int64_t>(&value)) return column.appendInteger(*number);
  if (const auto* date = std::get_if<Date>(&value)) return column.appendText(isoDate(*date));
  if (const auto* time = std::get_if<TimeOfDay>(&value)) return column.appendText(isoTime(*time));
  if (const auto* moment = std::get_if<DateTime>(&value))
    return column.appendText(isoDateTime(*moment));
  column.appendText(std::get<std::string>(value));
}

// A store as an engine would fill it.
inline std::shared_ptr<RowStore> makeStore(const std::vector<Field>& fields,
                                           const std::vector<Row>& rows) {
  auto store = std::make_shared<RowStore>();
  for (const Field& field : fields) store->columns.emplace_back(field.name, field.type);
  for (const Row& values : rows)
    for (std::size_t i = 0; i < values.size(); ++i) appendTo(store->columns[i], values[i]);
  for (Column& column : store->columns) column.finish();
  return store;
}

// The rows from the current one on: "1|Beta 2|Alpha", with "null" for no value.
inline std::string told(RecordSet& set) {
  std::string text;
  for (; !set.EOF_(); set.MoveNext())
    for (std::size_t i = 0; i < set.fieldCount(); ++i)
      text += (i > 0 ? "|" : text.empty() ? "" : " ") + (set.isNull(i) ? "null" : set.text(i));
  return text;
}

}  // namespace bw
