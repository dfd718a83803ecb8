#include "review/NearDoubles.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <random>
#include <set>

#include "review/PatientLikeness.h"
#include "tests/records/Rows.h"
#include "tests/review/ReviewTest.h"
#include "text/Text.h"

namespace bw {
namespace {

TEST(LikenessTest, OneEditAndOneSwapAreNoMoreAndNoLess) {
  const struct {
    const char32_t* one;
    const char32_t* other;
    bool edit;
    bool swap;
  } cases[] = {{U"ann", U"ann", false, false},   {U"ann", U"nan", true, true},
               {U"ann", U"anne", true, false},   {U"nn", U"ann", true, false},
               {U"ann", U"ant", true, false},    {U"abcd", U"badc", false, false},
               {U"abcd", U"acbe", false, false}, {U"abc", U"bca", false, false},
               {U"a", U"", false, false},        {U"", U"", false, false},
               {U"ana", U"anann", false, false}};
  for (const auto& [one, other, edit, swap] : cases) {
    SCOPED_TRACE(std::string(one, one + std::char_traits<char32_t>::length(one)));
    EXPECT_EQ(isOneEditAway(one, other), edit);
    EXPECT_EQ(isOneEditAway(other, one), edit);
    EXPECT_EQ(isOneSwapAway(one, other), swap);
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
    std::size_t reason;  // its place
    Person one, other;
  } cases[] = {{0, kAnn, {"Jones, Bob", "", "a12 "}},
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
               {none, {"Smith", "", " "}, {"Smith", "", " "}}};
  for (const auto& [reason, one, other] : cases) {
    EXPECT_EQ(reasonOf(likenessOf(one), likenessOf(other)), reason) << one.name << other.name;
    EXPECT_EQ(reasonOf(likenessOf(other), likenessOf(one)), reason) << one.name << other.name;
  }
}

constexpr std::array kNames{"Smith, Ann",  "Smith, Anne", "Simth, Ann", "Ann Smith",
                            "Smíth, Ann",  "Jones, Bob",  "Jones, Rob", "Bob Jones",
                            "Jones,  Bob", "Cole, Al",    "",           "O’Neil, Pat"};
constexpr std::array kBirths{"1950-02-28", "1950-02-08", "1950-08-20", "1961-12-03",
                             "1961-03-12", "1961-12-30", "2003-06-10", ""};
constexpr std::array kAccounts{"A12", "A 12", "A-12", "A21", "B7", "B 7", "", "  "};

// Patients of chance, among whom every reason comes up. Times of entry are few, so that merges
// would collide.
class Office {
 public:
  explicit Office(unsigned seed) {
    std::mt19937 random(seed);
    const auto any = [&](std::size_t below) { return random() % below; };
    for (std::size_t i = 0; i < kPatients; ++i)
      patients.push_back({kNames[any(kNames.size())], kBirths[any(kBirths.size())],
                          kAccounts[any(kAccounts.size())]});
    for (std::size_t i = 0; i < kCharges; ++i) charges.emplace(any(kPatients), any(kCharges));
  }

  DoublesOffice rows() const {
    std::vector<Row> people;
    for (int id = 0; const Person& one : patients) {
      const auto birth = parseIsoDate(one.birth);
      people.push_back(row(id++, one.name, birth ? Value(*birth) : Value(), one.account, "", ""));
    }
    std::vector<Row> moments;
    for (const auto& [patient, moment] : charges)
      moments.push_back(row(static_cast<int>(patient), Value(Date{static_cast<int>(moment) / 3}),
                            Value(TimeOfDay{static_cast<int>(moment) % 3})));
    using enum FieldType;
    return {
        makeStore({{"PatientId", integer},
                   {"Names", text},
                   {"DateOfBirth", date},
                   {"AccountNumber", text},
                   {"Description", text},
                   {"FacilityName", text}},
                  people),
        makeStore({{"PatientId", integer}, {"ChargeDate", date}, {"ChargeTime", time}}, moments)};
  }

  std::vector<Person> patients;
  std::set<std::pair<std::size_t, std::size_t>> charges;  // of whom, and when

 private:
  static constexpr std::size_t kPatients = 24;
  static constexpr std::size_t kCharges = 120;
};

// Reasons and places of its patients, the surest first.
using Group = std::vector<std::pair<std::size_t, std::size_t>>;

// By the plainest means: each patient with each.
std::vector<Group> groupsOf(const std::vector<Person>& patients, Doubles wanted) {
  std::vector<std::size_t> surest(patients.size(), likenesses().size());
  std::vector<std::size_t> first(patients.size());  // the first one of the patient's group
  std::iota(first.begin(), first.end(), 0U);
  for (std::size_t a = 0; a < patients.size(); ++a)
    for (std::size_t b = a + 1; b < patients.size(); ++b) {
      const std::size_t reason = reasonOf(likenessOf(patients[a]), likenessOf(patients[b]));
      if (reason == likenesses().size()) continue;
      if (wanted == Doubles::near && likenesses()[reason].isExact) continue;
      for (const std::size_t one : {a, b}) surest[one] = std::min(surest[one], reason);
      const auto [low, high] = std::minmax({first[a], first[b]});
      std::ranges::replace(first, high, low);
    }
  std::map<std::size_t, Group> groups;
  for (std::size_t i = 0; i < patients.size(); ++i)
    if (surest[i] < likenesses().size()) groups[first[i]].emplace_back(surest[i], i);
  std::vector<Group> sorted;
  for (auto& [place, group] : groups) {
    std::ranges::sort(group);
    sorted.push_back(group);
  }
  std::ranges::stable_sort(sorted, {}, [&](const Group& group) {
    return std::pair(group.front().first, std::string(patients[group.front().second].name));
  });
  return sorted;
}

// Its patients: "PatientId|Reason|Charges|Moving|Collisions".
Strings linesOfGroup(const Group& group, const Office& office) {
  std::map<std::size_t, std::size_t> charges;
  std::map<std::size_t, std::size_t> moments;
  std::size_t all = 0;
  for (const auto& [patient, moment] : office.charges)
    if (std::ranges::count(group, patient, [](const auto& member) { return member.second; }) > 0) {
      ++charges[patient];
      ++moments[moment];
      ++all;
    }
  const auto collisions = std::ranges::count_if(moments, [](auto& one) { return one.second > 1; });
  Strings lines;
  for (const auto& [reason, patient] : group)
    lines.push_back(concat(patient, "|", likenesses()[reason].words, "|", charges[patient], "|",
                           all - charges[patient], "|", collisions));
  return lines;
}

TEST(NearDoublesTest, GroupsAndForecastsOfOfficesOfChanceAreThoseOfEachWithEach) {
  std::set<std::size_t> reasons;
  for (unsigned seed = 1; seed <= 50; ++seed) {
    SCOPED_TRACE(concat("office ", seed));
    const Office office(seed);
    for (const Doubles wanted : {Doubles::near, Doubles::all}) {
      Strings expected;
      for (int part = 1; const Group& group : groupsOf(office.patients, wanted)) {
        for (const std::string& line : linesOfGroup(group, office))
          expected.push_back(concat(part, "|", line));
        for (const auto& member : group) reasons.insert(member.first);
        ++part;
      }
      EXPECT_EQ(linesOf(*findDoubles(office.rows(), wanted).patients,
                        {"Part", "PatientId", "Reason", "Charges", "Moving", "Collisions"}),
                expected);
    }
  }
  EXPECT_EQ(reasons.size(), likenesses().size());  // each has come up
}

using DoublesOfTheOfficeTest = ReviewTest;

TEST_F(DoublesOfTheOfficeTest, AreReadWithTheirChargesAndWhereTheyAreAdmitted) {
  run("UPDATE Patient SET AccountNumber = 'A1'");
  charge({.patient = 25001});
  EXPECT_EQ(linesOf(*findDoubles(readDoublesOffice(), Doubles::all).patients,
                    {"PatientId", "Names", "AccountNumber", "DateOfBirth", "Insurance", "Admitted",
                     "Charges"}),
            (Strings{"25000|Smith, Ann|A1|2/28/1950|Mutual|General|1",
                     "25001|Jones, Bob|A1|12/31/1961|Mutual||1"}));
}

}  // namespace
}  // namespace bw
