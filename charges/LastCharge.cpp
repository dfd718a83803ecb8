#include "charges/LastCharge.h"

#include <array>

#include "core/AsisRutinasRecordsets.h"
#include "core/Principal.h"
#include "data/Literals.h"
#include "engine/ReadAhead.h"
#include "text/Text.h"

namespace bw {

std::string chargeStatement(const char* query, std::int16_t patient, Date date, TimeOfDay time) {
  return concat("Select * From ", query, " Where PatientId=", patient, " and ChargeDate=#",
                monthFirst(date), "# and ChargeTime=#", clock24(time), "#");
}

int readLastCharge(std::int16_t patient, LastCharge& last, std::string& message) {
  if (OpenRecordset(last.charge,
                    concat("Select Top 1 * From ChargesDescriptive Where PatientId=", patient,
                           " Order By ChargeRealDate Desc, ChargeDate Desc, ChargeTime Desc"),
                    message) != 0)
    return 1;
  if (last.charge->RecordCount() == 0) return 0;
  const auto of = [&last, patient](const char* query) {
    return chargeStatement(query, patient, last.charge->date("ChargeDate"),
                           last.charge->time("ChargeTime"));
  };
  const std::array statements{of("ChargeDiagnosisDescriptive"), of("ChargeProceduresDescriptive")};
  const ReadAhead ahead(DatabaseConnection, statements);
  const int result = OpenRecordset(last.diagnoses, statements[0], message);
  return result != 0 ? result : OpenRecordset(last.procedures, statements[1], message);
}

}  // namespace bw
