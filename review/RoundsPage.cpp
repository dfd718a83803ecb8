#include <algorithm>
#include <vector>

#include "core/Services.h"
#include "reports/ApoyoMyView.h"
#include "review/FrequencyDays.h"
#include "review/PageReport.h"
#include "review/Rounds.h"
#include "review/Statements.h"
#include "text/Formats.h"
#include "text/Text.h"

namespace bw {
namespace {

// In the order of RoundsQuestion::Show.
constexpr const char* kShow[] = {"Who is due today", "All visits", "No charge for 30 days"};

constexpr PageChoice kChoices[] = {
    {.label = "S&how:", .name = "cmbShow", .items = kShow},
    {.label = "&Doctor:",
     .name = "cmbDoctor",
     .kind = PageChoice::Kind::catalogue,
     .statement = statements::kDoctorNames},
};
enum Place : std::size_t { show, doctor };

PageContent read(const Chosen& chosen) {
  const RoundsQuestion question{.show = static_cast<RoundsQuestion::Show>(chosen[show]),
                                .doctor = chosen[doctor],
                                .today = today(),
                                .days = frequencyDays()};
  const RoundsOffice office = readRoundsOffice();
  const RoundsFound found = findRounds(office, question);
  std::string told = concat(office.patients->rowCount(), " patients admitted, ",
                            found.visits->rowCount(), " rows.");
  if (question.days.empty())
    told += " Nobody is due before the days between visits are set: press Days between visits.";
  return {found.places, found.visits, told};
}

// The sheet: a part for each doctor that begins on a page of its own, his patients by facility and
// ward, with a box to tick.

constexpr double kLine = 0.26;

struct SheetColumn {
  double x;
  double width;
  const char* caption;
  std::string_view field;
};
constexpr SheetColumn kSheetColumns[] = {
    {0.8, 2.3, "Patient", "Names"},         {3.1, 0.85, "Account", "AccountNumber"},
    {3.95, 0.8, "Born", "DateOfBirth"},     {4.75, 0.8, "How often", "Frequency"},
    {5.55, 0.8, "Last visit", "LastVisit"}, {6.35, 1.15, "Due", "State"},
};

void writeText(const Sheet& sheet, double x, double width, bool bold, std::string_view text) {
  ViewerText(sheet.page(), x, sheet.y, width, kLine, kLeft, kMiddle, kBlack, 10, bold, true, text);
}

void writeHeads(Sheet& sheet, const std::string& doctor) {
  ViewerText(sheet.page(), 0.5, sheet.y, 7, kLine, kLeft, kMiddle, kBlack, 12, true, true, doctor);
  sheet.y += kLine;
  for (const SheetColumn& column : kSheetColumns)
    writeText(sheet, column.x, column.width, true, column.caption);
  sheet.y += kLine;
}

class Pocket {
 public:
  explicit Pocket(const RowStore& rows) : rows_(rows) {}

  void write(Sheet& sheet, std::uint32_t row) {
    const std::string nextDoctor = text(row, "Doctor");
    const bool isOther = sheet.page() == 0 || nextDoctor != doctor_;
    doctor_ = nextDoctor;
    if (isOther) sheet.beginPage();
    const std::string place = joined(std::vector{text(row, "Facility"), text(row, "Ward")}, "  ",
                                     [](const std::string& part) { return part; });
    if (sheet.makeRoom(2 * kLine) || isOther) {
      writeHeads(sheet, doctor_);
      place_.clear();
    }
    if (place != place_) {
      writeText(sheet, 0.5, 7, true, place);
      sheet.y += kLine;
      place_ = place;
    }
    ViewerShape(sheet.page(), 0.55, sheet.y + 0.05, 0.15, 0.15, 0.01, kWhite, kBlack);
    for (const SheetColumn& column : kSheetColumns)
      writeText(sheet, column.x, column.width - 0.05, false, text(row, column.field));
    sheet.y += kLine;
  }

 private:
  std::string text(std::uint32_t row, std::string_view field) const {
    return textOrEmpty(rows_.columns[rows_.indexOf(field)].value(row));
  }

  const RowStore& rows_;
  std::string doctor_;
  std::string place_;
};

void print(const PageSheet& asked) {
  const RowStore& rows = *asked.rows->rows();
  std::vector<std::uint32_t> order = asked.rows->view();
  const Column& doctors = rows.columns[rows.indexOf("Doctor")];
  doctors.prepareRanks();
  std::stable_sort(order.begin(), order.end(), [&](std::uint32_t one, std::uint32_t other) {
    return doctors.rank(doctors.raw(one)) < doctors.rank(doctors.raw(other));
  });
  Pocket pocket(rows);
  writePageReport(asked, order, [&](Sheet& sheet, std::uint32_t row) { pocket.write(sheet, row); });
}

}  // namespace

// clang-format off
const PageKind kRoundsPage{
    .name = "rounds",
    .caption = "Rounds",
    .about = "Who is admitted, which doctors see them and how often, when they last did, and who has "
             "to be seen or written down today.",
    .choices = kChoices,
    .leading = {.name = "lstPlaces", .caption = "Facilities and wards",
                .columns = {{"Facility", "Facility", 4000}, {"Ward", "Ward", 2500},
                            {"Patients", "Patients", 1100}, {"Visits", "Rows", 1100}}},
    .following = {.name = "lstVisits", .caption = "Visits",
                  .columns = {{"Names", "Patient", 2600}, {"AccountNumber", "Account", 1200},
                              {"Doctor", "Doctor", 2400}, {"Role", "Role", 1100},
                              {"Frequency", "How often", 1200}, {"LastVisit", "Last care", 1300},
                              {"State", "Due", 1500}, {"DueSince", "Due since", 1300},
                              {"Facility", "Facility", 2400}, {"Ward", "Ward", 1500},
                              {"Attention", "As", 1100}},
                  .empty = "Nobody. Choose All visits under Show to see who is admitted."},
    .document = "ReviewRounds.myv",
    .buttonText = "Days &between visits...",
    .button = askFrequencyDays,
    .read = read,
    .print = print};
// clang-format on

}  // namespace bw
