#include "review/PageReport.h"

#include "core/Principal.h"
#include "printing/ListReports.h"

namespace bw {

void writePageReport(const PageSheet& asked, const std::vector<std::uint32_t>& order,
                     const std::function<void(Sheet& sheet, std::uint32_t row)>& write) {
  const std::filesystem::path document = documentPath(asked.document);
  writeReport(
      {document, static_cast<double>(PageWidthInches), static_cast<double>(PageHeightInches),
       ReportHeaderLine, asked.title, asked.subtitles},
      std::ssize(order), [&](Sheet& sheet, std::ptrdiff_t record) {
        write(sheet, order[static_cast<std::size_t>(record)]);
      });
}

}  // namespace bw
