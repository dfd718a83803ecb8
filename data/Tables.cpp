#include "data/Tables.h"

#include <algorithm>
#include <array>

#include "records/ColumnRules.h"
#include "text/Text.h"

namespace bw {
namespace {

using enum FieldType;
using enum Collation;

template <std::size_t count>
constexpr std::array<SchemaColumn, count> columns(const SchemaColumn (&all)[count]) {
  return std::to_array(all);
}

constexpr SchemaColumn kDescription{.name = "Description", .about = "name", .type = text};
constexpr SchemaColumn kChecked{
    .name = "checked", .about = "for the program alone", .working = true};

// clang-format off

constexpr auto kFacilityTypes = columns({
    {.name = "FacilityTypeCode", .about = "number"},
    kDescription});
constexpr auto kChargeTypes = columns({
    {.name = "ChargeTypeCode", .about = "number"},
    kDescription,
    {.name = "DoctorCaption", .about = "what the doctor of a charge is called under it",
     .type = text}});
constexpr auto kAttentionTypes = columns({
    {.name = "AttentionTypeCode", .about = "number"},
    kDescription});
constexpr auto kFrequency = columns({{.name = "Frequency", .about = "number"}, kDescription});
constexpr auto kSicknessType = columns({
    {.name = "SicknessTypeCode", .about = "number"},
    kDescription});
constexpr auto kInsurance = columns({
    {.name = "InsuranceCode", .about = "number"},
    kDescription,
    {.name = "BillingInsuranceCode", .about = "biller's code, empty when unknown", .type = text,
     .collation = codes}});
constexpr auto kDiagnosisFamily = columns({
    {.name = "DiagnosisFamilyCode", .about = "number"},
    {.name = "DiagnosisFamilyDescription", .about = "name", .type = text}});
constexpr auto kDiagnosis = columns({
    {.name = "DiagnosisCode", .about = "number"},
    kDescription,
    {.name = "DiagnosisFamilyCode", .about = "group", .parent = "DiagnosisFamily"},
    {.name = "RealDiagnosisCode", .about = "code of the diagnosis", .type = text},
    {.name = "BillingDiagnosisCode", .about = "biller's code, empty when unknown", .type = text,
     .collation = codes},
    kChecked});
constexpr auto kProcedures = columns({
    {.name = "ProcedureCode", .about = "number"},
    kDescription,
    {.name = "RealProcedureCode", .about = "code of the procedure", .type = text},
    {.name = "BillingProcedureCode", .about = "biller's code, empty when unknown", .type = text,
     .collation = codes},
    kChecked});
constexpr auto kEvaluationManagement = columns({
    {.name = "EMCode", .about = "number", .type = integer},
    kDescription,
    {.name = "FacilityTypeCode", .about = "kind of facility", .parent = "FacilityTypes"},
    {.name = "ChargeTypeCode", .about = "patient's status", .parent = "ChargeTypes"},
    {.name = "AttentionTypeCode", .about = "as what the doctor sees the patient",
     .parent = "AttentionTypes"},
    {.name = "BillingEMCode", .about = "biller's code, empty when unknown", .type = text,
     .collation = codes},
    {.name = "RealEMCode", .about = "code of the service", .type = text},
    {.name = "ShowOnFirst", .about = "offered on a first visit: 0 no, 1 yes"},
    {.name = "ShowOnNext", .about = "offered on further visits: 0 no, 1 yes"},
    {.name = "IsDischarge", .about = "1 initial, 2 follow-up, 3 discharge"}});
constexpr auto kFacility = columns({
    {.name = "FacilityCode", .about = "number", .zeroIsNone = true},
    kDescription,
    {.name = "FacilityTypeCode", .about = "kind of facility", .parent = "FacilityTypes"},
    {.name = "BillingFacilityCode", .about = "biller's code for inpatients, empty when unknown",
     .type = text, .collation = codes},
    {.name = "BillingFacilityCodeOut", .about = "biller's code for outpatients", .type = text,
     .collation = codes}});
constexpr auto kFacilityWards = columns({
    {.name = "WardCode", .about = "number", .zeroIsNone = true},
    {.name = "FacilityCode", .about = "facility", .parent = "Facility", .parentsPart = true},
    kDescription,
    kChecked});
constexpr auto kDoctors = columns({
    {.name = "DoctorCode", .about = "number", .zeroIsNone = true},
    kDescription,
    {.name = "BillingDoctorCode", .about = "biller's code, empty when unknown", .type = text,
     .collation = codes}});
constexpr auto kDoctorCoveringDoctors = columns({
    {.name = "DoctorCode", .about = "doctor", .parent = "Doctors", .parentsPart = true},
    {.name = "CoveringDoctorCode", .about = "the one for whom that doctor covers",
     .parent = "Doctors", .parentsPart = true}});
constexpr auto kSickness = columns({
    {.name = "SicknessCode", .about = "number"},
    kDescription,
    {.name = "SicknessTypeCode", .about = "kind of history item", .parent = "SicknessType"},
    kChecked});
constexpr auto kPatient = columns({
    {.name = "PatientId", .about = "number", .zeroIsNone = true},
    {.name = "Names", .about = "full name", .type = text},
    {.name = "DateOfBirth", .about = "date of birth", .type = date, .optional = true},
    {.name = "AccountNumber", .about = "account with the biller", .type = text, .collation = codes},
    {.name = "InsuranceCode", .about = "insurance", .parent = "Insurance"},
    {.name = "InFacilityCode", .about = "where the patient is admitted", .parent = "Facility",
     .zeroIsNone = true},
    {.name = "InWardCode", .about = "ward of the admission", .parent = "FacilityWards",
     .zeroIsNone = true},
    {.name = "InDoctorCode", .about = "attending doctor of the admission", .parent = "Doctors",
     .zeroIsNone = true},
    {.name = "LastChargeDate", .about = "1990-01-01 after a discharge", .type = date,
     .optional = true},
    {.name = "ZITS", .about = "last change of the row", .type = dateTime, .optional = true}});
constexpr auto kPatientHistory = columns({
    {.name = "PatientId", .about = "patient", .parent = "Patient", .parentsPart = true},
    {.name = "SicknessCode", .about = "history item", .parent = "Sickness"},
    {.name = "SicknessTypeCode", .about = "kind of history item", .parent = "SicknessType"}});
constexpr auto kPatientDoctors = columns({
    {.name = "PatientId", .about = "patient", .parent = "Patient", .parentsPart = true},
    {.name = "DoctorCode", .about = "doctor", .parent = "Doctors"},
    {.name = "AttentionTypeCode", .about = "as what the doctor sees the patient",
     .parent = "AttentionTypes"},
    {.name = "Frequency", .about = "how often the doctor visits", .parent = "Frequency"}});
constexpr auto kPatientCharges = columns({
    {.name = "PatientId", .about = "patient", .parent = "Patient"},
    {.name = "ChargeDate", .about = "day on which it was entered", .type = date},
    {.name = "ChargeTime", .about = "time at which it was entered", .type = time},
    {.name = "ChargeRealDate", .about = "date of service", .type = date},
    {.name = "FacilityCode", .about = "facility", .parent = "Facility"},
    {.name = "EMCode", .about = "what it is primarily for", .type = integer,
     .parent = "EvaluationManagement"},
    {.name = "DoctorCode", .about = "doctor", .parent = "Doctors"},
    {.name = "ReferDoctorCode", .about = "referring doctor", .parent = "Doctors"},
    {.name = "Status", .about = "0 ready, 1 posted, 2 archived by hand, 3 archived"},
    {.name = "PrintLot", .about = "lot in which it was posted", .type = integer,
     .optional = true}});
constexpr auto kChargeDiagnosis = columns({
    {.name = "PatientId", .about = "patient"},
    {.name = "ChargeDate", .about = "day on which it was entered", .type = date},
    {.name = "ChargeTime", .about = "time at which it was entered", .type = time},
    {.name = "DiagnosisCode", .about = "diagnosis", .parent = "Diagnosis"}});
constexpr auto kChargeProcedures = columns({
    {.name = "PatientId", .about = "patient"},
    {.name = "ChargeDate", .about = "day on which it was entered", .type = date},
    {.name = "ChargeTime", .about = "time at which it was entered", .type = time},
    {.name = "ProcedureCode", .about = "procedure", .parent = "Procedures"}});

// None on Status alone, which would draw the planner away from the date; none on doctor, facility or
// insurance, where reading the table is as quick; none for refused deletes.
constexpr auto kChargeIndexes = std::to_array<SchemaIndex>({
    {.name = "ChargesByDate", .columns = "ChargeRealDate"},
    {.name = "ChargesByStatus", .columns = "Status, ChargeRealDate"},
    {.name = "ChargesByLot", .columns = "PrintLot"},
    {.name = "ChargesToArchive", .columns = "PatientId, ChargeRealDate DESC",
     .condition = "Status <> 3"},
});

constexpr auto kTables = std::to_array<SchemaTable>({
    {.name = "FacilityTypes", .about = "kinds of facility", .columns = kFacilityTypes,
     .isLookup = true},
    {.name = "ChargeTypes", .about = "the patient's status on a charge", .columns = kChargeTypes,
     .isLookup = true},
    {.name = "AttentionTypes", .about = "as what a doctor sees a patient",
     .columns = kAttentionTypes, .isLookup = true},
    {.name = "Frequency", .about = "how often a doctor visits", .columns = kFrequency,
     .isLookup = true},
    {.name = "SicknessType", .about = "kinds of history item", .columns = kSicknessType,
     .isLookup = true},
    {.name = "Insurance", .about = "insurance companies", .columns = kInsurance,
     .isCatalogue = true},
    {.name = "DiagnosisFamily", .about = "groups of diagnoses", .columns = kDiagnosisFamily,
     .isCatalogue = true},
    {.name = "Diagnosis", .about = "diagnoses", .columns = kDiagnosis, .isCatalogue = true,
     .users = "diagnoses"},
    {.name = "Procedures", .about = "procedures", .columns = kProcedures, .isCatalogue = true},
    {.name = "EvaluationManagement", .about = "what a charge is primarily for",
     .columns = kEvaluationManagement, .isCatalogue = true},
    {.name = "Facility", .about = "facilities", .columns = kFacility, .isCatalogue = true,
     .one = "facility"},
    {.name = "FacilityWards", .about = "wards of the facilities", .columns = kFacilityWards,
     .isCatalogue = true, .one = "ward"},
    {.name = "Doctors", .about = "doctors", .columns = kDoctors, .isCatalogue = true,
     .one = "doctor"},
    {.name = "DoctorCoveringDoctors", .about = "which doctors a doctor covers for",
     .columns = kDoctorCoveringDoctors, .keySize = 2, .isCatalogue = true},
    {.name = "Sickness", .about = "history items", .columns = kSickness, .isCatalogue = true},
    {.name = "Patient", .about = "patients", .columns = kPatient, .users = "patients"},
    {.name = "PatientHistory", .about = "history items of the patients",
     .columns = kPatientHistory, .keySize = 3, .users = "patients",
     .twice = "This item is in the medical history already."},
    {.name = "PatientDoctors", .about = "doctors who visit a patient", .columns = kPatientDoctors,
     .keySize = 2, .users = "patients",
     .twice = "This doctor is among the visiting doctors already."},
    // With row numbers: without them the planner walks an index and looks every row up instead of
    // reading the table, which takes twice the time for the whole view and ten times for one doctor.
    {.name = "PatientCharges", .about = "charges", .columns = kPatientCharges, .keySize = 3,
     .hasRowNumbers = true, .indexes = kChargeIndexes, .users = "charges",
     .moved = "Both patients have a charge that was entered on the same date at the same time. "
              "Nothing was moved."},
    {.name = "ChargeDiagnosis", .about = "diagnoses of the charges", .columns = kChargeDiagnosis,
     .keySize = 4, .owner = "PatientCharges", .users = "charges"},
    {.name = "ChargeProcedures", .about = "procedures of the charges",
     .columns = kChargeProcedures, .keySize = 4, .owner = "PatientCharges", .users = "charges"},
});
// clang-format on

constexpr bool standsBefore(const SchemaTable& table, std::string_view parent) {
  return parent.empty() || std::any_of(kTables.data(), &table, [parent](const SchemaTable& one) {
           return one.name == parent;
         });
}
static_assert(std::ranges::all_of(kTables, [](const SchemaTable& table) {
  return standsBefore(table, table.owner) &&
         std::ranges::all_of(table.columns, [&table](const SchemaColumn& column) {
           return standsBefore(table, column.parent);
         });
}));

}  // namespace

std::span<const SchemaTable> schemaTables() noexcept { return kTables; }

const SchemaTable& schemaTable(std::string_view name) noexcept {
  return *std::ranges::find(kTables, name, &SchemaTable::name);
}

std::vector<SchemaReference> referencesOf(const SchemaTable& table) {
  std::vector<SchemaReference> references;
  for (const SchemaColumn& column : table.columns)
    if (!column.parent.empty())
      references.push_back({.columns = {&column, 1}, .parent = &schemaTable(column.parent)});
  if (table.owner.empty()) return references;
  const SchemaTable& owner = schemaTable(table.owner);
  references.push_back({.columns = table.columns.first(owner.keySize), .parent = &owner});
  return references;
}

std::string listOf(std::span<const SchemaColumn> columns) {
  return joined(columns, ", ", [](const SchemaColumn& column) { return column.name; });
}

std::string checkOf(const SchemaColumn& column) {
  return concat(column.name, ruleOf(column.type).ending);
}

}  // namespace bw
