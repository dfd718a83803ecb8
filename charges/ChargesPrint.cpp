#include "charges/frmCharges.h"
#include "controls/TypedInput.h"
#include "core/Principal.h"
#include "data/Literals.h"
#include "printing/ListReports.h"
#include "printing/frmPrintGeneral.h"
#include "reports/ApoyoImpresion.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr FilterWord kWords[] = {{0, "All"}, {4, "Ready"}, {5, "Posted"}, {13, "Archived"}};

using WriteCharges = void (*)(const RecordSetRef&, const std::filesystem::path&, double, double,
                              const std::string&, const std::string&, const std::string&, bool);

struct ChargeReport {
  const char* title;
  const char* behindTitle;
  const char* document;
  WriteCharges write;  // none: the list as it stands
  bool realCodes = true;
  bool landscape = false;  // a fixed sheet, whatever the printer
};

// In the order of the dialog's entries.
// clang-format off
constexpr ChargeReport kReports[] = {
    {"Outstanding Charges (", "", "ChargesView.myv", nullptr},
    {"Outstanding Charges (", "", "ChargesDetail.myv", ChargesDetailReport, true},
    {"Outstanding Charges (", "(B)", "ChargesDetailB.myv", ChargesDetailReport, false},
    {"Billing (", "", "ChargesBilling.myv", ChargesBillingReport, true, true},
    {"Billing (", "(B)", "ChargesBillingB.myv", ChargesBillingReport, false, true},
};
// clang-format on

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
  PrintDialogItems = "Current view;Detailed view;Detailed view with billing codes";
  if (!panels_.isAll(PanelKind::insurance))
    PrintDialogItems += ";For data entry;For data entry with billing codes";
  frmPrintGeneral().showModal();
  if (PrintDialogChoice <= 0) return;
  const ChargeReport& report = kReports[static_cast<std::size_t>(PrintDialogChoice) - 1];
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
