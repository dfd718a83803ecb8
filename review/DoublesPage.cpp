#include "review/NearDoubles.h"
#include "review/PageKind.h"
#include "text/Text.h"

namespace bw {
namespace {

// In the order of Doubles.
constexpr const char* kShow[] = {"Near doubles", "Near and exact doubles"};

constexpr PageChoice kChoices[] = {{.label = "S&how:", .name = "cmbDoubles", .items = kShow}};

PageContent read(const Chosen& chosen) {
  const DoublesFound found = findDoubles(readDoublesOffice(), static_cast<Doubles>(chosen.front()));
  return {
      found.groups, found.patients,
      concat(found.groups->rowCount(), " groups of ", found.patients->rowCount(), " patients.")};
}

}  // namespace

// clang-format off
const PageKind kDoublesPage{
    .name = "doubles",
    .caption = "Doubles",
    .about = "Patients who may be one person, the surest first, and what a merge of the selected group "
             "would do: how many charges would move to each of them, how many stand in its way because "
             "they were entered in the same second, and who is still admitted.",
    .choices = kChoices,
    .leading = {.name = "lstGroups", .caption = "Groups",
                .columns = {{"Names", "Patient", 3600}, {"Patients", "Patients", 1000},
                            {"Reason", "Reason", 7000}},
                .empty = "There are no such patients. Near and exact doubles shows equal ones, too."},
    .following = {.name = "lstDoubles", .caption = "Patients of the group",
                  .columns = {{"Names", "Patient", 2800}, {"AccountNumber", "Account", 1500},
                              {"DateOfBirth", "Born", 1300}, {"Charges", "Charges", 1000},
                              {"Moving", "Would move here", 1600}, {"Collisions", "In the way", 1200},
                              {"Admitted", "Admitted to", 2400}, {"Insurance", "Insurance", 2000},
                              {"Reason", "Reason", 5000}},
                  .empty = "There are no such patients."},
    .document = "ReviewDoubles.myv",
    .read = read};
// clang-format on

}  // namespace bw
