#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "text/Text.h"

// Everything that Review asks of the database. Whole tables are read as they stand, and what is
// asked about them is worked out from the rows.

namespace bw::statements {

inline constexpr std::string_view kCharges = "SELECT * FROM ChargesDescriptive";
inline constexpr std::string_view kReadyCharges =
    "SELECT * FROM ChargesDescriptive WHERE Status = 0";
inline constexpr std::string_view kCareOfAll =
    "SELECT PatientId, ChargeRealDate, EMCode, DoctorCode FROM PatientCharges";
inline constexpr std::string_view kAdmittedPatients =
    "SELECT PatientId FROM Patient WHERE InFacilityCode <> 0";

inline constexpr std::string_view kAdmitted = "SELECT * FROM PatientsDescriptiveAdmitted";
inline constexpr std::string_view kPatients = "SELECT * FROM PatientsDescriptive";
inline constexpr std::string_view kMoments =
    "SELECT PatientId, ChargeDate, ChargeTime FROM PatientCharges";
inline constexpr std::string_view kWards = "SELECT WardCode, Description FROM FacilityWards";
inline constexpr std::string_view kVisits = "SELECT * FROM PatientDoctorsDescriptive";

// Details of the charges c that a condition names: their key and Code.
inline std::string detailsWhere(std::string_view table, std::string_view code,
                                std::string_view condition) {
  return concat("SELECT d.PatientId, d.ChargeDate, d.ChargeTime, d.", code,
                " AS Code FROM PatientCharges c INNER JOIN ", table,
                " d ON d.PatientId = c.PatientId AND d.ChargeDate = c.ChargeDate "
                "AND d.ChargeTime = c.ChargeTime WHERE ",
                condition);
}
inline std::string diagnosesWhere(std::string_view condition) {
  return detailsWhere("ChargeDiagnosis", "DiagnosisCode", condition);
}
inline std::string proceduresWhere(std::string_view condition) {
  return detailsWhere("ChargeProcedures", "ProcedureCode", condition);
}
inline constexpr std::string_view kReady = "c.Status = 0";
inline constexpr std::string_view kDiagnoses =
    "SELECT DiagnosisCode AS Code, Description, RealDiagnosisCode AS RealCode, "
    "BillingDiagnosisCode AS BillingCode FROM Diagnosis";
inline constexpr std::string_view kProcedures =
    "SELECT ProcedureCode AS Code, Description, RealProcedureCode AS RealCode, "
    "BillingProcedureCode AS BillingCode FROM Procedures";

// A posted lot.
inline std::string chargesOfLot(std::int64_t lot) {
  return concat("SELECT * FROM ChargesDescriptive WHERE PrintLot = ", lot);
}
inline std::string ofLot(std::int64_t lot) { return concat("c.PrintLot = ", lot); }

// What can be chosen.
inline constexpr std::string_view kInsuranceNames =
    "SELECT InsuranceCode AS Code, Description FROM Insurance";
inline constexpr std::string_view kDoctorNames =
    "SELECT DoctorCode AS Code, Description FROM Doctors";

inline constexpr std::string_view kFrequencies =
    "SELECT Frequency AS Code, Description FROM Frequency";

}  // namespace bw::statements
