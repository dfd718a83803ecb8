#include "printing/ListReports.h"

#include <algorithm>
#include <vector>

#include "core/Principal.h"
#include "core/Services.h"
#include "platform/Conversions.h"
#include "platform/Text.h"
#include "reports/ApoyoImpresion.h"

namespace bw {
namespace {

constexpr FilterWord kCatalogueWords[] = {{0, "All"}, {1, "Incomplete"}};
constexpr FilterWord kSicknessWords[] = {
    {0, "All"}, {10, "Allergies"}, {11, "Medical"}, {12, "Surgical"}};
constexpr FilterWord kEMWords[] = {{0, "All"}, {1, "Incomplete"}, {6, "Hospitals"},
                                   {7, "B&C"}, {8, "ECF"},        {9, "Home"}};
constexpr FilterWord kPatientWords[] = {
    {0, "All"}, {1, "Incomplete"}, {2, "Admitted"}, {3, "Not admitted"}};

// "Evaulation", and the missing blank behind "Diagnosis Families", are the titles as printed.
// clang-format off
constexpr ListReport kReports[] = {
    {"frmFacilities", "Facilities (", "FacilitiesView.myv", kCatalogueWords},
    {"frmInsurances", "Insurances (", "InsurancesView.myv", kCatalogueWords},
    {"frmProcedures", "Procedures (", "ProceduresView.myv", kCatalogueWords},
    {"frmDiagnosis", "Diagnosis (", "DiagnosisView.myv", kCatalogueWords},
    {"frmDoctors", "Doctors (", "DoctorsView.myv", kCatalogueWords},
    {"frmDiagnosisFamilies", "Diagnosis Families(", "DiagnosisFamiliesView.myv", kCatalogueWords},
    {"frmSickness", "History Items (", "HistoryItemsView.myv", kSicknessWords},
    {"frmEMCodes", "Evaulation & Management Codes (", "EMCodesView.myv", kEMWords},
    {"frmPatients", "Patients (", "PatientView.myv", kPatientWords},
};
// clang-format on

}  // namespace

const ListReport& listReport(std::string_view form) {
  const auto* found = std::find_if(std::begin(kReports), std::end(kReports),
                                   [&](const ListReport& report) { return report.form == form; });
  if (found == std::end(kReports)) throw RuntimeError(ErrorNumber::elementNotFound);
  return *found;
}

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
