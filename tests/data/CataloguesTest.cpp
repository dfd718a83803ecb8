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
#include "text/Text.h"

namespace bw {
namespace {

// What inserts a row, with whatever else it needs.
using Insert = int (*)(std::int16_t& code, const std::string& text, std::string& message);

struct Family {
  const char* table;
  const char* key;
  Insert insert;
  std::int16_t (*next)();
  const char* parents = nullptr;  // what must be there before the first row
  bool codeSetFirst = false;      // the out code is set before the statement
};
void PrintTo(const Family& family, std::ostream* out) { *out << family.table; }

using Text = const std::string&;
// clang-format off
const Family kFamilies[] = {
    {"Insurance", "InsuranceCode",
     [](std::int16_t& c, Text text, std::string& message) { return InsuranceInsert(c, text, "b", message); }, InsuranceNextCode},
    {"Diagnosis", "DiagnosisCode",
     [](std::int16_t& c, Text text, std::string& message) { return DiagnosisInsert(c, text, 1, "r", "b", message); }, DiagnosisNextCode,
     "INSERT INTO DiagnosisFamily VALUES (1, 'f')"},
    {"DiagnosisFamily", "DiagnosisFamilyCode", DiagnosisFamilyInsert, DiagnosisFamilyNextCode},
    {"Procedures", "ProcedureCode",
     [](std::int16_t& c, Text text, std::string& message) { return ProcedureInsert(c, text, "r", "b", message); }, ProcedureNextCode},
    {"Sickness", "SicknessCode",
     [](std::int16_t& c, Text text, std::string& message) { return SicknessInsert(c, text, 0, message); }, SicknessNextCode},
    {"Facility", "FacilityCode",
     [](std::int16_t& c, Text text, std::string& message) { return FacilityInsert(c, text, 3, "i", "o", message); }, FacilityNextCode},
    {"FacilityWards", "WardCode",
     [](std::int16_t& c, Text text, std::string& message) { return WardInsert(c, 7, text, message); }, WardNextCode,
     "INSERT INTO Facility VALUES (7, 'f', 1, '', '')", true},
    {"Doctors", "DoctorCode",
     [](std::int16_t& c, Text text, std::string& message) { return DoctorInsert(c, text, "b", ";", message); }, DoctorNextCode},
};
// clang-format on

class CataloguesTest : public DataTest, public ::testing::WithParamInterface<Family> {
 protected:
  CataloguesTest() {
    if (family.parents != nullptr) run(family.parents);
    EXPECT_EQ(family.insert(code, "x", message), 0) << message;
  }
  // A row made by somebody else: a copy of the first one under another code.
  void copyRowTo(int number) {
    std::string columns;
    const RecordSetRef shape = DatabaseConnection.Read(concat("SELECT * FROM ", family.table));
    for (std::size_t i = 1; i < shape->fieldCount(); ++i) columns += ", " + shape->fieldName(i);
    run(concat("INSERT INTO ", family.table, " SELECT ", number, columns, " FROM ", family.table,
               " WHERE ", family.key, "=1"));
  }

  const Family& family = GetParam();
  std::int16_t code = 0;
  std::string message;
};

TEST_P(CataloguesTest, CodesEndAt1000AndHigherOnesDoNotCount) {
  EXPECT_EQ(code, 1);
  copyRowTo(1500);
  EXPECT_EQ(family.next(), 2);
  copyRowTo(998);
  EXPECT_EQ(family.next(), 999);
  copyRowTo(999);
  ASSERT_EQ(family.insert(code, "x", message), 0);
  EXPECT_EQ(code, 1000);
  code = 5;
  EXPECT_EQ(family.insert(code, "x", message), 1);
  EXPECT_EQ(message, kDuplicateKey);
  EXPECT_EQ(code, family.codeSetFirst ? 1000 : 5);
}

TEST_P(CataloguesTest, ACodeIsHandedOutBeforeACommitThatFails) {
  onStatement = [](std::string_view issued) {
    if (issued == "COMMIT") throw RuntimeError(ErrorNumber::database, "The disk is full.");
  };
  EXPECT_EQ(family.insert(code, "x", message), 1);
  EXPECT_EQ(message, "The disk is full.");
  EXPECT_EQ(code, 2);
  EXPECT_EQ(count(family.table), "1");
}

TEST_P(CataloguesTest, AllocatorTellsItsFailureAndTheInsertStoresNothing) {
  run(concat("ALTER TABLE ", family.table, " RENAME COLUMN ", family.key, " TO Lost"));
  code = 5;
  EXPECT_EQ(family.insert(code, "x", message), 1);
  EXPECT_EQ(message, "");
  EXPECT_EQ(code, family.codeSetFirst ? 0 : 5);
  EXPECT_EQ(takeMessages(), Strings{noSuchColumn(family.key)});
}

INSTANTIATE_TEST_SUITE_P(Families, CataloguesTest, ::testing::ValuesIn(kFamilies),
                         [](const auto& test) { return std::string(test.param.table); });

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
      {[] { return WardGet(1); }, "Description", "East", false},
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
  EXPECT_THROW(DoctorGet(1)->set("Description", "7"), RuntimeError);
  closeConnection();
  for (const auto& test : cases) {
    EXPECT_FALSE(test.list());
    EXPECT_EQ(takeMessages(), test.tells ? Strings{kClosed} : Strings{});
  }
  EXPECT_FALSE(DoctorGet(1));
  EXPECT_FALSE(DiagnosisFamilyGet(1));
  EXPECT_EQ(takeMessages(), Strings{kClosed});
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
