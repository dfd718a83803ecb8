#include "tests/review/RandomOffice.h"

#include <array>
#include <set>

#include "core/Principal.h"
#include "data/Literals.h"
#include "data/Tables.h"
#include "text/DateLiterals.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr std::array kNames{"Smith, Ann",  "Smith, Anne", "Simth, Ann", "Ann Smith",
                            "Smíth, Ann",  "Jones, Bob",  "Jones, Rob", "Bob Jones",
                            "Jones,  Bob", "Cole, Al",    "",           "O’Neil, Pat"};
constexpr std::array kBirths{"1950/02/28", "1950/02/08", "1950/08/20", "1961/12/03",
                             "1961/03/12", "1961/12/30", "2003/06/10"};
constexpr std::array kAccounts{"A12", "A 12", "A-12", "A21", "B7", "B 7", "", "  "};

constexpr int kDoctors = 5;
constexpr int kFacilities = 4;
constexpr int kWards = 6;
constexpr int kConcepts = 5;
constexpr int kDetails = 6;
constexpr int kPatients = 24;
constexpr int kCharges = 120;

template <class... Pieces>
void insert(const char* table, const Pieces&... values) {
  DatabaseConnection.Execute(concat("INSERT INTO ", table, " VALUES (", values..., ")"));
}

}  // namespace

std::string RandomOfficeTest::anyDay(int from, int days) {
  return concat("#", yearFirst(Date{now.date.day + from + any(days)}), "#");
}

// In quotes.
std::string RandomOfficeTest::codeOrNone(const char* prefix, int number) {
  return oneIn(4) ? concat("'", std::string(static_cast<std::size_t>(any(3)), ' '), "'")
                  : concat("'", prefix, number, "'");
}

void RandomOfficeTest::clear() {
  const auto tables = schemaTables();
  for (auto table = tables.rbegin(); table != tables.rend(); ++table)
    if (!table->isLookup) run(concat("DELETE FROM [", table->name, "]"));
}

void RandomOfficeTest::makeOffice(unsigned seed) {
  random_.seed(seed);
  DatabaseConnection.BeginTrans();
  clear();
  fillCatalogues();
  fillPatients();
  fillCharges();
  DatabaseConnection.CommitTrans();
  takeStatements();
}

void RandomOfficeTest::fillCatalogues() {
  for (int i = 1; i <= 3; ++i) insert("Insurance", i, ", 'Mutual ", i, "', ''");
  insert("DiagnosisFamily", "1, 'All'");
  for (int i = 1; i <= kDetails; ++i) {
    insert("Diagnosis", i, ", 'Diagnosis ", i, "', 1, 'X", i, "', ", codeOrNone("D", i), ", 0");
    insert("Procedures", i, ", 'Procedure ", i, "', 'Y", i, "', ", codeOrNone("P", i), ", 0");
  }
  for (int i = 1; i <= kConcepts; ++i)
    insert("EvaluationManagement", i, ", 'Concept ", i, "', 1, ", 1 + i % 2, ", 2, ",
           codeOrNone("E", i), ", 'Z", i, "', 1, 1, 0");
  for (int i = 1; i <= kFacilities; ++i)
    insert("Facility", i, ", 'Facility ", i, "', 1, ", codeOrNone("I", i), ", ",
           codeOrNone("O", i));
  for (int i = 1; i <= kWards; ++i)
    insert("FacilityWards (WardCode, FacilityCode, Description)", i, ", ", 1 + i % kFacilities,
           ", 'Ward ", i % 3, "'");
  for (int i = 1; i <= kDoctors; ++i)
    insert("Doctors", i, ", 'Doctor ", i, "', ", codeOrNone("R", i));
}

void RandomOfficeTest::fillPatients() {
  for (int i = 1; i <= kPatients; ++i) {
    const std::string birth = oneIn(6) ? "NULL" : concat("#", oneOf(kBirths), "#");
    insert(
        "Patient (PatientId, Names, DateOfBirth, AccountNumber, InsuranceCode, InFacilityCode, "
        "InWardCode, InDoctorCode)",
        i, ", '", oneOf(kNames), "', ", birth, ", '", oneOf(kAccounts), "', ", 1 + any(3), ", ",
        oneIn(2) ? 1 + any(kFacilities) : 0, ", ", any(kWards + 1), ", ", any(kDoctors + 1));
    for (int doctor = 1; doctor <= kDoctors; ++doctor)
      if (oneIn(4)) insert("PatientDoctors", i, ", ", doctor, ", ", 1 + any(2), ", ", 1 + any(3));
  }
}

// Times of entry are few, so that merges would collide.
void RandomOfficeTest::fillCharges() {
  std::set<std::string> keys;
  for (int i = 0; i < kCharges; ++i) {
    const std::string key =
        concat(1 + any(kPatients), ", ", anyDay(-40, 40), ", #08:00:0", any(3), "#");
    if (!keys.insert(key).second) continue;
    const int status = any(4);
    const std::string lot =
        status == 0 && !oneIn(5) ? "NULL" : concat(oneIn(3) ? 17 : 200306011 + 10 * any(4));
    insert("PatientCharges", key, ", ", anyDay(-45, 48), ", ", 1 + any(kFacilities), ", ",
           1 + any(kConcepts), ", ", 1 + any(kDoctors), ", ", 1 + any(kDoctors), ", ", status, ", ",
           lot);
    for (int code = 1; code <= kDetails; ++code) {
      if (oneIn(4)) insert("ChargeDiagnosis", key, ", ", code);
      if (oneIn(6)) insert("ChargeProcedures", key, ", ", code);
    }
  }
}

std::vector<TableRow> RandomOfficeTest::table(const std::string& name) {
  std::vector<TableRow> rows;
  const RecordSetRef read = DatabaseConnection.Read(concat("SELECT * FROM [", name, "]"));
  for (; !read->EOF_(); read->MoveNext()) {
    TableRow& row = rows.emplace_back();
    for (const SchemaColumn& column : schemaTable(name).columns)
      row[std::string(column.name)] = read->textOrEmpty(column.name);
  }
  return rows;
}

TableRow RandomOfficeTest::find(const std::vector<TableRow>& rows, const std::string& column,
                                const std::string& key) {
  for (const TableRow& row : rows)
    if (row.at(column) == key) return row;
  return {};
}

std::optional<Date> RandomOfficeTest::dateOf(const std::string& text) {
  const std::optional<Value> value = parseDateLiteral(text);
  return value ? std::optional(std::get<Date>(*value)) : std::nullopt;
}

Strings RandomOfficeTest::linesOf(const RowStore& rows, const Strings& fields) {
  Strings lines;
  for (std::size_t row = 0; row < rows.rowCount(); ++row)
    lines.push_back(joined(fields, "|", [&](const std::string& field) {
      return textOrEmpty(rows.columns[rows.indexOf(field)].value(row));
    }));
  return lines;
}

}  // namespace bw
