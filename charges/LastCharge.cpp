#include "charges/LastCharge.h"

#include "core/AsisRutinasRecordsets.h"
#include "data/Literals.h"
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
  const auto open = [&](RecordSetRef& details, const char* query) {
    return OpenRecordset(details,
                         chargeStatement(query, patient, last.charge->date("ChargeDate"),
                                         last.charge->time("ChargeTime")),
                         message);
  };
  const int result = open(last.diagnoses, "ChargeDiagnosisDescriptive");
  return result != 0 ? result : open(last.procedures, "ChargeProceduresDescriptive");
}

}  // namespace bw
