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

constexpr SchemaColumn kDescription{.name = "Description", .type = text};
constexpr SchemaColumn kChecked{.name = "checked", .working = true};

// clang-format off

constexpr auto kFacilityTypes = columns({{.name = "FacilityTypeCode"}, kDescription});
constexpr auto kChargeTypes = columns({
    {.name = "ChargeTypeCode"},
    kDescription,
    {.name = "DoctorCaption", .type = text}});
constexpr auto kAttentionTypes = columns({{.name = "AttentionTypeCode"}, kDescription});
constexpr auto kFrequency = columns({{.name = "Frequency"}, kDescription});
constexpr auto kSicknessType = columns({{.name = "SicknessTypeCode"}, kDescription});
constexpr auto kInsurance = columns({
    {.name = "InsuranceCode"},
    kDescription,
    {.name = "BillingInsuranceCode", .type = text, .collation = codes}});
constexpr auto kDiagnosisFamily = columns({
    {.name = "DiagnosisFamilyCode"},
    {.name = "DiagnosisFamilyDescription", .type = text}});
constexpr auto kDiagnosis = columns({
    {.name = "DiagnosisCode"},
    kDescription,
    {.name = "DiagnosisFamilyCode", .parent = "DiagnosisFamily"},
    {.name = "RealDiagnosisCode", .type = text},
    {.name = "BillingDiagnosisCode", .type = text, .collation = codes},
    kChecked});
constexpr auto kProcedures = columns({
    {.name = "ProcedureCode"},
    kDescription,
    {.name = "RealProcedureCode", .type = text},
    {.name = "BillingProcedureCode", .type = text, .collation = codes},
    kChecked});
constexpr auto kEvaluationManagement = columns({
    {.name = "EMCode", .type = integer},
    kDescription,
    {.name = "FacilityTypeCode", .parent = "FacilityTypes"},
    {.name = "ChargeTypeCode", .parent = "ChargeTypes"},
    {.name = "AttentionTypeCode", .parent = "AttentionTypes"},
    {.name = "BillingEMCode", .type = text, .collation = codes},
    {.name = "RealEMCode", .type = text},
    {.name = "ShowOnFirst"},
    {.name = "ShowOnNext"},
    {.name = "IsDischarge"}});
constexpr auto kFacility = columns({
    {.name = "FacilityCode", .zeroIsNone = true},
    kDescription,
    {.name = "FacilityTypeCode", .parent = "FacilityTypes"},
    {.name = "BillingFacilityCode", .type = text, .collation = codes},
    {.name = "BillingFacilityCodeOut", .type = text, .collation = codes}});
constexpr auto kFacilityWards = columns({
    {.name = "WardCode", .zeroIsNone = true},
    {.name = "FacilityCode", .parent = "Facility", .parentsPart = true},
    kDescription,
    kChecked});
constexpr auto kDoctors = columns({
    {.name = "DoctorCode", .zeroIsNone = true},
    kDescription,
    {.name = "BillingDoctorCode", .type = text, .collation = codes}});
constexpr auto kDoctorCoveringDoctors = columns({
    {.name = "DoctorCode", .parent = "Doctors", .parentsPart = true},
    {.name = "CoveringDoctorCode", .parent = "Doctors", .parentsPart = true}});
constexpr auto kSickness = columns({
    {.name = "SicknessCode"},
    kDescription,
    {.name = "SicknessTypeCode", .parent = "SicknessType"},
    kChecked});
constexpr auto kPatient = columns({
    {.name = "PatientId", .zeroIsNone = true},
    {.name = "Names", .type = text},
    {.name = "DateOfBirth", .type = date, .optional = true},
    {.name = "AccountNumber", .type = text, .collation = codes},
    {.name = "InsuranceCode", .parent = "Insurance"},
    {.name = "InFacilityCode", .parent = "Facility", .zeroIsNone = true},
    {.name = "InWardCode", .parent = "FacilityWards", .zeroIsNone = true},
    {.name = "InDoctorCode", .parent = "Doctors", .zeroIsNone = true},
    {.name = "LastChargeDate", .type = date, .optional = true},
    {.name = "ZITS", .type = dateTime, .optional = true}});
constexpr auto kPatientHistory = columns({
    {.name = "PatientId", .parent = "Patient", .parentsPart = true},
    {.name = "SicknessCode", .parent = "Sickness"},
    {.name = "SicknessTypeCode", .parent = "SicknessType"}});
constexpr auto kPatientDoctors = columns({
    {.name = "PatientId", .parent = "Patient", .parentsPart = true},
    {.name = "DoctorCode", .parent = "Doctors"},
    {.name = "AttentionTypeCode", .parent = "AttentionTypes"},
    {.name = "Frequency", .parent = "Frequency"}});
constexpr auto kPatientCharges = columns({
    {.name = "PatientId", .parent = "Patient"},
    {.name = "ChargeDate", .type = date},
    {.name = "ChargeTime", .type = time},
    {.name = "ChargeRealDate", .type = date},
    {.name = "FacilityCode", .parent = "Facility"},
    {.name = "EMCode", .type = integer, .parent = "EvaluationManagement"},
    {.name = "DoctorCode", .parent = "Doctors"},
    {.name = "ReferDoctorCode", .parent = "Doctors"},
    {.name = "Status"},
    {.name = "PrintLot", .type = integer, .optional = true}});
constexpr auto kChargeDiagnosis = columns({
    {.name = "PatientId"},
    {.name = "ChargeDate", .type = date},
    {.name = "ChargeTime", .type = time},
    {.name = "DiagnosisCode", .parent = "Diagnosis"}});
constexpr auto kChargeProcedures = columns({
    {.name = "PatientId"},
    {.name = "ChargeDate", .type = date},
    {.name = "ChargeTime", .type = time},
    {.name = "ProcedureCode", .parent = "Procedures"}});

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
    {.name = "Insurance", .about = "insurance companies", .columns = kInsurance},
    {.name = "DiagnosisFamily", .about = "groups of diagnoses", .columns = kDiagnosisFamily},
    {.name = "Diagnosis", .about = "diagnoses", .columns = kDiagnosis, .users = "diagnoses"},
    {.name = "Procedures", .about = "procedures", .columns = kProcedures},
    {.name = "EvaluationManagement", .about = "what a charge is primarily for",
     .columns = kEvaluationManagement},
    {.name = "Facility", .about = "facilities", .columns = kFacility, .one = "facility"},
    {.name = "FacilityWards", .about = "wards of the facilities", .columns = kFacilityWards,
     .one = "ward"},
    {.name = "Doctors", .about = "doctors", .columns = kDoctors, .one = "doctor"},
    {.name = "DoctorCoveringDoctors", .about = "which doctors a doctor covers for",
     .columns = kDoctorCoveringDoctors, .keySize = 2},
    {.name = "Sickness", .about = "history items", .columns = kSickness},
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
