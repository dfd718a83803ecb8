#include "review/NearDoubles.h"

#include <algorithm>
#include <numeric>
#include <set>

#include "review/PatientLikeness.h"
#include "tests/review/RandomOffice.h"
#include "text/Text.h"

namespace bw {
namespace {

TEST(LikenessTest, OneEditAndOneSwapAreNoMoreAndNoLess) {
  struct Case {
    std::u32string one, other;
    bool edit, swap;
  };
  for (const Case& each : std::vector<Case>{{U"ann", U"ann", false, false},
                                            {U"ann", U"nan", true, true},
                                            {U"ann", U"anne", true, false},
                                            {U"nn", U"ann", true, false},
                                            {U"ann", U"ant", true, false},
                                            {U"abcd", U"badc", false, false},
                                            {U"abcd", U"acbe", false, false},
                                            {U"abc", U"bca", false, false},
                                            {U"a", U"", false, false},
                                            {U"", U"", false, false},
                                            {U"ana", U"anann", false, false}}) {
    EXPECT_EQ(isOneEditAway(each.one, each.other), each.edit);
    EXPECT_EQ(isOneEditAway(each.other, each.one), each.edit);
    EXPECT_EQ(isOneSwapAway(each.one, each.other), each.swap);
  }
}

struct Person {
  const char* name;
  const char* birth;
  const char* account;
};

LikenessOf likenessOf(const Person& person) {
  const auto birth = parseIsoDate(person.birth);
  return bw::likenessOf(person.name, birth ? birth->day : Column::kNull, person.account);
}

// The surest one, or that of none.
std::size_t reasonOf(const LikenessOf& one, const LikenessOf& other) {
  const auto all = likenesses();
  return static_cast<std::size_t>(
      std::ranges::find_if(all, [&](const Likeness& each) { return each.holds(one, other); }) -
      all.begin());
}

TEST(LikenessTest, EachReasonHoldsForItsPairsAndForNoOther) {
  constexpr Person kAnn{"Smith, Ann", "1950-02-28", "A12"};
  const std::size_t none = likenesses().size();
  const struct {
    std::size_t reason;
    Person one, other;
  } cases[] = {
      {0, kAnn, {"Jones, Bob", "", "a12 "}},
      {1, kAnn, {"smith, ann ", "1950-02-28", "B7"}},
      {2, kAnn, {"Jones, Bob", "", "A-12"}},
      {2, kAnn, {"Smith, Ann", "1950-02-08", " A 12"}},
      {3, kAnn, {"Smíth Ann", "1950-02-28", ""}},
      {3, {"O’Neil", "1950-02-28", ""}, {"ONeil", "1950-02-28", ""}},
      {4, kAnn, {"Ann Smith", "1950-02-28", ""}},
      {none, kAnn, {"Ann Smith", "1951-02-27", ""}},
      {5, kAnn, {"Simth, Ann", "1950-02-28", ""}},
      {6, kAnn, {"Ann Smith", "1905-02-28", ""}},
      {6, {"Smith", "1961-12-03", ""}, {"Smith", "1961-03-12", ""}},
      {none, kAnn, {"Smith, Anne", "1905-02-28", ""}},
      {7, kAnn, {"Ann Smith", "1950-02-08", ""}},
      {none, kAnn, {"Smith, Ann", "1951-02-08", ""}},
      {8, kAnn, {"Smith, Anne", "1950-02-28", "A21"}},
      {none, kAnn, {"Smith, Annex", "1950-02-28", ""}},
      {9, kAnn, {"Jones, Bob", "1950-02-28", "A21"}},
      {9, kAnn, {"Ann Smith", "", "A21"}},
      {none, kAnn, {"Jones, Bob", "1950-02-08", "A21"}},
      {none, kAnn, {"Smith, Ann", "", ""}},
      {none, {"", "1950-02-28", ""}, {" ", "1950-02-28", "  "}},
      {none, {"Smith", "", " "}, {"Smith", "", " "}},
  };
  for (const auto& [reason, one, other] : cases) {
    EXPECT_EQ(reasonOf(likenessOf(one), likenessOf(other)), reason) << one.name << other.name;
    EXPECT_EQ(reasonOf(likenessOf(other), likenessOf(one)), reason) << one.name << other.name;
  }
}

// Everything by the plainest means: each patient with each.
class NearDoublesTest : public RandomOfficeTest {
 protected:
  // Reasons and places of its patients, the surest first.
  using Group = std::vector<std::pair<std::size_t, std::size_t>>;

  static std::vector<LikenessOf> looksOf(const std::vector<TableRow>& patients) {
    std::vector<LikenessOf> looks;
    for (const TableRow& patient : patients) {
      const auto birth = dateOf(patient.at("DateOfBirth"));
      looks.push_back(bw::likenessOf(patient.at("Names"), birth ? birth->day : Column::kNull,
                                     patient.at("AccountNumber")));
    }
    return looks;
  }

  static std::vector<Group> groupsOf(const std::vector<TableRow>& patients, Doubles wanted) {
    const std::vector<LikenessOf> looks = looksOf(patients);
    std::vector<std::size_t> surest(looks.size(), likenesses().size());
    std::vector<std::size_t> first(looks.size());  // the first one of the patient's group
    std::iota(first.begin(), first.end(), 0U);
    for (std::size_t a = 0; a < looks.size(); ++a)
      for (std::size_t b = a + 1; b < looks.size(); ++b) {
        const std::size_t reason = reasonOf(looks[a], looks[b]);
        if (reason == likenesses().size()) continue;
        if (wanted == Doubles::near && likenesses()[reason].isExact) continue;
        for (const std::size_t one : {a, b}) surest[one] = std::min(surest[one], reason);
        const auto [low, high] = std::minmax({first[a], first[b]});
        std::ranges::replace(first, high, low);
      }
    std::map<std::size_t, Group> groups;
    for (std::size_t i = 0; i < looks.size(); ++i)
      if (surest[i] < likenesses().size()) groups[first[i]].emplace_back(surest[i], i);
    std::vector<Group> sorted;
    for (auto& [place, group] : groups) {
      std::ranges::sort(group);
      sorted.push_back(group);
    }
    std::ranges::stable_sort(sorted, {}, [&](const Group& group) {
      return std::pair(group.front().first, patients[group.front().second].at("Names"));
    });
    return sorted;
  }

  // Its patients: "PatientId|Reason|Charges|Moving|Collisions".
  static Strings linesOfGroup(const Group& group, const std::vector<TableRow>& patients) {
    std::map<std::string, std::size_t> charges;
    std::map<std::string, std::size_t> seconds;
    std::size_t all = 0;
    for (const TableRow& charge : table("PatientCharges"))
      for (const auto& member : group)
        if (patients[member.second].at("PatientId") == charge.at("PatientId")) {
          ++charges[charge.at("PatientId")];
          ++seconds[charge.at("ChargeDate") + charge.at("ChargeTime")];
          ++all;
        }
    const auto collisions =
        std::ranges::count_if(seconds, [](auto& one) { return one.second > 1; });
    Strings lines;
    for (const auto& [reason, place] : group) {
      const std::string& patient = patients[place].at("PatientId");
      lines.push_back(concat(patient, "|", likenesses()[reason].words, "|", charges[patient], "|",
                             all - charges[patient], "|", collisions));
    }
    return lines;
  }
};

TEST_F(NearDoublesTest, GroupsAndForecastsOfOfficesOfChanceAreThoseOfEachWithEach) {
  std::set<std::size_t> reasons;
  for (unsigned seed = 1; seed <= kOffices; ++seed) {
    SCOPED_TRACE(concat("office ", seed));
    makeOffice(seed);
    const std::vector<TableRow> patients = table("Patient");
    for (const Doubles wanted : {Doubles::near, Doubles::all}) {
      Strings expected;
      int part = 0;
      for (const Group& group : groupsOf(patients, wanted)) {
        ++part;
        for (const std::string& line : linesOfGroup(group, patients))
          expected.push_back(concat(part, "|", line));
        for (const auto& member : group) reasons.insert(member.first);
      }
      EXPECT_EQ(linesOf(*findDoubles(readDoublesOffice(), wanted).patients,
                        {"Part", "PatientId", "Reason", "Charges", "Moving", "Collisions"}),
                expected);
    }
  }
  EXPECT_EQ(reasons.size(), likenesses().size());  // each has come up
}

}  // namespace
}  // namespace bw
