#include "review/TableText.h"

#include <numeric>

#include "text/CsvText.h"

namespace bw {

std::string tableText(const RowStore& store, std::span<const std::uint32_t> rows,
                      std::span<const ListColumn> columns) {
  std::string text(kCsvMark);
  appendCsvRecord(text, columns, [](const ListColumn& column) { return column.text; });
  std::vector<const Column*> fields;
  fields.reserve(columns.size());
  for (const ListColumn& column : columns)
    fields.push_back(&store.columns[store.indexOf(column.key)]);
  for (const std::uint32_t row : rows)
    appendCsvRecord(text, fields,
                    [row](const Column* field) { return textOrEmpty(field->value(row)); });
  return text;
}

std::string tableText(const RowStore& store) {
  std::vector<ListColumn> columns;
  columns.reserve(store.columns.size());
  for (const Column& column : store.columns) columns.push_back({column.name(), column.name()});
  std::vector<std::uint32_t> rows(store.rowCount());
  std::iota(rows.begin(), rows.end(), 0U);
  return tableText(store, rows, columns);
}

}  // namespace bw
