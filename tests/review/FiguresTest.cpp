#include "review/Figures.h"

#include <algorithm>
#include <set>

#include "review/Statements.h"
#include "tests/review/RandomOffice.h"
#include "text/Text.h"

namespace bw {
namespace {

class FiguresTest : public RandomOfficeTest {
 protected:
  enum Division : std::size_t { month, doctor, facility, insurance, concept_, delay };
  enum Measure : std::size_t { charges, patients, ready, posted };

  static std::string captionOf(const TableRow& charge, std::size_t division) {
    const Civil care = civil(*dateOf(charge.at("ChargeRealDate")));
    const int days =
        dateOf(charge.at("ChargeDate"))->day - dateOf(charge.at("ChargeRealDate"))->day;
    switch (division) {
      case month:
        return concat(care.year, care.month < 10 ? "-0" : "-", care.month);
      case doctor:
        return "Doctor " + charge.at("DoctorCode");
      case facility:
        return "Facility " + charge.at("FacilityCode");
      case insurance:
        return "Mutual " +
               find(table("Patient"), "PatientId", charge.at("PatientId")).at("InsuranceCode");
      case concept_:
        return "Concept " + charge.at("EMCode");
      default:
        if (days < 0) return "Before the care";
        if (days == 0) return "The same day";
        if (days <= 3) return concat(days, days == 1 ? " day" : " days");
        if (days <= 7) return "4 to 7 days";
        if (days <= 14) return "8 to 14 days";
        return days <= 30 ? "15 to 30 days" : "Later";
    }
  }

  static bool isCounted(const TableRow& charge, const FigureQuestion& question) {
    const Date care = *dateOf(charge.at("ChargeRealDate"));
    const std::string& status = charge.at("Status");
    return (!question.from || care >= *question.from) && (!question.to || care <= *question.to) &&
           (question.measure != ready || status == "0") &&
           (question.measure != posted || status == "1");
  }

  static Figures figures(const FigureQuestion& question) {
    OfficeSnapshot snapshot(1);
    return findFigures(*snapshot.read(statements::kCharges), question);
  }

  void compare(const FigureQuestion& question) {
    std::map<std::string, std::multiset<std::string>> groups;
    std::multiset<std::string> all;
    for (const TableRow& charge : table("PatientCharges")) {
      if (!isCounted(charge, question)) continue;
      groups[captionOf(charge, question.division)].insert(charge.at("PatientId"));
      all.insert(charge.at("PatientId"));
    }
    const auto count = [&](const std::multiset<std::string>& ids) {
      return question.measure == patients ? std::set(ids.begin(), ids.end()).size() : ids.size();
    };
    Strings expected;
    for (const auto& [caption, ids] : groups) expected.push_back(concat(caption, "|", count(ids)));
    const Figures found = figures(question);
    Strings lines = linesOf(*found.rows, {"Caption", "Count"});
    std::sort(lines.begin(), lines.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(found.all, count(all));
  }
};

TEST_F(FiguresTest, EveryNumberOfAnOfficeOfChanceIsThatOfItsRows) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    makeOffice(seed);
    for (std::size_t division = 0; division < divisionNames().size(); ++division)
      for (std::size_t measure = 0; measure < measureNames().size(); ++measure) {
        SCOPED_TRACE(concat("office ", seed, ", ", measureNames()[measure], " by ",
                            divisionNames()[division]));
        compare({.division = division, .measure = measure});
        compare({.division = division,
                 .measure = measure,
                 .from = Date{now.date.day - 20},
                 .to = Date{now.date.day - 3}});
      }
  }
}

TEST_F(FiguresTest, TheLatestMonthAndTheDoctorWithTheMostComeFirst) {
  makeOffice(2);
  const Strings months = linesOf(*figures({.division = month}).rows, {"Caption"});
  EXPECT_TRUE(std::is_sorted(months.rbegin(), months.rend()));
  EXPECT_GT(months.size(), 1U);
  std::vector<int> counts;
  for (const std::string& count : linesOf(*figures({.division = doctor}).rows, {"Count"}))
    counts.push_back(std::stoi(count));
  EXPECT_TRUE(std::is_sorted(counts.rbegin(), counts.rend()));
}

}  // namespace
}  // namespace bw
