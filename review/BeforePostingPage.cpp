#include "core/Services.h"
#include "review/BeforePosting.h"
#include "review/PageKind.h"
#include "review/Statements.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr const char* kDays[] = {"All days", "One day"};

constexpr PageChoice kChoices[] = {
    {.label = "&Insurance:",
     .name = "cmbInsurance",
     .kind = PageChoice::Kind::catalogue,
     .statement = statements::kInsuranceNames},
    {.label = "Date of &care:", .name = "cmbDays", .items = kDays},
    {.label = "&Day:", .name = "txtDay", .kind = PageChoice::Kind::day},
};
enum Place : std::size_t { insurance, days, day };

PageContent read(const Chosen& chosen) {
  PostingQuestion question{.insurance = chosen[insurance], .today = today()};
  if (chosen[days] != 0) question.day = Date{static_cast<std::int32_t>(chosen[day])};
  question.isOn = [](std::string_view cause) { return isTicked(kBeforePostingPage.name, cause); };
  const PostingFindings found = findBeforePosting(readReadyOffice(), question);
  return {found.causes, found.charges,
          concat(found.ready, " ready charges, ", found.faulty, " of them to be looked at.")};
}

}  // namespace

// clang-format off
const PageKind kBeforePostingPage{
    .name = "posting",
    .caption = "Before posting",
    .about = "What the ready charges lack. Take the tick from a cause that your office does not mind.",
    .choices = kChoices,
    .leading = {.name = "lstCauses", .caption = "Causes",
                .columns = {{"Cause", "Cause", 6000}, {"Charges", "Findings", 1200}}},
    .following = {.name = "lstCharges", .caption = "Charges",
                  .columns = {{"ChargeRealDate", "Date", 1300}, {"AccountNumber", "Account", 1300},
                              {"Names", "Patient", 2600}, {"Cause", "Cause", 3300},
                              {"What", "What", 2600}, {"Insurance", "Insurance", 2000},
                              {"Facility", "Facility", 2400}, {"Doctor", "Doctor", 2200},
                              {"EMDescription", "E&M", 2800}},
                  .empty = "Nothing is missing: these charges can be posted."},
    .document = "ReviewPosting.myv",
    .tickKey = "Name",
    .read = read};
// clang-format on

}  // namespace bw
