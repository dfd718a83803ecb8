#include "core/Principal.h"
#include "data/BWSQLDiagnosis.h"
#include "data/BWSQLDiagnosisFamilies.h"
#include "data/BWSQLDoctors.h"
#include "data/BWSQLEMCodes.h"
#include "data/BWSQLFacilities.h"
#include "data/BWSQLInsurances.h"
#include "data/BWSQLProcedures.h"
#include "data/BWSQLSickness.h"
#include "data/BWSQLWards.h"
#include "tests/data/DataFixture.h"
#include "tests/server/TestDatabase.h"
#include "tests/text/Raised.h"
#include "text/Text.h"

namespace bw {
namespace {

using Strings = std::vector<std::string>;

struct Family {
  const char* name;
  const char* table;
  const char* key;
  const char* text = "Description";  // the column of the text that the calls below are given
  const char* parents = nullptr;     // what must be there before the first row
  int (*insert)(std::int32_t& code, const std::string& text, std::string& message);
  int (*update)(std::int16_t code, const std::string& text, std::string& message);
  int (*remove)(std::int16_t code, std::string& message);
  RecordSetRef (*get)(std::int16_t code);
  std::int16_t (*next)();
  const char* inserted;       // the row of the first insert with the text "x"
  const char* updated;        // and after an update with "y"
  bool bounded = true;        // codes from 1000 on do not count
  bool codeSetFirst = false;  // the out code is set before the statement
  bool getWritable = false;   // the row can be written to
  bool getTells = false;      // a failure of the read is shown
};
void PrintTo(const Family& family, std::ostream* out) { *out << family.name; }

// Calls with a 16 bit code what keeps it in 32.
template <class Insert>
int narrow(std::int32_t& code, Insert insert) {
  auto narrowed = static_cast<std::int16_t>(code);
  const int result = insert(narrowed);
  code = narrowed;
  return result;
}

// clang-format off
const Family kFamilies[] = {
    {.name = "Insurance", .table = "Insurance", .key = "InsuranceCode",
     .insert = [](std::int32_t& code, const std::string& text, std::string& message) {
       return narrow(code, [&](std::int16_t& c) { return InsuranceInsert(c, text, "b", message); }); },
     .update = [](std::int16_t code, const std::string& text, std::string& message) {
       return InsuranceUpdate(code, text, "c", message); },
     .remove = InsuranceDelete, .get = InsuranceGet, .next = InsuranceNextCode,
     .inserted = "1|x|b", .updated = "1|y|c"},
    {.name = "Diagnosis", .table = "Diagnosis", .key = "DiagnosisCode",
     .parents = "INSERT INTO DiagnosisFamily VALUES (1, 'f'), (2, 'g')",
     .insert = [](std::int32_t& code, const std::string& text, std::string& message) {
       return narrow(code, [&](std::int16_t& c) { return DiagnosisInsert(c, text, 1, "r", "b", message); }); },
     .update = [](std::int16_t code, const std::string& text, std::string& message) {
       return DiagnosisUpdate(code, text, 2, "s", "c", message); },
     .remove = DiagnosisDelete, .get = DiagnosisGet, .next = DiagnosisNextCode,
     .inserted = "1|x|1|r|b|0", .updated = "1|y|2|s|c|0"},
    {.name = "DiagnosisFamily", .table = "DiagnosisFamily", .key = "DiagnosisFamilyCode",
     .text = "DiagnosisFamilyDescription",
     .insert = [](std::int32_t& code, const std::string& text, std::string& message) {
       return narrow(code, [&](std::int16_t& c) { return DiagnosisFamilyInsert(c, text, message); }); },
     .update = DiagnosisFamilyUpdate, .remove = DiagnosisFamilyDelete, .get = DiagnosisFamilyGet,
     .next = DiagnosisFamilyNextCode, .inserted = "1|x", .updated = "1|y", .getTells = true},
    {.name = "Procedure", .table = "Procedures", .key = "ProcedureCode",
     .insert = [](std::int32_t& code, const std::string& text, std::string& message) {
       return narrow(code, [&](std::int16_t& c) { return ProcedureInsert(c, text, "r", "b", message); }); },
     .update = [](std::int16_t code, const std::string& text, std::string& message) {
       return ProcedureUpdate(code, text, "s", "c", message); },
     .remove = ProcedureDelete, .get = ProcedureGet, .next = ProcedureNextCode,
     .inserted = "1|x|r|b|0", .updated = "1|y|s|c|0"},
    {.name = "Sickness", .table = "Sickness", .key = "SicknessCode",
     .insert = [](std::int32_t& code, const std::string& text, std::string& message) {
       return narrow(code, [&](std::int16_t& c) { return SicknessInsert(c, text, 0, message); }); },
     .update = [](std::int16_t code, const std::string& text, std::string& message) {
       return SicknessUpdate(code, text, 2, message); },
     .remove = SicknessDelete, .get = SicknessGet, .next = SicknessNextCode,
     .inserted = "1|x|0|0", .updated = "1|y|2|0"},
    {.name = "Facility", .table = "Facility", .key = "FacilityCode",
     .insert = [](std::int32_t& code, const std::string& text, std::string& message) {
       return narrow(code, [&](std::int16_t& c) { return FacilityInsert(c, text, 3, "i", "o", message); }); },
     .update = [](std::int16_t code, const std::string& text, std::string& message) {
       return FacilityUpdate(code, text, 4, "j", "p", message); },
     .remove = FacilityDelete, .get = FacilityGet, .next = FacilityNextCode,
     .inserted = "1|x|3|i|o", .updated = "1|y|4|j|p"},
    {.name = "Ward", .table = "FacilityWards", .key = "WardCode",
     .parents = "INSERT INTO Facility VALUES (7, 'f', 1, '', ''), (8, 'g', 1, '', '')",
     .insert = [](std::int32_t& code, const std::string& text, std::string& message) {
       return narrow(code, [&](std::int16_t& c) { return WardInsert(c, 7, text, message); }); },
     .update = [](std::int16_t code, const std::string& text, std::string& message) {
       return WardUpdate(code, 8, text, message); },
     .remove = WardDelete, .get = WardGet, .next = WardNextCode,
     .inserted = "1|7|x|0", .updated = "1|8|y|0", .codeSetFirst = true, .getWritable = true},
    {.name = "Doctor", .table = "Doctors", .key = "DoctorCode",
     .insert = [](std::int32_t& code, const std::string& text, std::string& message) {
       return narrow(code, [&](std::int16_t& c) { return DoctorInsert(c, text, "b", ";", message); }); },
     .update = [](std::int16_t code, const std::string& text, std::string& message) {
       return DoctorUpdate(code, text, "c", ";", message); },
     .remove = DoctorDelete, .get = DoctorGet, .next = DoctorNextCode,
     .inserted = "1|x|b", .updated = "1|y|c"},
    {.name = "EMCode", .table = "EvaluationManagement", .key = "EMCode",
     .insert = [](std::int32_t& code, const std::string& text, std::string& message) {
       return EMCodeInsert(code, text, 1, 2, 1, "b", "r", 0, 1, 3, message); },
     .update = [](std::int16_t code, const std::string& text, std::string& message) {
       return EMCodeUpdate(code, text, 5, 1, 2, "c", "s", 1, 0, 1, message); },
     .remove = [](std::int16_t code, std::string& message) { return EMCodeDelete(code, message); },
     .get = [](std::int16_t code) { return EMCodeGet(code); }, .next = EMCodeNextCode,
     .inserted = "1|x|1|2|1|b|r|0|1|3", .updated = "1|y|5|1|2|c|s|1|0|1", .bounded = false},
};
// clang-format on

class CataloguesTest : public DataTest, public ::testing::WithParamInterface<Family> {
 protected:
  void prepare() {
    if (family.parents != nullptr) run(family.parents);
  }
  // A row made by somebody else: a copy of the first one under another code.
  void copyRowTo(int number) {
    std::string columns;
    const RecordSetRef shape = DatabaseConnection.Read(concat("SELECT * FROM ", family.table));
    for (std::size_t i = 1; i < shape->fieldCount(); ++i) columns += ", " + shape->fieldName(i);
    run(concat("INSERT INTO ", family.table, " SELECT ", number, columns, " FROM ", family.table,
               " WHERE ", family.key, "=1"));
  }
  std::string stored() { return rows(concat("SELECT * FROM ", family.table)); }

  const Family& family = GetParam();
  std::int32_t code = 0;
  std::string message;
};

TEST_P(CataloguesTest, RowGoesInIsReadChangedAndDeleted) {
  prepare();
  ASSERT_EQ(family.insert(code, "x", message), 0) << message;
  EXPECT_EQ(code, 1);
  EXPECT_EQ(stored(), family.inserted);
  ASSERT_EQ(family.update(1, "y", message), 0) << message;
  EXPECT_EQ(stored(), family.updated);
  const RecordSetRef row = family.get(1);
  ASSERT_EQ(row->RecordCount(), 1);
  EXPECT_EQ(row->text(family.text), "y");
  EXPECT_EQ(row->integer(family.key), 1);
  EXPECT_EQ(raisedBy([&] { row->set(family.text, "z"); }),
            family.getWritable ? std::nullopt : std::optional(ErrorNumber::readOnly));
  EXPECT_EQ(family.remove(1, message), 0);
  EXPECT_EQ(stored(), "");
  EXPECT_EQ(family.get(1)->RecordCount(), 0);
  EXPECT_EQ(message, "");
  EXPECT_EQ(family.update(1, "y", message), 2);
  EXPECT_EQ(message, "U:IMPACTENT");
  EXPECT_EQ(family.remove(1, message), 2);
  EXPECT_EQ(message, "U:IMPELIENT");
}

TEST_P(CataloguesTest, CodesEndAt1000AndHigherOnesDoNotCount) {
  prepare();
  ASSERT_EQ(family.insert(code, "x", message), 0);
  copyRowTo(1500);
  EXPECT_EQ(family.next(), family.bounded ? 2 : 1501);
  copyRowTo(998);
  EXPECT_EQ(family.next(), family.bounded ? 999 : 1501);
  copyRowTo(999);
  ASSERT_EQ(family.insert(code, "x", message), 0);
  EXPECT_EQ(code, family.bounded ? 1000 : 1501);
  code = 5;
  const int result = family.insert(code, "x", message);
  EXPECT_EQ(result, family.bounded ? 1 : 0);
  EXPECT_EQ(message, family.bounded ? kDuplicateKey : "");
  EXPECT_EQ(code, family.codeSetFirst ? 1000 : family.bounded ? 5 : 1502);
}

TEST_P(CataloguesTest, AllocatorTellsItsFailureAndTheInsertStoresNothing) {
  prepare();
  ASSERT_EQ(family.insert(code, "x", message), 0);
  run(concat("ALTER TABLE ", family.table, " RENAME COLUMN ", family.key, " TO Lost"));
  code = 5;
  EXPECT_EQ(family.insert(code, "x", message), 1);
  EXPECT_EQ(message, family.bounded ? "" : "Error obtaining new EMCode");
  EXPECT_EQ(code, family.codeSetFirst ? 0 : 5);
  const Strings shown = takeMessages();
  ASSERT_EQ(shown.size(), 1U);
  const std::string error = noSuchColumn(family.key);
  EXPECT_EQ(shown[0],
            family.bounded
                ? error
                : error + "SELECT TOP 1 * FROM EvaluationManagement ORDER BY EMCode DESC");
}

TEST_P(CataloguesTest, FailedReadGivesNothing) {
  closeConnection();
  EXPECT_FALSE(family.get(1));
  EXPECT_EQ(takeMessages(), family.getTells ? Strings{kClosed} : Strings{});
}

INSTANTIATE_TEST_SUITE_P(Families, CataloguesTest, ::testing::ValuesIn(kFamilies),
                         [](const auto& test) { return std::string(test.param.name); });

class CatalogueReadsTest : public DataTest {};

TEST_F(CatalogueReadsTest, ListsCanBeWrittenToAndTellTheirFailuresOrNot) {
  const struct {
    RecordSetRef (*list)();
    const char* column;
    const char* text;
    bool tells;
  } cases[] = {
      {DiagnosisFamilyList, "DiagnosisFamilyDescription", "Heart", true},
      {SicknessTypeList, "Description", "Allergies", true},
      {FacilityList, "Description", "General", false},
      {[] { return WardListByFacility(1); }, "Description", "East", false},
      {DoctorList, "Description", "Ames", false},
      {[] { return CoveringDoctorList(1); }, "CoveringDoctorCode", "2", false},
  };
  seedOffice();
  run("INSERT INTO DoctorCoveringDoctors VALUES (1, 2)");
  for (const auto& test : cases) {
    const RecordSetRef found = test.list();
    ASSERT_TRUE(found);
    EXPECT_EQ(found->text(test.column), test.text);
    EXPECT_NO_THROW(found->set(test.column, "7"));
  }
  closeConnection();
  for (const auto& test : cases) {
    EXPECT_FALSE(test.list());
    EXPECT_EQ(takeMessages(), test.tells ? Strings{kClosed} : Strings{});
  }
}

TEST_F(CatalogueReadsTest, ServiceCodesAre32BitsWideButAllocatedIn16) {
  seedOffice();
  run("INSERT INTO EvaluationManagement VALUES (70001, 'Far', 1, 1, 1, '', '', 0, 0, 1)");
  std::string message;
  EXPECT_EQ(EMCodeUpdate(70001, "Farther", 1, 1, 1, "", "", 0, 0, 1, message), 0);
  EXPECT_EQ(EMCodeGet(70001)->text("Description"), "Farther");
  for (const char* code : {"32767", "70001"}) {
    run(concat("DELETE FROM EvaluationManagement WHERE EMCode > 1"));
    run(concat("INSERT INTO EvaluationManagement VALUES (", code,
               ", 'Far', 1, 1, 1, '', '', 0, 0, 1)"));
    std::int32_t allocated = 0;
    EXPECT_EQ(EMCodeInsert(allocated, "x", 1, 1, 1, "", "", 0, 0, 1, message), 1);
    EXPECT_EQ(message, "Error obtaining new EMCode");
    EXPECT_EQ(takeMessages(),
              Strings{"OverflowSELECT TOP 1 * FROM EvaluationManagement ORDER BY EMCode DESC"});
    EXPECT_EQ(EMCodeDelete(std::stoi(code), message), 0);
  }
}

}  // namespace
}  // namespace bw
