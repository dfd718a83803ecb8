#include "core/Services.h"
#include "review/BarChart.h"
#include "review/Figures.h"
#include "review/PageKind.h"
#include "review/Statements.h"
#include "text/Text.h"

namespace bw {
namespace {

struct Range {
  const char* name;
  // The first day when it ends on a day; unset: no first day, and no last one.
  Date (*from)(Civil today) = nullptr;
};

Date monthBegin(int year, int month) {
  constexpr int kMonths = 12;
  const int months = year * kMonths + month - 1;
  return makeDate(months / kMonths, months % kMonths + 1, 1).value();
}

constexpr Range kRanges[] = {
    {.name = "All days"},
    {.name = "This month", .from = [](Civil day) { return monthBegin(day.year, day.month); }},
    {.name = "This year", .from = [](Civil day) { return monthBegin(day.year, 1); }},
    {.name = "Twelve months",
     .from = [](Civil day) { return monthBegin(day.year, day.month - 11); }},
    {.name = "Between"},
};
constexpr const char* kRangeNames[] = {kRanges[0].name, kRanges[1].name, kRanges[2].name,
                                       kRanges[3].name, kRanges[4].name};

enum Place : std::size_t { measure, division, range, from, to };

std::span<const PageChoice> choices() {
  static const PageChoice kChoices[] = {
      {.label = "&Count:", .name = "cmbCount", .items = measureNames()},
      {.label = "&By:", .name = "cmbBy", .items = divisionNames()},
      {.label = "Date of c&are:", .name = "cmbRange", .items = kRangeNames},
      {.label = "&From:", .name = "txtFrom", .kind = PageChoice::Kind::day},
      {.label = "T&o:", .name = "txtTo", .kind = PageChoice::Kind::day},
  };
  return kChoices;
}

FigureQuestion questionOf(const Chosen& chosen) {
  FigureQuestion question{.division = static_cast<std::size_t>(chosen[division]),
                          .measure = static_cast<std::size_t>(chosen[measure])};
  const auto place = static_cast<std::size_t>(chosen[range]);
  if (place == std::size(kRanges) - 1) {
    question.from = Date{static_cast<std::int32_t>(chosen[from])};
    question.to = Date{static_cast<std::int32_t>(chosen[to])};
  } else if (kRanges[place].from != nullptr) {
    question.from = kRanges[place].from(civil(today()));
    question.to = today();
  }
  return question;
}

PageContent read(const Chosen& chosen) {
  OfficeSnapshot snapshot(1);
  const FigureQuestion question = questionOf(chosen);
  const Figures figures = findFigures(*snapshot.read(statements::kCharges), question);
  return {figures.rows, nullptr,
          concat(measureNames()[question.measure], ": ", figures.all, " in all.")};
}

}  // namespace

// clang-format off
const PageKind kFiguresPage{
    .name = "numbers",
    .caption = "Numbers",
    .about = "How many charges there were, and how soon they were written down.",
    .choices = choices(),
    .leading = {.name = "lstFigures", .caption = "Numbers",
                .columns = {{"Caption", "By", 3600}, {"Count", "Number", 1200}, {"Share", "Share", 1000}},
                .empty = "There are no charges on these days. Choose others under Date of care."},
    .document = "ReviewNumbers.myv",
    .hasBars = true,
    .read = read,
    .print = printBars};
// clang-format on

}  // namespace bw
