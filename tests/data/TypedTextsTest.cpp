#include <algorithm>
#include <map>
#include <random>

#include "core/Principal.h"
#include "data/BWSQLPatients.h"
#include "data/Tables.h"
#include "tests/data/Routines.h"

namespace bw {
namespace {

// A routine that writes texts: of record 1, or of a new one, whose number it returns in `code`.
struct Routine {
  const char* table;
  std::function<int(std::int16_t& code, const std::string& text, std::string& message)> write;
};

std::vector<Routine> routines() {
  std::vector<Routine> all{
      {"Patient",
       [](auto& code, auto& t, auto& m) { return PatientInsert(code, t, kSeedDate, t, 1, m); }},
      {"Patient", [](auto& code, auto& t, auto& m) {
         return PatientUpdate(code = 25000, t, kSeedDate, t, 1, m);
       }}};
  for (const Catalogue& one : kCatalogues) {
    all.push_back({one.table, one.insert});
    all.push_back({one.table, one.update});
  }
  return all;
}

// What people type, what closes a text, and what could stand behind it.
// clang-format off
const char* const kPieces[] = {
    "'", "''", "'", "\"", "`", "[", "]", "#", "#01/02/2003#", "--", "/*", "*/", ";", "(", ")", ",",
    " ", " ", "=", "||", "+", "?", ":a", "@b", "$c", "$$", "%", "_", "\\", "’", "ß", "Ω", "中", "é",
    "\n", "\t", "0", "1", "2", "25", "x", "Ann", "St. Mary", "E", "X", "N", "null", "NULL",
    "Description", "Description=", "DescriptionCode", "Names=", "InsuranceCode", "PatientId=",
    "DoctorCode=", "BillingDoctorCode=", " WHERE ", " OR ", " AND ", " NOT ", "1=1", " VALUES ",
    "'), (99, '", "', '", "') ON CONFLICT DO NOTHING", " ON CONFLICT", " RETURNING ", " SELECT ",
    "(SELECT Names FROM Patient)", " FROM ", " UNION ", " JOIN ", " IN ", " EXISTS ", " CASE ",
    " WHEN ", " THEN ", " ELSE ", " END", " COLLATE ", "lower(", "abs(", "random()", "CAST(", " AS ",
    "PRAGMA ", "ATTACH ", "DROP TABLE Patient", "rowid", "' || '", "'||Description||'",
    "', Description='", "' WHERE '1'='1", "', BillingInsuranceCode='"};
// clang-format on

using Rows = std::vector<std::string>;

class TypedTextsTest : public RoutineTest {
 protected:
  void SetUp() override {
    RoutineTest::SetUp();
    run("INSERT INTO Patient (PatientId, [Names], InsuranceCode) VALUES (25100, 'Other', 1)");
    before_ = contents();
  }

  static std::map<std::string_view, Rows> contents() {
    std::map<std::string_view, Rows> contents;
    for (const SchemaTable& table : schemaTables()) {
      if (table.isLookup) continue;
      const RecordSetRef found = DatabaseConnection.Read(concat("SELECT * FROM ", table.name));
      for (; !found->EOF_(); found->MoveNext()) {
        std::string row;
        for (std::size_t i = 0; i < found->fieldCount(); ++i)
          row += (found->isNull(i) ? "\x01" : found->text(i)) + '\x02';
        contents[table.name].push_back(row);
      }
      std::ranges::sort(contents[table.name]);
    }
    return contents;
  }

  static Rows difference(const Rows& one, const Rows& other) {
    Rows rows;
    std::ranges::set_difference(one, other, std::back_inserter(rows));
    return rows;
  }

  std::string typed() {
    std::string text;
    for (int pieces = pick(1, 7); pieces > 0; --pieces)
      text += kPieces[pick(0, std::size(kPieces) - 1)];
    return text;
  }
  int pick(int from, std::size_t to) {
    return std::uniform_int_distribution<int>(from, static_cast<int>(to))(random_);
  }

  // What a text has done that it must not do; "" when it was stored as it is, refused, or had its
  // say in its own row alone.
  std::string harmOf(const Routine& routine, const std::string& text) {
    std::int16_t code = 1;
    const int result = routine.write(code, text, message);
    takeMessages();
    const auto after = contents();
    const std::string_view own = routine.table;
    for (const auto& [table, rows] : before_)
      if (table != own && rows != after.at(table)) return concat("another table: ", table);
    const Rows gone = difference(before_.at(own), after.at(own));
    const Rows come = difference(after.at(own), before_.at(own));
    if (result != 0 && (!gone.empty() || !come.empty()))
      return "stored behind a refusal: " + message;
    const std::string key = std::to_string(code) + '\x02';
    if (gone.size() > 1 || come.size() > 1) return "several rows";
    if (!gone.empty() && !gone[0].starts_with(key)) return "the row of another: " + gone[0];
    if (result == 0 && text.find('\'') == text.npos &&
        std::ranges::none_of(after.at(own), [&](const std::string& row) {
          return row.starts_with(key) && row.find('\x02' + text + '\x02') != row.npos;
        }))
      return "not stored as it was typed";
    return {};
  }

  std::map<std::string_view, Rows> before_;
  std::mt19937 random_{20260309};
};

TEST_F(TypedTextsTest, NoTextReachesAnotherRow) {
  const char* asked = std::getenv("BW_TYPED_TEXTS");
  const int texts = asked != nullptr ? std::atoi(asked) : 300;
  const std::vector<Routine> all = routines();
  int stored = 0;
  for (int i = 0; i < texts; ++i) {
    const std::string text = typed();
    for (const Routine& routine : all) {
      DatabaseConnection.BeginTrans();
      ASSERT_EQ(harmOf(routine, text), "") << routine.table << ": " << text;
      stored += contents() != before_;
      DatabaseConnection.RollbackTrans();
    }
  }
  EXPECT_GT(stored, texts);
}

}  // namespace
}  // namespace bw
