#include "reports/ApoyoImpresion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <optional>

#include "data/BWSQLPatients.h"
#include "reports/ApoyoMyView.h"
#include "reports/ReportSheet.h"
#include "text/Formats.h"
#include "text/Text.h"

namespace bw {
namespace {

// Writes the document, a record at a time, and starts the viewer.
void writeReport(const RecordSetRef& recordset, const Report& report,
                 const std::function<void(Sheet&)>& writeRecord) {
  bw::writeReport(report, recordset->RecordCount(), [&](Sheet& sheet, std::ptrdiff_t record) {
    recordset->setAbsolutePosition(record + 1);
    writeRecord(sheet);
  });
}

std::string dayOf(const RecordSet& charge, const char* field) {
  return Format(charge.value(field), "mm/dd/yy");
}

std::string nameAndBirth(const RecordSet& charge, const char* gap) {
  return concat(charge.textOrEmpty("Names"), gap, dayOf(charge, "DateOfBirth"), ") ");
}

std::string withCode(const RecordSet& record, const char* text, const char* code) {
  return concat(record.textOrEmpty(text), "  (", record.textOrEmpty(code), ")");
}

bool ofInpatient(const RecordSet& charge) { return charge.textOrEmpty("ChargeTypeCode") == "1"; }

const char* facilityCodeField(const RecordSet& charge) {
  return ofInpatient(charge) ? "BillingFacilityCode" : "BillingFacilityCodeOut";
}

struct CodeFields {
  const char* concept_;
  const char* diagnosis;
  const char* procedure;
};
constexpr CodeFields kRealCodes{"RealEMCode", "RealDiagnosisCode", "RealProcedureCode"};
constexpr CodeFields kBillingCodes{"BillingEMCode", "BillingDiagnosisCode", "BillingProcedureCode"};

// The details of the charge that the record set stands on.
class Details {
 public:
  explicit Details(const RecordSet& charge) {
    const std::int16_t patient = charge.code("PatientId");
    const Date date = charge.date("ChargeDate");
    const TimeOfDay time = charge.time("ChargeTime");
    diagnoses = ChargeDiagnosisList(patient, date, time);
    procedures = ChargeProceduresList(patient, date, time);
  }
  Details(const Details&) = delete;
  Details& operator=(const Details&) = delete;
  ~Details() {
    diagnoses.close();
    procedures.close();
  }

  RecordSetRef diagnoses;
  RecordSetRef procedures;
};

template <class Write>
void forEachRecord(const RecordSetRef& recordset, Write write) {
  for (int i = 0; !recordset->EOF_(); recordset->MoveNext(), ++i) write(*recordset, i);
}

// The detailed report.

constexpr double kBoxRow = 0.25;
constexpr double kColumnWidth = 7.3 / 3;
constexpr int kLeftRows = 7;

void writeFrame(const Sheet& sheet, double height) {
  const std::int32_t page = sheet.page();
  const double y = sheet.y;
  ViewerShape(page, 0.5, y, 7.0, height, 0.02, kWhite, kBlack);
  ViewerShape(page, 0.5 + kColumnWidth, y, kColumnWidth, height, 0.02, kWhite, kBlack);
  // As many as the left column needs, however high the box is.
  for (int i = 1; i < kLeftRows; ++i)
    ViewerShape(page, 0.5, y + i * kBoxRow, kColumnWidth, 0.005, 0.001, kBlack, kBlack);
}

void writeCaption(const Sheet& sheet, double x, double y, const char* text) {
  ViewerText(sheet.page(), x, y, 2.0, 0.2, kLeft, kTop, kBlack, 6, false, false, text);
}

void writeValue(const Sheet& sheet, double x, double y, std::string_view text) {
  ViewerText(sheet.page(), x, y, 2.3, 0.24, kLeft, kBottom, kBlack, 10, false, true, text);
}

void writeLeftColumn(const Sheet& sheet, const RecordSet& charge, const CodeFields& codes) {
  // "Managment" is the caption as it is printed.
  const std::array<std::pair<const char*, std::string>, kLeftRows> rows{{
      {"Patient", nameAndBirth(charge, "  (")},
      {"Date of Service", dayOf(charge, "ChargeRealDate")},
      {"Evaluation & Managment", withCode(charge, "EMDescription", codes.concept_)},
      {"Facility", withCode(charge, "Facility", facilityCodeField(charge))},
      {"Refer Doctor", withCode(charge, "ReferDoctor", "BillingReferDoctorCode")},
      {"Billing Doctor", withCode(charge, "Doctor", "BillingDoctorCode")},
      {"Insurance", charge.textOrEmpty("Insurance")},
  }};
  double y = sheet.y;
  for (const auto& [caption, value] : rows) {
    writeCaption(sheet, 0.51, y, caption);
    writeValue(sheet, 0.6, y, value);
    y += kBoxRow;
  }
}

void writeDetailColumn(const Sheet& sheet, double x, const char* caption,
                       const RecordSetRef& details, const char* code) {
  writeCaption(sheet, x + 0.01, sheet.y, caption);
  forEachRecord(details, [&](const RecordSet& detail, int i) {
    writeValue(sheet, x + 0.1, sheet.y + i * kBoxRow,
               concat(detail.textOrEmpty("Description"), " (", detail.textOrEmpty(code), ")"));
  });
}

// The sheet for data entry.

constexpr double kBillingHead = 0.25;
constexpr double kBillingRow = 0.2;  // a text's box: a rule between patients stays clear of it

struct BillingColumn {
  const char* caption;
  double shapeX;
  double shapeW;
  double textX;
  double textW;
};
constexpr BillingColumn kBillingColumns[] = {
    {"Patient", 0.5, 2.95, 0.55, 2.45},   {"POS", 3.5, 0.45, 3.55, 0.45},
    {"Diagnosis", 4.0, 1.95, 4.05, 1.95}, {"Procedures", 6.0, 1.95, 6.05, 1.95},
    {"E&M", 8.0, 0.45, 8.05, 0.45},       {"DOS", 8.5, 0.55, 8.55, 0.55},
    {"Refer.", 9.1, 0.45, 9.15, 0.6},     {"Bill.", 9.6, 0.45, 9.65, 0.6},
    {"Status", 10.1, 0.45, 10.15, 0.6},
};

void writeBillingHeads(Sheet& sheet) {
  for (const BillingColumn& column : kBillingColumns) {
    ViewerShape(sheet.page(), column.shapeX, sheet.y, column.shapeW, kBillingHead, 0.001, kGrey,
                kGrey);
    ViewerText(sheet.page(), column.textX, sheet.y, column.textW, kBillingHead, kLeft, kMiddle,
               kBlack, 10, true, true, column.caption);
  }
  sheet.y += kBillingHead;
}

// The height of a charge's line, by its codes, four to a row. The procedures' share is rounded to
// whole inches, so that they count from the ninth on, and then for an inch.
double billingHeight(std::ptrdiff_t diagnoses, std::ptrdiff_t procedures) {
  const auto rows = [](std::ptrdiff_t codes) {
    return std::floor(static_cast<double>(codes - 1) / 4) + 1;
  };
  return std::max(
      {rows(diagnoses) * kBillingRow, std::nearbyint(rows(procedures) * kBillingRow), kBillingRow});
}

void writeCell(const Sheet& sheet, double x, double y, double w, std::string_view text,
               std::int32_t colour = kBlack, std::int16_t size = 10) {
  ViewerText(sheet.page(), x, y, w, kBillingRow, kLeft, kMiddle, colour, size, false, true, text);
}

void writePatient(Sheet& sheet, const RecordSet& charge, bool first, double pageWidth) {
  if (!first)
    ViewerShape(sheet.page(), 0.5, sheet.y - 0.025, pageWidth - 1.0, 0.01, 0.001, kBlack, kBlack);
  sheet.y += 0.01;
  writeCell(sheet, 0.55, sheet.y, 2.25, charge.textOrEmpty("AccountNumber"));
  writeCell(sheet, 1.05, sheet.y, 2.25, nameAndBirth(charge, " ("));
}

void writeBillingCodes(const Sheet& sheet, double x, const RecordSetRef& details,
                       const char* code) {
  forEachRecord(details, [&](const RecordSet& detail, int i) {
    const int row = i / 4;
    writeCell(sheet, x + (i & 3) * 0.5, sheet.y + row * 0.15, 1.95, detail.textOrEmpty(code));
  });
}

std::int32_t statusColour(const std::string& status) {
  if (status == "0") return RGB(128, 0, 0);
  return status == "1" ? RGB(128, 128, 0) : RGB(0, 128, 0);
}

void writeBillingValues(const Sheet& sheet, const RecordSet& charge, const Details& details,
                        const CodeFields& codes) {
  const auto cell = [&](double x, double w, const std::string& text) {
    writeCell(sheet, x, sheet.y, w, text);
  };
  cell(3.55, 0.45, charge.textOrEmpty(facilityCodeField(charge)));
  writeBillingCodes(sheet, 4.05, details.diagnoses, codes.diagnosis);
  writeBillingCodes(sheet, 6.05, details.procedures, codes.procedure);
  cell(8.05, 2.25, charge.textOrEmpty(codes.concept_));
  cell(8.55, 0.55, dayOf(charge, "ChargeRealDate"));
  cell(9.15, 2.25, charge.textOrEmpty("BillingReferDoctorCode"));
  cell(9.65, 2.25, charge.textOrEmpty("BillingDoctorCode"));
  writeCell(sheet, 10.15, sheet.y, 0.45, charge.textOrEmpty("statusDescription"),
            statusColour(charge.textOrEmpty("status")));
}

}  // namespace

void ListReportWrite(const RecordSetRef& recordset, const std::filesystem::path& document,
                     double width, double height, const std::string& headerLine,
                     const std::string& title, const std::string& subtitles,
                     const std::string& heads, const std::string& fields) {
  constexpr double kX = 0.6;
  constexpr double kBox = 0.25;  // higher than a row's step: the boxes overlap
  constexpr double kMargin = 0.05;
  constexpr double kStep = 0.15;
  writeReport(
      recordset, {document, width, height, headerLine, title, subtitles}, [&](Sheet& sheet) {
        if (sheet.makeRoom(kStep)) {
          ViewerColumnHeads(kX, sheet.y, kBox, 0.001, kGrey, kGrey, kBlack, 10, kMargin, heads,
                            sheet.page());
          sheet.y += 0.2;
        }
        ViewerRowCells(recordset, kX, sheet.y, kBox, kBlack, 10, kMargin, fields, sheet.page());
        sheet.y += kStep;
      });
}

void ChargesDetailReport(const RecordSetRef& recordset, const std::filesystem::path& document,
                         double width, double height, const std::string& headerLine,
                         const std::string& title, const std::string& subtitles, bool realCodes) {
  const CodeFields& codes = realCodes ? kRealCodes : kBillingCodes;
  writeReport(recordset, {document, width, height, headerLine, title, subtitles},
              [&](Sheet& sheet) {
                const Details details(*recordset);
                const std::ptrdiff_t rows =
                    std::max({std::ptrdiff_t{kLeftRows}, details.diagnoses->RecordCount(),
                              details.procedures->RecordCount()});
                const double box = static_cast<double>(rows) * kBoxRow;
                if (sheet.makeRoom(box + 0.15)) sheet.y += 0.2;
                writeFrame(sheet, box);
                writeLeftColumn(sheet, *recordset, codes);
                writeDetailColumn(sheet, 0.5 + kColumnWidth, "Diagnosis", details.diagnoses,
                                  codes.diagnosis);
                writeDetailColumn(sheet, 0.5 + 2 * kColumnWidth, "Procedures", details.procedures,
                                  codes.procedure);
                sheet.y += box + 0.15;
              });
}

void ChargesBillingReport(const RecordSetRef& recordset, const std::filesystem::path& document,
                          double width, double height, const std::string& headerLine,
                          const std::string& title, const std::string& subtitles, bool realCodes) {
  const CodeFields& codes = realCodes ? kRealCodes : kBillingCodes;
  std::optional<std::int16_t> lastPatient;
  writeReport(
      recordset, {document, width, height, headerLine, title, subtitles}, [&](Sheet& sheet) {
        const Details details(*recordset);
        const double line =
            billingHeight(details.diagnoses->RecordCount(), details.procedures->RecordCount());
        if (sheet.makeRoom(line)) {
          sheet.y += 0.2;
          writeBillingHeads(sheet);
        }
        writeCell(sheet, 0.4, sheet.y, 2.25, concat(recordset->AbsolutePosition()), kBlack, 6);
        const std::int16_t patient = recordset->code("PatientId");
        if (patient != lastPatient) {
          writePatient(sheet, *recordset, !lastPatient, width);
          lastPatient = patient;
        }
        writeBillingValues(sheet, *recordset, details, codes);
        sheet.y += line;
      });
}

}  // namespace bw
