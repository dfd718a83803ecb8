#include <functional>
#include <map>
#include <random>

#include "core/Principal.h"
#include "data/SavedQueries.h"
#include "tests/data/DataFixture.h"
#include "tests/server/TestDatabase.h"
#include "tests/text/Raised.h"
#include "text/Text.h"

namespace bw {
namespace {

// Charges whose texts are looked up on our side must not differ in anything from those that the
// engine's view delivers.
class LookedUpChargesTest : public DataTest {
 protected:
  // An office as it may have grown: rows that name what is gone, texts that stand twice, nothing
  // where something should be.
  void makeOffice() {
    constexpr std::pair<const char*, int> kRows[] = {
        {"Insurance VALUES (%c, %t, %t)", 6},
        {"Facility VALUES (%c, %t, 1, %t, %t)", 6},
        {"Doctors VALUES (%c, %t, %t)", 6},
        {"EvaluationManagement VALUES (%e, %t, 1, %a, 1, %t, %t, 0, 0, 0)", 6},
        {"Patient (PatientId, Names, DateOfBirth, AccountNumber, InsuranceCode) VALUES "
         "(%p, %t, %b, %t, %c)",
         20},
        {"PatientCharges VALUES (%p, %d, #10:0%m:00#, %d, %c, %e, %c, %c, %n, %l)", 120}};
    run(relationsOff());
    for (const char* table :
         {"PatientCharges", "Patient", "Insurance", "EvaluationManagement", "Facility", "Doctors"})
      run(concat("DELETE FROM ", table));
    for (const auto& [row, count] : kRows)
      for (int i = 0; i < count; ++i) tryRun(drawn(concat("INSERT INTO ", row)));
  }
  // A key that was drawn before.
  static void tryRun(const std::string& statement) {
    const std::string refusal = refusalOf([&] { run(statement); });
    ASSERT_TRUE(refusal.empty() || refusal == kDuplicateKey) << statement << ": " << refusal;
  }

  std::uint32_t upTo(std::uint32_t count) { return static_cast<std::uint32_t>(random_()) % count; }
  template <std::size_t count>
  std::string oneOf(const char* const (&all)[count]) {
    return all[upTo(count)];
  }
  std::string word() { return oneOf({"Ames", "ames", "Bell, Ann", "", "Éva", "99213"}); }
  // With a value drawn in place of each letter behind %.
  std::string drawn(std::string_view pattern) {
    std::string text;
    for (std::size_t at = 0; at < pattern.size(); ++at)
      text += pattern[at] == '%' ? draw_.at(pattern[++at])() : std::string(1, pattern[at]);
    return text;
  }

  std::string statement() {
    std::string conditions;
    for (std::uint32_t i = upTo(4); i > 0; --i)
      conditions += (conditions.empty() ? " Where " : " and ") +
                    drawn(oneOf({"[status] %s %n", "ChargeRealDate %s %d", "PatientId=%p",
                                 "insurancecode= %c", "DoctorCode %s %c", "PrintLot = %n",
                                 "ChargeTime %s #10:05:00#", "Insurance = %t",
                                 "StatusDescription = 'Ready'"}));
    return "SELECT * FROM ChargesDescriptive" + conditions;
  }

  // Names, types once there are values, and values.
  static std::string contentOf(RecordSet& set) {
    std::string all = concat(set.AbsolutePosition(), ": ");
    const RowStore& store = *set.rows();
    for (const Column& column : store.columns)
      all += concat(fold(column.name()),
                    set.RecordCount() > 0 ? static_cast<int>(column.type()) : 0, "|");
    for (const std::uint32_t row : set.view()) {
      all += "\n";
      for (const Column& column : store.columns)
        all += (column.isNull(row) ? "null" : textOf(column.value(row))) + "|";
    }
    return all;
  }

  using Change = std::function<void(RecordSet&)>;
  // Writes fields of the row at that position, or of a new one for 0.
  static Change written(std::int64_t at, const std::vector<std::pair<std::string, Value>>& fields) {
    return [at, fields](RecordSet& set) {
      at == 0 ? set.AddNew() : set.setAbsolutePosition(at);
      for (const auto& [field, value] : fields) set.set(field, value);
      set.Update();
    };
  }
  Change anyChange(RecordSet& theirs) {
    const std::string field = theirs.fieldName(upTo(27));
    const std::string other = theirs.fieldName(upTo(27));
    const auto at =
        1 + static_cast<std::int64_t>(upTo(static_cast<std::uint32_t>(theirs.RecordCount())));
    const bool isText = theirs.rows()->columns[theirs.rows()->indexOf(field)].isText();
    const std::string name = word();
    const Change changes[] = {
        [=](RecordSet& set) { set.setSort(field + " DESC, " + other); },
        [=](RecordSet& set) { set.setFilter(isText ? field + " > 'b'" : ""); },
        [=](RecordSet& set) { set.setFilter("DoctorCode > 2 and Doctor <> 'AMES'"); },
        [=](RecordSet& set) { set.setFilter(""); },
        [=](RecordSet& set) { set.Find("Names = '" + name + "'"); },
        [=](RecordSet& set) {
          set.setAbsolutePosition(at);
          set.Delete();
        },
        written(at, {{field, isText ? Value(name) : Value()}}),
        written(at, {{"DoctorCode", at % 8}, {"PatientId", 25000 + at % 3}}),  // the key alone
        written(0, {{"FacilityCode", at % 8}, {"Doctor", name}})};
    return changes[upTo(static_cast<std::uint32_t>(std::size(changes)))];
  }

  std::mt19937 random_{20030615};
  const std::map<char, std::function<std::string()>> draw_{
      {'a', [this] { return concat(1 + upTo(2)); }},
      {'b', [this] { return upTo(4) == 0 ? "NULL" : concat("#19", 50 + upTo(40), "/02/03#"); }},
      {'c', [this] { return concat(1 + upTo(7)); }},
      {'d', [this] { return concat("#01/0", 1 + upTo(8), "/2003#"); }},
      {'e', [this] { return upTo(4) == 0 ? "2000000000" : concat(1 + upTo(5)); }},
      {'l', [this] { return upTo(3) == 0 ? "NULL" : concat(upTo(4)); }},
      {'m', [this] { return concat(upTo(9)); }},
      {'n', [this] { return concat(upTo(4)); }},
      {'p', [this] { return concat(25000 + upTo(12)); }},
      {'s',
       [this] {
         return oneOf({"=", "<>", "<", "<=", ">", ">="});
       }},
      {'t', [this] { return concat("'", word(), "'"); }}};
};

TEST_F(LookedUpChargesTest, EachTextIsThatOfItsOwnRecord) {
  seedOffice();
  seedLife();
  DatabaseConnection.Execute(
      "INSERT INTO PatientCharges "
      "VALUES (25001, #06/02/2003#, #09:00:00#, #05/31/2003#, 3, 1221, 5, 8, 1, 17)");
  EXPECT_EQ(rows("SELECT * FROM ChargesDescriptive WHERE PatientId = 25001"),
            "25001|6/2/2003|9:00:00 AM|5/31/2003|3|1221|5|8|1|17|Posted|"
            "Jones, Bob|12/31/1961|A2|1|Mutual|"
            "Hospital outpatient visit, first, short|99121|E1221-012|2|"
            "St. Joseph Hospital|SJ3|SJ-000000000003|Garcia, Luis|GL5|St. John, Ian|SJ8");
}

TEST_F(LookedUpChargesTest, DifferInNothingFromTheEnginesOwn) {
  for (int office = 0; office < 12; ++office) {
    makeOffice();
    for (int round = 0; round < 12; ++round) {
      const std::string read = statement();
      SCOPED_TRACE(read);
      DatabaseConnection.lookedUpQueries = lookedUpQueries();
      const RecordSetRef ours = DatabaseConnection.Read(read);
      DatabaseConnection.lookedUpQueries = {};
      const RecordSetRef theirs =
          DatabaseConnection.Read(read + " ORDER BY PatientId, ChargeDate, ChargeTime");
      ASSERT_EQ(contentOf(*ours), contentOf(*theirs));
      for (int step = 0; step < 25 && theirs->RecordCount() > 0; ++step) {
        const Change change = anyChange(*theirs);
        change(*ours);
        change(*theirs);
        ASSERT_EQ(contentOf(*ours), contentOf(*theirs)) << step;
      }
    }
  }
}

}  // namespace
}  // namespace bw
