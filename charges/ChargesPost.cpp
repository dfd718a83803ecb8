#include "charges/frmCharges.h"
#include "charges/frmPostCharges.h"
#include "controls/TypedInput.h"
#include "core/LongWork.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLCharges.h"
#include "data/ChargeCodes.h"
#include "engine/RelaxedSync.h"
#include "lists/Lists.h"
#include "text/Text.h"

// Posting: all "Ready" charges in the list, selected or not.

namespace bw {
namespace {

// The date's digits and a 1: 200306151. It is no counter, and need not be new.
std::int32_t proposedLot() {
  const Civil date = civil(today());
  return date.year * 100000 + date.month * 1000 + date.day * 10 + 1;
}

// Until a visit returns false.
template <class Visit>
void forEachReady(RecordSet& charges, Visit visit) {
  const std::ptrdiff_t count = charges.RecordCount();
  for (std::ptrdiff_t position = 1; position <= count; ++position) {
    charges.setAbsolutePosition(position);
    if (charges.integer("status") == kReady && !visit()) return;
  }
}

void postOne(RecordSet& charge, std::int32_t lot) {
  std::string message;
  if (ChargeSetPrintLot(charge.code("PatientId"), charge.date("ChargeDate"),
                        charge.time("ChargeTime"), lot, kPosted, message) != 0)
    return MsgBox("Problems updating status: " + message);
  charge.set("status", std::int32_t{kPosted});
  charge.set("statusDescription", "Posted");
}

}  // namespace

void ChargesView::Post() {
  if (!settleInputs(*this)) return;  // printing comes behind it
  PostChargeCount = 0;
  std::int64_t ready = 0;
  forEachReady(*RsCharges, [&] { return ++ready > 0; });
  if (ready == 0) return MsgBox("No charges to post!");
  // The count is one of 16 bits.
  if (ready > INT16_MAX)
    return MsgBox(
        concat("There are ", ready, " charges to post, and at most ", INT16_MAX,
               " can be posted at once. Please narrow the filters and post them in parts."));
  PostChargeCount = static_cast<std::int16_t>(ready);
  PostLotNumber = proposedLot();
  PostPrint = 0;
  frmPostCharges().showModal();
  if (PostChargeCount <= 0) return;
  postReady(ready);
  ListFill(*ListView1, RsCharges);
  if (PostPrint > 0) Imprimir();
}

// Each charge in a transaction of its own: one that fails leaves those before it posted.
void ChargesView::postReady(std::int64_t ready) {
  RelaxedSync relaxed(DatabaseConnection);
  {
    LongWork work("Posting the charges...", ready);
    forEachReady(*RsCharges, [&] {
      postOne(*RsCharges, PostLotNumber);
      work.step();
      return !DatabaseConnection.isLost();
    });
  }
  try {
    relaxed.finish();
  } catch (const RuntimeError& error) {
    MsgBox(error.text());
  }
}

}  // namespace bw
