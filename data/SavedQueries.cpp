#include "data/SavedQueries.h"

namespace bw {
namespace {

constexpr std::string_view kChargeKey[] = {"PatientId", "ChargeDate", "ChargeTime"};

// Status 3 has no words.
constexpr std::string_view kStatusWords[] = {"Ready", "Posted", "Archived"};

// clang-format off
constexpr LookUpTable kChargeTables[] = {
    {.alias = "p", .table = "Patient", .key = "PatientId", .from = "c", .foreign = "PatientId"},
    {.alias = "i", .table = "Insurance", .key = "InsuranceCode", .from = "p", .foreign = "InsuranceCode"},
    {.alias = "e", .table = "EvaluationManagement", .key = "EMCode", .from = "c", .foreign = "EMCode"},
    {.alias = "f", .table = "Facility", .key = "FacilityCode", .from = "c", .foreign = "FacilityCode"},
    {.alias = "d", .table = "Doctors", .key = "DoctorCode", .from = "c", .foreign = "DoctorCode"},
    {.alias = "r", .table = "Doctors", .key = "DoctorCode", .from = "c", .foreign = "ReferDoctorCode"},
};

constexpr LookUpField kChargeFields[] = {
    {"c", "PatientId"}, {"c", "ChargeDate"}, {"c", "ChargeTime"}, {"c", "ChargeRealDate"},
    {"c", "FacilityCode"}, {"c", "EMCode"}, {"c", "DoctorCode"}, {"c", "ReferDoctorCode"},
    {"c", "Status"}, {"c", "PrintLot"},
    {"status", "word", "StatusDescription"},
    {"p", "Names"}, {"p", "DateOfBirth"}, {"p", "AccountNumber"}, {"p", "InsuranceCode"},
    {"i", "Description", "Insurance"},
    {"e", "Description", "EMDescription"}, {"e", "RealEMCode"}, {"e", "BillingEMCode"},
    {"e", "ChargeTypeCode"},
    {"f", "Description", "Facility"}, {"f", "BillingFacilityCode"}, {"f", "BillingFacilityCodeOut"},
    {"d", "Description", "Doctor"}, {"d", "BillingDoctorCode"},
    {"r", "Description", "ReferDoctor"}, {"r", "BillingDoctorCode", "BillingReferDoctorCode"},
};
// clang-format on

// The engine's view is not ordered: its list sorts it. Its joins are all LEFT JOINs, so that no
// filter but the patient's insurance starts from another table than the charges, whatever
// statistics the file holds.
constexpr LookedUpQuery kQueries[] = {
    {.name = "ChargesDescriptive",
     .base = "PatientCharges",
     .alias = "c",
     .key = kChargeKey,
     .tables = kChargeTables,
     .words = {.alias = "status", .foreign = "Status", .words = kStatusWords},
     .fields = kChargeFields},
};

}  // namespace

std::span<const LookedUpQuery> lookedUpQueries() { return kQueries; }

Connection officeConnection(std::unique_ptr<Engine> engine) {
  Connection connection(std::move(engine));
  connection.lookedUpQueries = lookedUpQueries();
  return connection;
}

}  // namespace bw
