#include "printing/ListReports.h"

#include <algorithm>
#include <vector>

#include "core/Principal.h"
#include "core/Services.h"
#include "reports/ApoyoImpresion.h"
#include "text/Conversions.h"
#include "text/Text.h"

namespace bw {
std::string reportTitle(std::string_view title, std::span<const FilterWord> words,
                        std::int16_t filter) {
  const auto found = std::find_if(words.begin(), words.end(),
                                  [&](const FilterWord& word) { return word.filter == filter; });
  return concat(title, found == words.end() ? "" : found->word, ")");
}

std::filesystem::path documentPath(std::string_view name) {
  return services().documentFolder() / name;
}

ColumnLists columnLists(const ListView& list) {
  std::vector<int> shown(static_cast<std::size_t>(list.columns()));
  for (int i = 0; i < list.columns(); ++i)
    shown[static_cast<std::size_t>(list.Position(i)) - 1] = i;
  ColumnLists lists;
  for (const int i : shown) {
    if (list.Width(i) <= 0) continue;
    const std::string width = textOf(Round(static_cast<double>(list.Width(i)) / 1440, 2));
    lists.heads += concat(list.column(i).text, ",", width, ";");
    lists.fields += concat(list.column(i).key, ",", width, ";");
  }
  return lists;
}

void printList(const ListView& list, const RecordSetRef& recordset, const ListReport& report,
               std::int16_t filter) {
  const ColumnLists columns = columnLists(list);
  ListReportWrite(recordset, documentPath(report.document), PageWidthInches, PageHeightInches,
                  ReportHeaderLine, reportTitle(report.title, report.words, filter), "",
                  columns.heads, columns.fields);
}

}  // namespace bw
