#include "charges/Archiving.h"

#include "core/AsisRutinasRecordsets.h"
#include "core/LongWork.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLCharges.h"
#include "data/ChargeCodes.h"
#include "engine/RelaxedSync.h"

namespace bw {
namespace {

void archiveOne(const RecordSet& charge) {
  constexpr std::int32_t kLotStays = -1;
  std::string message;
  if (ChargeSetPrintLot(charge.code("PatientId"), charge.date("ChargeDate"),
                        charge.time("ChargeTime"), kLotStays, kArchivedByRun, message) > 0)
    MsgBox(message);
}

// The charges come by patient, each one's latest first: that one is kept whatever its date.
void archiveAll(RecordSet& charges, Date until) {
  LongWork work("Archiving the charges...", charges.RecordCount());
  while (!charges.EOF_()) {
    CurrentPatientId = charges.code("PatientId");
    for (bool latest = true; !charges.EOF_() && charges.code("PatientId") == CurrentPatientId;
         latest = false) {
      if (!latest && charges.date("ChargeRealDate") < until) archiveOne(charges);
      charges.MoveNext();
      work.step();
    }
  }
}

}  // namespace

bool archiveCharges(Date until, std::string& message) {
  RecordSetRef RsArchive;
  if (OpenRecordset(RsArchive,
                    "SELECT * FROM PatientCharges WHERE [Status] <> 3 ORDER BY PatientId, "
                    "ChargeRealDate DESC",
                    message) != 0)
    return false;
  RelaxedSync relaxed(DatabaseConnection);
  archiveAll(*RsArchive, until);
  RsArchive.close();
  try {
    relaxed.finish();
  } catch (const RuntimeError& error) {
    MsgBox(error.text());
  }
  return true;
}

}  // namespace bw
