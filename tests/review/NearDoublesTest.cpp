#include "review/NearDoubles.h"

#include <algorithm>
#include <set>
#include <sstream>

#include "core/Principal.h"
#include "review/PatientLikeness.h"
#include "tests/review/RandomOffice.h"
#include "text/Formats.h"
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

// Everything by the plainest means: each patient with each.
class NearDoublesTest : public RandomOfficeTest {
 protected:
  static std::string plain(std::string text, bool keepBlanks) {
    for (const auto& [from, to] : {std::pair<std::string, std::string>{"í", "i"}, {"’", ""}})
      for (std::size_t at = 0; (at = text.find(from)) != text.npos;)
        text.replace(at, from.size(), to);
    std::string out;
    for (char c : text) {
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
      const bool kept = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
      if (kept)
        out += c;
      else if (keepBlanks && !out.empty() && out.back() != ' ')
        out += ' ';
    }
    if (!out.empty() && out.back() == ' ') out.pop_back();
    return out;
  }

  static std::string inOrder(const std::string& name) {
    std::istringstream stream(name);
    std::multiset<std::string> words;
    for (std::string word; stream >> word;) words.insert(word);
    return joined(words, " ", [](const std::string& word) { return word; });
  }

  static bool swapped(const std::string& one, const std::string& other) {
    for (std::size_t i = 0; i + 1 < one.size(); ++i) {
      std::string changed = one;
      std::swap(changed[i], changed[i + 1]);
      if (one != other && changed == other) return true;
    }
    return false;
  }

  static bool edited(const std::string& one, const std::string& other) {
    if (one.empty() || other.empty() || one == other) return false;
    for (std::size_t i = 0; i <= one.size(); ++i)
      for (const char c : other) {
        std::string more = one;
        more.insert(more.begin() + static_cast<std::ptrdiff_t>(i), c);
        if (more == other) return true;
        std::string changed = one;
        if (i < one.size()) changed[i] = c;
        if (changed == other) return true;
      }
    return other.size() < one.size() ? edited(other, one) : swapped(one, other);
  }

  static std::string digits(const std::string& birth) {
    return birth.empty() ? "" : Format(*dateOf(birth), "yyyymmdd");
  }

  static int different(const std::string& one, const std::string& other) {
    int count = 0;
    for (std::size_t i = 0; i < one.size(); ++i) count += one[i] != other[i] ? 1 : 0;
    return count;
  }

  // The surest reason in words, "" for none.
  static std::string reasonOf(const TableRow& a, const TableRow& b, Doubles wanted) {
    const auto exact = [](const std::string& text) {
      return isBlank(text) ? "" : fold(text.substr(0, text.find_last_not_of(' ') + 1));
    };
    const std::string name = plain(a.at("Names"), true), otherName = plain(b.at("Names"), true);
    const std::string account = plain(a.at("AccountNumber"), false),
                      otherAccount = plain(b.at("AccountNumber"), false);
    const std::string birth = digits(a.at("DateOfBirth")), otherBirth = digits(b.at("DateOfBirth"));
    const bool sameBirth = !birth.empty() && birth == otherBirth;
    const bool bothBorn = !birth.empty() && !otherBirth.empty();
    const bool exactAccount =
        !account.empty() && exact(a.at("AccountNumber")) == exact(b.at("AccountNumber"));
    const bool exactName = !name.empty() && exact(a.at("Names")) == exact(b.at("Names"));
    const bool sameWords = !name.empty() && inOrder(name) == inOrder(otherName);
    const std::string turned =
        birth.empty() ? "" : birth.substr(0, 4) + birth.substr(6) + birth.substr(4, 2);
    if (exactAccount || (exactName && sameBirth)) {
      if (wanted == Doubles::near) return "";
      return exactAccount ? "Same account" : "Same name and date of birth";
    }
    if (!account.empty() && account == otherAccount)
      return "Accounts differ in blanks or signs alone";
    if (sameBirth && !name.empty() && name == otherName)
      return "Same date of birth, names differ in accents or signs alone";
    if (sameBirth && sameWords) return "Same date of birth, names in another order";
    if (sameBirth && swapped(name, otherName))
      return "Same date of birth, two letters of the name swapped";
    if (bothBorn && sameWords && birth != otherBirth &&
        (swapped(birth, otherBirth) || turned == otherBirth))
      return "Same name, digits of the date of birth swapped";
    if (bothBorn && sameWords && different(birth, otherBirth) == 1)
      return "Same name, one digit of the date of birth differs";
    if (sameBirth && edited(name, otherName))
      return "Same date of birth, one letter of the name differs";
    if ((sameBirth || sameWords) && swapped(account, otherAccount))
      return "Digits of the account swapped, same name or date of birth";
    return "";
  }

  static std::size_t rankOf(const std::string& words) {
    std::size_t rank = 0;
    while (rank < likenesses().size() && likenesses()[rank].words != words) ++rank;
    return rank;
  }

  struct Group {
    std::map<std::string, std::string> reasons;  // of the patients
  };

  static std::vector<Group> groupsOf(const std::vector<TableRow>& patients, Doubles wanted) {
    std::vector<Group> groups;
    for (const TableRow& a : patients)
      for (const TableRow& b : patients) {
        const std::string reason = reasonOf(a, b, wanted);
        if (&a >= &b || reason.empty()) continue;
        Group joinedGroup;
        std::erase_if(groups, [&](const Group& group) {
          if (!group.reasons.contains(a.at("PatientId")) &&
              !group.reasons.contains(b.at("PatientId")))
            return false;
          joinedGroup.reasons.insert(group.reasons.begin(), group.reasons.end());
          return true;
        });
        for (const TableRow* one : {&a, &b}) {
          std::string& known = joinedGroup.reasons[one->at("PatientId")];
          if (known.empty() || rankOf(reason) < rankOf(known)) known = reason;
        }
        groups.push_back(joinedGroup);
      }
    return groups;
  }

  static std::string lineOf(const Group& group, const std::vector<TableRow>& charges) {
    std::map<std::string, std::set<std::string>> seconds;  // and who has a charge of them
    std::map<std::string, std::size_t> counts;
    std::size_t all = 0;
    for (const TableRow& charge : charges) {
      if (!group.reasons.contains(charge.at("PatientId"))) continue;
      seconds[charge.at("ChargeDate") + charge.at("ChargeTime")].insert(charge.at("PatientId"));
      ++counts[charge.at("PatientId")];
      ++all;
    }
    const auto collisions = std::count_if(seconds.begin(), seconds.end(), [](const auto& second) {
      return second.second.size() > 1;
    });
    Strings lines;
    for (const auto& [patient, reason] : group.reasons)
      lines.push_back(concat(patient, "|", reason, "|", counts[patient], "|", all - counts[patient],
                             "|", collisions));
    std::sort(lines.begin(), lines.end());
    return joined(lines, "\n", [](const std::string& line) { return line; });
  }

  static Strings found(Doubles wanted) {
    const DoublesFound doubles = findDoubles(readDoublesOffice(), wanted);
    std::map<std::string, Strings> groups;
    for (const std::string& line : linesOf(
             *doubles.patients, {"Part", "PatientId", "Reason", "Charges", "Moving", "Collisions"}))
      groups[line.substr(0, line.find('|'))].push_back(line.substr(line.find('|') + 1));
    Strings lines;
    for (auto& [part, members] : groups) {
      std::sort(members.begin(), members.end());
      lines.push_back(joined(members, "\n", [](const std::string& line) { return line; }));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
  }
};

TEST_F(NearDoublesTest, GroupsAndForecastsOfOfficesOfChanceAreThoseOfEachWithEach) {
  std::set<std::string> reasons;
  for (unsigned seed = 1; seed <= kOffices; ++seed) {
    SCOPED_TRACE(concat("office ", seed));
    makeOffice(seed);
    for (const Doubles wanted : {Doubles::near, Doubles::all}) {
      const std::vector<TableRow> charges = table("PatientCharges");
      Strings expected;
      for (const Group& group : groupsOf(table("Patient"), wanted)) {
        expected.push_back(lineOf(group, charges));
        for (const auto& [patient, reason] : group.reasons) reasons.insert(reason);
      }
      std::sort(expected.begin(), expected.end());
      EXPECT_EQ(found(wanted), expected);
    }
  }
  EXPECT_EQ(reasons.size(), likenesses().size());  // each has come up
}

}  // namespace
}  // namespace bw
