#include "records/RowMark.h"

namespace bw {

std::string markOf(const RowStore& store, std::uint32_t row,
                   const std::vector<std::string>& fields) {
  std::string mark;
  for (const std::string& field : fields) {
    const Column& column = store.columns[store.indexOf(field)];
    if (column.isNull(row)) continue;
    const std::string text = textOf(column.value(row));
    if (!mark.empty() && !text.empty()) mark += ", ";
    mark += text;
  }
  return mark;
}

}  // namespace bw
