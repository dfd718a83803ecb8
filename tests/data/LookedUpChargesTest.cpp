#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <random>

#include "core/Principal.h"
#include "data/SavedQueries.h"
#include "tests/data/DataFixture.h"
#include "tests/server/TestDatabase.h"
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
    run(relationsOff());
    for (const char* table :
         {"PatientCharges", "Patient", "Insurance", "EvaluationManagement", "Facility", "Doctors"})
      run(concat("DELETE FROM ", table));
    for (int i = 0; i < 6; ++i) {
      tryRun(concat("INSERT INTO Insurance VALUES (", code(), ", ", text(), ", ", text(), ")"));
      tryRun(concat("INSERT INTO Facility VALUES (", code(), ", ", text(), ", 1, ", text(), ", ",
                    text(), ")"));
      tryRun(concat("INSERT INTO Doctors VALUES (", code(), ", ", text(), ", ", text(), ")"));
      tryRun(concat("INSERT INTO EvaluationManagement VALUES (", emCode(), ", ", text(), ", 1, ",
                    1 + upTo(2), ", 1, ", text(), ", ", text(), ", 0, 0, 0)"));
    }
    for (int i = 0; i < 20; ++i)
      tryRun(
          concat("INSERT INTO Patient (PatientId, Names, DateOfBirth, AccountNumber, "
                 "InsuranceCode) VALUES (",
                 patient(), ", ", text(), ", ",
                 upTo(4) == 0 ? std::string("NULL") : concat("#19", 50 + upTo(40), "/02/03#"), ", ",
                 text(), ", ", code(), ")"));
    for (int i = 0; i < 120; ++i)
      tryRun(concat("INSERT INTO PatientCharges VALUES (", patient(), ", ", date(), ", #10:0",
                    upTo(9), ":00#, ", date(), ", ", code(), ", ", emCode(), ", ", code(), ", ",
                    code(), ", ", upTo(4), ", ", upTo(3) == 0 ? "NULL" : concat(upTo(4)), ")"));
  }
  // A key that was drawn before.
  static void tryRun(const std::string& statement) {
    try {
      run(statement);
    } catch (const RuntimeError& error) {
      ASSERT_EQ(error.text(), kDuplicateKey) << statement;
    }
  }

  std::uint32_t upTo(std::uint32_t count) { return static_cast<std::uint32_t>(random_()) % count; }
  std::string code() { return concat(1 + upTo(7)); }
  std::string patient() { return concat(25000 + upTo(12)); }
  std::string emCode() { return upTo(4) == 0 ? "2000000000" : concat(1 + upTo(5)); }
  std::string date() { return concat("#01/0", 1 + upTo(8), "/2003#"); }
  std::string word() {
    static constexpr std::array<const char*, 6> kWords{"Ames", "ames", "Bell, Ann",
                                                       "",     "Éva",  "99213"};
    return kWords[upTo(kWords.size())];
  }
  std::string text() { return concat("'", word(), "'"); }

  std::string statement() {
    static constexpr std::array<const char*, 6> kSigns{"=", "<>", "<", "<=", ">", ">="};
    std::string conditions;
    const auto sign = [&] { return std::string(" ") + kSigns[upTo(kSigns.size())] + " "; };
    for (std::uint32_t i = upTo(4); i > 0; --i) {
      const std::array<std::string, 9> clauses{"[status]" + sign() + concat(upTo(4)),
                                               "ChargeRealDate" + sign() + date(),
                                               "PatientId=" + patient(),
                                               "insurancecode= " + code(),
                                               "DoctorCode" + sign() + code(),
                                               "PrintLot = " + concat(upTo(4)),
                                               "ChargeTime" + sign() + "#10:05:00#",
                                               "Insurance = " + text(),
                                               "StatusDescription = 'Ready'"};
      conditions += (conditions.empty() ? " Where " : " and ") + clauses[upTo(clauses.size())];
    }
    return "SELECT * FROM ChargesDescriptive" + conditions;
  }

  static std::string valuesOf(RecordSet& set) {
    std::string all = concat(set.AbsolutePosition(), ": ");
    const RowStore& store = *set.rows();
    for (const std::uint32_t row : set.view()) {
      for (const Column& column : store.columns) {
        const Value value = column.value(row);
        all += isNull(value) ? "null|" : textOf(value) + "|";
      }
      all += "\n";
    }
    return all;
  }

  std::mt19937 random_{20030615};
};

using Change = std::function<void(RecordSet&)>;

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
      ASSERT_EQ(ours->fieldCount(), theirs->fieldCount());
      for (std::size_t i = 0; i < ours->fieldCount(); ++i) {
        ASSERT_TRUE(sameName(ours->fieldName(i), theirs->fieldName(i)));
        if (ours->RecordCount() > 0) {
          ASSERT_EQ(ours->rows()->columns[i].type(), theirs->rows()->columns[i].type())
              << ours->fieldName(i);
        }
      }
      ASSERT_EQ(valuesOf(*ours), valuesOf(*theirs));
      for (int step = 0; step < 25 && theirs->RecordCount() > 0; ++step) {
        const std::string field = ours->fieldName(upTo(27));
        const std::string other = ours->fieldName(upTo(27));
        const std::int32_t at =
            1 + static_cast<std::int32_t>(upTo(static_cast<std::uint32_t>(theirs->RecordCount())));
        const bool isText = theirs->rows()->columns[theirs->rows()->indexOf(field)].isText();
        const std::string name = word();
        const Change changes[] = {
            [&](RecordSet& set) { set.setSort(field + " DESC, " + other); },
            [&](RecordSet& set) { set.setFilter(isText ? field + " > 'b'" : ""); },
            [&](RecordSet& set) { set.setFilter("DoctorCode > 2 and Doctor <> 'AMES'"); },
            [&](RecordSet& set) { set.setFilter(""); },
            [&](RecordSet& set) { set.Find("Names = '" + name + "'"); },
            [&](RecordSet& set) {
              set.setAbsolutePosition(at);
              set.set(field, isText ? Value(name) : Value());
              set.Update();
            },
            [&](RecordSet& set) {  // the key alone
              set.setAbsolutePosition(at);
              set.set("DoctorCode", at % 8);
              set.set("PatientId", 25000 + at % 3);
              set.Update();
            },
            [&](RecordSet& set) {
              set.AddNew();
              set.set("FacilityCode", at % 8);
              set.set("Doctor", name);
              set.Update();
            },
            [&](RecordSet& set) {
              set.setAbsolutePosition(at);
              set.Delete();
            },
        };
        const Change& change = changes[upTo(static_cast<std::uint32_t>(std::size(changes)))];
        change(*ours);
        change(*theirs);
        ASSERT_EQ(valuesOf(*ours), valuesOf(*theirs)) << step << ' ' << field << ' ' << other;
      }
    }
  }
}

}  // namespace
}  // namespace bw
