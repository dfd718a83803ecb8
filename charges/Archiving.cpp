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

// False, and not told yet, when the connection is lost.
bool archiveOne(const RecordSet& charge, std::string& message) {
  constexpr std::int32_t kLotStays = -1;
  if (ChargeSetPrintLot(charge.code("PatientId"), charge.date("ChargeDate"),
                        charge.time("ChargeTime"), kLotStays, kArchivedByRun, message) <= 0)
    return true;
  if (DatabaseConnection.isLost()) return false;
  MsgBox(message);
  return true;
}

// The charges come by patient, each one's latest first: that one is kept whatever its date.
bool archiveAll(RecordSet& charges, Date until, std::string& message) {
  LongWork work("Archiving the charges...", charges.RecordCount());
  while (!charges.EOF_()) {
    CurrentPatientId = charges.code("PatientId");
    for (bool latest = true; !charges.EOF_() && charges.code("PatientId") == CurrentPatientId;
         latest = false) {
      if (!latest && charges.date("ChargeRealDate") < until && !archiveOne(charges, message))
        return false;
      charges.MoveNext();
      work.step();
    }
  }
  return true;
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
  if (!archiveAll(*RsArchive, until, message)) return false;
  RsArchive.close();
  try {
    relaxed.finish();
  } catch (const RuntimeError& error) {
    message = error.text();
    return false;
  }
  return true;
}

}  // namespace bw
