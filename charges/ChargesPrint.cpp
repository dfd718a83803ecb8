#include <vector>

#include "charges/frmCharges.h"
#include "controls/TypedInput.h"
#include "core/Principal.h"
#include "data/Literals.h"
#include "lists/Filters.h"
#include "printing/ListReports.h"
#include "printing/frmPrintGeneral.h"
#include "reports/ApoyoImpresion.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr FilterWord kWords[] = {{filter::all, "All"},
                                 {filter::ready, "Ready"},
                                 {filter::posted, "Posted"},
                                 {filter::archived, "Archived"}};

using WriteCharges = void (*)(const RecordSetRef&, const std::filesystem::path&, double, double,
                              const std::string&, const std::string&, const std::string&, bool);

struct ChargeReport {
  const char* entry;  // of the dialog
  const char* title;
  const char* behindTitle;
  const char* document;
  WriteCharges write = nullptr;  // none: the list as it stands
  bool realCodes = true;
  bool ofOneInsurance = false;
  bool landscape = false;  // a fixed sheet, whatever the printer
};

constexpr ChargeReport kReports[] = {
    {.entry = "Current view",
     .title = "Outstanding Charges (",
     .behindTitle = "",
     .document = "ChargesView.myv"},
    {.entry = "Detailed view",
     .title = "Outstanding Charges (",
     .behindTitle = "",
     .document = "ChargesDetail.myv",
     .write = ChargesDetailReport},
    {.entry = "Detailed view with billing codes",
     .title = "Outstanding Charges (",
     .behindTitle = "(B)",
     .document = "ChargesDetailB.myv",
     .write = ChargesDetailReport,
     .realCodes = false},
    {.entry = "For data entry",
     .title = "Billing (",
     .behindTitle = "",
     .document = "ChargesBilling.myv",
     .write = ChargesBillingReport,
     .ofOneInsurance = true,
     .landscape = true},
    {.entry = "For data entry with billing codes",
     .title = "Billing (",
     .behindTitle = "(B)",
     .document = "ChargesBillingB.myv",
     .write = ChargesBillingReport,
     .realCodes = false,
     .ofOneInsurance = true,
     .landscape = true},
};

// Has the clerk choose one of those that the filter allows; none when he thinks better of it.
const ChargeReport* chosenReport(bool isOneInsurance) {
  std::vector<const ChargeReport*> offered;
  PrintDialogItems.clear();
  for (const ChargeReport& report : kReports) {
    if (report.ofOneInsurance && !isOneInsurance) continue;
    PrintDialogItems += concat(offered.empty() ? "" : ";", report.entry);
    offered.push_back(&report);
  }
  frmPrintGeneral().showModal();
  return PrintDialogChoice <= 0 ? nullptr
                                : offered[static_cast<std::size_t>(PrintDialogChoice) - 1];
}

}  // namespace

// A line of its own for each filter that is on; the lines behind the first begin with a blank.
std::string ChargesView::reportSubtitles() const {
  std::string text;
  const auto add = [&](PanelKind kind, const char* label) {
    if (!panels_.isAll(kind)) text += concat(label, panels_.text(kind), "; ");
  };
  add(PanelKind::patient, "Patient: ");
  add(PanelKind::insurance, "Insurance: ");
  add(PanelKind::doctor, "Doctor: ");
  if (!panels_.isAll(PanelKind::dates))
    text += concat("from ", monthFirst(panels_.first()->value()), " to ",
                   monthFirst(panels_.last()->value()), "; ");
  if (!panels_.isAll(PanelKind::lot)) text += "Lot: " + panels_.text(PanelKind::lot);
  return text;
}

void ChargesView::Imprimir() {
  if (!settleInputs(*this)) return;  // the document names the dates
  constexpr double kSheetWidth = 11;
  constexpr double kSheetHeight = 8.2;
  PrintDialogCaption = "Print Charges";
  const ChargeReport* chosen = chosenReport(!panels_.isAll(PanelKind::insurance));
  if (chosen == nullptr) return;
  const ChargeReport& report = *chosen;
  const std::string title = reportTitle(report.title, kWords, ActiveFilter) + report.behindTitle;
  const std::string subtitles = reportSubtitles();
  const double width = report.landscape ? kSheetWidth : PageWidthInches;
  const double height = report.landscape ? kSheetHeight : PageHeightInches;
  if (report.write != nullptr)
    return report.write(RsCharges, documentPath(report.document), width, height, ReportHeaderLine,
                        title, subtitles, report.realCodes);
  const ColumnLists columns = columnLists(*ListView1);
  ListReportWrite(RsCharges, documentPath(report.document), width, height, ReportHeaderLine, title,
                  subtitles, columns.heads, columns.fields);
}

}  // namespace bw
