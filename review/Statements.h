#pragma once

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

// Details of the charges that are ready.
inline constexpr std::string_view kReadyDiagnoses =
    "SELECT d.PatientId, d.ChargeDate, d.ChargeTime, d.DiagnosisCode AS Code "
    "FROM PatientCharges c INNER JOIN ChargeDiagnosis d ON d.PatientId = c.PatientId "
    "AND d.ChargeDate = c.ChargeDate AND d.ChargeTime = c.ChargeTime WHERE c.Status = 0";
inline constexpr std::string_view kReadyProcedures =
    "SELECT d.PatientId, d.ChargeDate, d.ChargeTime, d.ProcedureCode AS Code "
    "FROM PatientCharges c INNER JOIN ChargeProcedures d ON d.PatientId = c.PatientId "
    "AND d.ChargeDate = c.ChargeDate AND d.ChargeTime = c.ChargeTime WHERE c.Status = 0";
inline constexpr std::string_view kDiagnoses =
    "SELECT DiagnosisCode AS Code, Description, RealDiagnosisCode AS RealCode, "
    "BillingDiagnosisCode AS BillingCode FROM Diagnosis";
inline constexpr std::string_view kProcedures =
    "SELECT ProcedureCode AS Code, Description, RealProcedureCode AS RealCode, "
    "BillingProcedureCode AS BillingCode FROM Procedures";

// What can be chosen.
inline constexpr std::string_view kInsuranceNames =
    "SELECT InsuranceCode AS Code, Description FROM Insurance";
inline constexpr std::string_view kDoctorNames =
    "SELECT DoctorCode AS Code, Description FROM Doctors";

}  // namespace bw::statements
