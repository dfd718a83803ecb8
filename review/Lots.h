#pragma once

#include <cstdint>
#include <optional>

#include "review/OfficeSnapshot.h"
#include "text/Moment.h"

namespace bw {

// What was posted, lot by lot.

// The day that a lot's number spells, as posting proposes it: 200306151 is 2003-06-15.
std::optional<Date> dayOfLot(std::int64_t lot) noexcept;

// A row a lot, the highest number first: PrintLot, Day, Insurances, Charges, Patients, FirstDay,
// LastDay (of care), ReadyAgain (charges whose status was set back). Lot 0 is none.
Rows findLots(const RowStore& charges);

// A lot as the biller wants it: a line a charge with real and billing codes, under heads for
// people. Codes of several details stand in one field, parted by ";".
Rows readLotTable(std::int64_t lot);

}  // namespace bw
