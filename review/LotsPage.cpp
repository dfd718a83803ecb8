#include "review/Lots.h"
#include "review/PageKind.h"
#include "review/Statements.h"
#include "text/Text.h"

namespace bw {
namespace {

PageContent read(const Chosen&) {
  OfficeSnapshot snapshot(1);
  const Rows charges = snapshot.read(statements::kCharges);
  const Rows lots = findLots(*charges);
  return {lots, charges,
          concat(lots->rowCount(),
                 " lots. Save table makes the biller's table of the one that is "
                 "selected.")};
}

}  // namespace

// clang-format off
const PageKind kLotsPage{
    .name = "lots",
    .caption = "Lots",
    .about = "What was posted: each lot, and below it its charges. Ready again are charges of the lot "
             "whose status was set back.",
    .leading = {.name = "lstLots", .caption = "Lots",
                .columns = {{"PrintLot", "Lot", 1300}, {"Day", "Day", 1300},
                            {"Insurances", "Insurances", 4500}, {"Charges", "Charges", 1000},
                            {"Patients", "Patients", 1000}, {"FirstDay", "First care", 1300},
                            {"LastDay", "Last care", 1300}, {"ReadyAgain", "Ready again", 1300}},
                .empty = "Nothing has been posted in a lot yet."},
    .following = {.name = "lstLotCharges", .caption = "Charges of the lot",
                  .columns = {{"ChargeRealDate", "Date", 1300}, {"AccountNumber", "Account", 1300},
                              {"Names", "Patient", 2600}, {"Insurance", "Insurance", 2000},
                              {"Facility", "Facility", 2400}, {"Doctor", "Doctor", 2200},
                              {"EMDescription", "E&M", 2800}, {"StatusDescription", "Status", 1200}},
                  .empty = "No charges."},
    .link = "PrintLot",
    .document = "ReviewLots.myv",
    .read = read,
    .table = readLotTable};
// clang-format on

}  // namespace bw
