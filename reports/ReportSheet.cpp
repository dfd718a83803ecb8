#include "reports/ReportSheet.h"

#include "core/LongWork.h"
#include "core/Services.h"
#include "reports/ApoyoMyView.h"
#include "text/RuntimeError.h"

namespace bw {

bool Sheet::makeRoom(double height) {
  constexpr double kTolerance = 1e-6;  // what fits exactly fits, whatever was summed up
  if (page_ > 0 && y + height <= limit_ + kTolerance) return false;
  beginPage();
  return true;
}

void Sheet::beginPage() {
  if (page_ > 0) finish();
  ++page_;
  y = 1.25;
  ViewerPageHeader(report_.headerLine, report_.title, report_.subtitles, page_, y);
}

void Sheet::finish() { ViewerFooterBar(page_, limit_ + 0.5, report_.width - 0.9); }

void writeReport(const Report& report, std::ptrdiff_t count,
                 const std::function<void(Sheet& sheet, std::ptrdiff_t record)>& write) {
  if (count == 0) return;
  try {
    ViewerDocument document(report.document, report.width, report.height);
    Sheet sheet(report);
    LongWork work("Writing the report...", count);
    for (std::ptrdiff_t record = 0; record < count; ++record) {
      write(sheet, record);
      work.step();
    }
    sheet.finish();
    document.close();
  } catch (const RuntimeError& error) {
    if (error.number() != ErrorNumber::pathNotFound) throw;
    return MsgBox(error.text());
  }
  services().view(report.document);
}

}  // namespace bw
