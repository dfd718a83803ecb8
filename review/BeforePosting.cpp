#include "review/BeforePosting.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "records/KeyIndex.h"
#include "review/ChargeTable.h"
#include "review/ResultRows.h"
#include "review/Statements.h"
#include "text/Text.h"

namespace bw {
namespace {

// Codes and names of a catalogue of details.
class DetailCatalogue {
 public:
  explicit DetailCatalogue(const RowStore& rows)
      : index_(rows.columns[rows.indexOf("Code")]), description_(rows, "Description"),
        billingCode_(rows, "BillingCode") {}

  // The names of those without a billing code.
  std::string uncoded(const std::vector<std::int64_t>& codes) const {
    std::vector<std::string_view> names;
    for (const std::int64_t code : codes)
      if (const std::uint32_t row = index_.row(code);
          row != KeyIndex::kNone && billingCode_.isBlank(row))
        names.push_back(description_.text(row));
    return joined(names, ", ", [](std::string_view name) { return name; });
  }

 private:
  KeyIndex index_;
  TableColumn description_;
  TableColumn billingCode_;
};

// Patient, day of care and concept.
using Care = std::tuple<std::int64_t, std::int64_t, std::int64_t>;

class CareOf {
 public:
  explicit CareOf(const RowStore& rows)
      : patient_(rows, "PatientId"), day_(rows, "ChargeRealDate"), concept_(rows, "EMCode") {}
  Care operator()(std::size_t row) const { return {patient_(row), day_(row), concept_(row)}; }
  std::int64_t patient(std::size_t row) const { return patient_(row); }

 private:
  TableColumn patient_;
  TableColumn day_;
  TableColumn concept_;
};

constexpr std::size_t kPatients = 65536;  // numbers have 16 bits

std::size_t placeOf(std::int64_t patient) { return static_cast<std::uint16_t>(patient); }

// Of the patients who have ready charges, in order.
std::vector<Care> careOfReadyPatients(const RowStore& ready, const RowStore& all) {
  std::vector<bool> wanted(kPatients);
  const CareOf readyCare(ready);
  for (std::size_t row = 0; row < ready.rowCount(); ++row)
    wanted[placeOf(readyCare.patient(row))] = true;
  const CareOf allCare(all);
  std::vector<Care> care;
  for (std::size_t row = 0; row < all.rowCount(); ++row)
    if (wanted[placeOf(allCare.patient(row))]) care.push_back(allCare(row));
  std::sort(care.begin(), care.end());
  return care;
}

std::vector<bool> admittedPatients(const RowStore& rows) {
  std::vector<bool> admitted(kPatients);
  const TableColumn patient(rows, "PatientId");
  for (std::size_t row = 0; row < rows.rowCount(); ++row) admitted[placeOf(patient(row))] = true;
  return admitted;
}

struct Ready {
  explicit Ready(const ReadyOffice& office)
      : rows(*office.charges), diagnoses(rows, *office.diagnoses),
        procedures(rows, *office.procedures), diagnosisCatalogue(*office.diagnosisCatalogue),
        procedureCatalogue(*office.procedureCatalogue),
        admitted(admittedPatients(*office.admitted)),
        care(careOfReadyPatients(rows, *office.allOfCare)) {}

  const RowStore& rows;
  ChargeDetails diagnoses;
  ChargeDetails procedures;
  DetailCatalogue diagnosisCatalogue;
  DetailCatalogue procedureCatalogue;
  std::vector<bool> admitted;
  std::vector<Care> care;
  CareOf careOf{rows};

  TableColumn patient{rows, "PatientId"};
  TableColumn day{rows, "ChargeRealDate"};
  TableColumn account{rows, "AccountNumber"};
  TableColumn names{rows, "Names"};
  TableColumn birth{rows, "DateOfBirth"};
  TableColumn insuranceCode{rows, "InsuranceCode"};
  TableColumn insurance{rows, "Insurance"};
  TableColumn facility{rows, "Facility"};
  TableColumn facilityCodeIn{rows, "BillingFacilityCode"};
  TableColumn facilityCodeOut{rows, "BillingFacilityCodeOut"};
  TableColumn doctor{rows, "Doctor"};
  TableColumn doctorCode{rows, "BillingDoctorCode"};
  TableColumn refer{rows, "ReferDoctor"};
  TableColumn referCode{rows, "BillingReferDoctorCode"};
  TableColumn concept_{rows, "EMDescription"};
  TableColumn conceptCode{rows, "BillingEMCode"};
  TableColumn status{rows, "ChargeTypeCode"};

  bool isInpatient(std::size_t row) const { return status(row) == 1; }
};

using What = std::optional<std::string>;

What whenBlank(const TableColumn& code, const TableColumn& name, std::size_t row) {
  return code.isBlank(row) ? What(name.text(row)) : std::nullopt;
}
What when(bool found) { return found ? What(std::string()) : std::nullopt; }
What whenAny(std::string names) { return names.empty() ? std::nullopt : What(std::move(names)); }

struct Cause {
  std::string_view name;  // in the settings
  std::string_view caption;
  // What is wrong with a charge: the thing's name, "" where the caption says it all.
  What (*find)(const Ready& ready, std::size_t row, Date today);
};

constexpr Cause kCauses[] = {
    {.name = "Diagnosis",
     .caption = "No diagnosis",
     .find = [](const Ready& r, std::size_t row,
                Date) { return when(r.diagnoses.of(row).empty()); }},
    {.name = "DoctorCode",
     .caption = "Doctor without billing code",
     .find = [](const Ready& r, std::size_t row,
                Date) { return whenBlank(r.doctorCode, r.doctor, row); }},
    {.name = "ReferCode",
     .caption = "Referring doctor without billing code",
     .find = [](const Ready& r, std::size_t row,
                Date) { return whenBlank(r.referCode, r.refer, row); }},
    {.name = "FacilityCode",
     .caption = "Facility without billing code",
     .find =
         [](const Ready& r, std::size_t row, Date) {
           return whenBlank(r.isInpatient(row) ? r.facilityCodeIn : r.facilityCodeOut, r.facility,
                            row);
         }},
    {.name = "ConceptCode",
     .caption = "E&M concept without billing code",
     .find = [](const Ready& r, std::size_t row,
                Date) { return whenBlank(r.conceptCode, r.concept_, row); }},
    {.name = "DiagnosisCode",
     .caption = "Diagnosis without billing code",
     .find = [](const Ready& r, std::size_t row,
                Date) { return whenAny(r.diagnosisCatalogue.uncoded(r.diagnoses.of(row))); }},
    {.name = "ProcedureCode",
     .caption = "Procedure without billing code",
     .find = [](const Ready& r, std::size_t row,
                Date) { return whenAny(r.procedureCatalogue.uncoded(r.procedures.of(row))); }},
    {.name = "Account",
     .caption = "Patient without account",
     .find = [](const Ready& r, std::size_t row, Date) { return when(r.account.isBlank(row)); }},
    {.name = "Birth",
     .caption = "Patient without date of birth",
     .find = [](const Ready& r, std::size_t row, Date) { return when(r.birth.isNull(row)); }},
    {.name = "Twice",
     .caption = "Several charges of one patient, day and concept",
     .find =
         [](const Ready& r, std::size_t row, Date) {
           const auto [from, to] = std::equal_range(r.care.begin(), r.care.end(), r.careOf(row));
           return to - from > 1 ? What(concat(to - from, " charges")) : std::nullopt;
         }},
    {.name = "Future",
     .caption = "Date of care in the future",
     .find = [](const Ready& r, std::size_t row,
                Date today) { return when(r.day(row) > today.day); }},
    {.name = "Unborn",
     .caption = "Date of care before the birth",
     .find = [](const Ready& r, std::size_t row,
                Date) { return when(!r.birth.isNull(row) && r.day(row) < r.birth(row)); }},
    {.name = "NotAdmitted",
     .caption = "Inpatient concept, patient not admitted today",
     .find = [](const Ready& r, std::size_t row,
                Date) { return when(r.isInpatient(row) && !r.admitted[placeOf(r.patient(row))]); }},
};

// Looks at every charge for every cause.
class Findings {
 public:
  Findings(const Ready& ready, const PostingQuestion& question)
      : ready_(ready), question_(question) {
    for (const Cause& cause : kCauses) isOn_.push_back(question.isOn(cause.name));
  }

  PostingFindings find() {
    for (std::size_t row = 0; row < ready_.rows.rowCount(); ++row)
      if (isAskedFor(row)) look(row);
    result_.causes = causes();
    result_.charges = charges_.take();
    return std::move(result_);
  }

 private:
  bool isAskedFor(std::size_t row) const {
    return (question_.insurance == 0 || ready_.insuranceCode(row) == question_.insurance) &&
           (!question_.day || ready_.day(row) == question_.day->day);
  }

  void look(std::size_t row) {
    bool faulty = false;
    for (std::size_t i = 0; i < std::size(kCauses); ++i) {
      const What what = kCauses[i].find(ready_, row, question_.today);
      if (!what) continue;
      ++counts_[i];
      if (!isOn_[i]) continue;
      faulty = true;
      add(i, row, *what);
    }
    ++result_.ready;
    if (faulty) ++result_.faulty;
  }

  void add(std::size_t cause, std::size_t row, const std::string& what) {
    charges_.add({countValue(cause + 1), textValue(kCauses[cause].caption), ready_.day.value(row),
                  textValue(ready_.account.text(row)), textValue(ready_.names.text(row)), what,
                  textValue(ready_.insurance.text(row)), textValue(ready_.facility.text(row)),
                  textValue(ready_.doctor.text(row)), textValue(ready_.concept_.text(row))});
  }

  Rows causes() const {
    ResultRows rows{{"Part", FieldType::integer},
                    {"Cause"},
                    {"Charges", FieldType::integer},
                    {"Name"},
                    {"checked", FieldType::integer}};
    std::size_t all = 0;
    for (std::size_t i = 0; i < std::size(kCauses); ++i) all += isOn_[i] ? counts_[i] : 0;
    rows.add({countValue(0), textValue("All causes"), countValue(all), textValue(""),
              countValue(std::ranges::count(isOn_, false) == 0)});
    for (std::size_t i = 0; i < std::size(kCauses); ++i)
      rows.add({countValue(i + 1), textValue(kCauses[i].caption), countValue(counts_[i]),
                textValue(kCauses[i].name), countValue(isOn_[i])});
    return rows.take();
  }

  const Ready& ready_;
  const PostingQuestion& question_;
  std::vector<bool> isOn_;
  std::array<std::size_t, std::size(kCauses)> counts_{};
  ResultRows charges_{{"Part", FieldType::integer},
                      {"Cause"},
                      {"ChargeRealDate", FieldType::date},
                      {"AccountNumber"},
                      {"Names"},
                      {"What"},
                      {"Insurance"},
                      {"Facility"},
                      {"Doctor"},
                      {"EMDescription"}};
  PostingFindings result_;
};

}  // namespace

ReadyOffice readReadyOffice() {
  OfficeSnapshot snapshot(7);
  ReadyOffice office;
  office.charges = snapshot.read(statements::kReadyCharges);
  office.diagnoses = snapshot.read(statements::diagnosesWhere(statements::kReady));
  office.procedures = snapshot.read(statements::proceduresWhere(statements::kReady));
  office.diagnosisCatalogue = snapshot.read(statements::kDiagnoses);
  office.procedureCatalogue = snapshot.read(statements::kProcedures);
  office.admitted = snapshot.read(statements::kAdmittedPatients);
  office.allOfCare = snapshot.read(statements::kCareOfAll);
  return office;
}

PostingFindings findBeforePosting(const ReadyOffice& office, const PostingQuestion& question) {
  return Findings(Ready(office), question).find();
}

}  // namespace bw
