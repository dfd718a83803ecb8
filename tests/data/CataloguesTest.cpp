#include <span>

#include "core/Principal.h"
#include "tests/data/Routines.h"
#include "tests/server/TestDatabase.h"

namespace bw {
namespace {

class CataloguesTest : public RoutineTest, public ::testing::WithParamInterface<Catalogue> {
 protected:
  void SetUp() override {
    run(relationsOff());
    EXPECT_EQ(catalogue.insert(code, "x", message), 0) << message;
  }
  // A row made by somebody else: a copy of the first one under another code.
  void copyRowTo(int number) {
    std::string columns;
    const RecordSetRef shape = DatabaseConnection.Read(concat("SELECT * FROM ", catalogue.table));
    for (std::size_t i = 1; i < shape->fieldCount(); ++i) columns += ", " + shape->fieldName(i);
    run(concat("INSERT INTO ", catalogue.table, " SELECT ", number, columns, " FROM ",
               catalogue.table, " WHERE ", catalogue.key, "=1"));
  }
  std::string toldByInsert() { return told(catalogue.insert(code, "x", message)); }

  const Catalogue& catalogue = GetParam();
  std::int16_t code = 0;
};

TEST_P(CataloguesTest, CodesEndAt1000AndHigherOnesDoNotCount) {
  EXPECT_EQ(code, 1);
  copyRowTo(1500);
  EXPECT_EQ(catalogue.next(), 2);
  copyRowTo(998);
  EXPECT_EQ(catalogue.next(), 999);
  copyRowTo(999);
  ASSERT_EQ(toldByInsert(), "0");
  EXPECT_EQ(code, 1000);
  code = 5;
  EXPECT_EQ(toldByInsert(), concat("1 ", kDuplicateKey));
  EXPECT_EQ(code, catalogue.codeSetFirst ? 1000 : 5);
}

TEST_P(CataloguesTest, ACodeIsHandedOutBeforeACommitThatFails) {
  onStatement = [](std::string_view issued) {
    if (issued == "COMMIT") throw RuntimeError(ErrorNumber::database, "The disk is full.");
  };
  EXPECT_EQ(toldByInsert(), "1 The disk is full.");
  EXPECT_EQ(code, 2);
  EXPECT_EQ(count(catalogue.table), "1");
}

TEST_P(CataloguesTest, AllocatorTellsItsFailureAndTheInsertStoresNothing) {
  run(concat("ALTER TABLE ", catalogue.table, " RENAME COLUMN ", catalogue.key, " TO Lost"));
  code = 5;
  EXPECT_EQ(toldByInsert(), "1");
  EXPECT_EQ(code, catalogue.codeSetFirst ? 0 : 5);
  EXPECT_EQ(takeMessages(), Strings{noSuchColumn(catalogue.key)});
}

// The codes of services, which stand last, are allocated in another way.
INSTANTIATE_TEST_SUITE_P(
    Families, CataloguesTest,
    ::testing::ValuesIn(std::span(kCatalogues).first(std::size(kCatalogues) - 1)),
    [](const auto& test) { return std::string(test.param.table); });

class CatalogueReadsTest : public RoutineTest {};

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

TEST_F(CatalogueReadsTest, EachValueOfAServiceStandsInItsColumn) {
  std::int32_t code = 0;
  const auto stored = [&] {
    return rows(concat(
        "SELECT Description, FacilityTypeCode, ChargeTypeCode, AttentionTypeCode, BillingEMCode, "
        "RealEMCode, ShowOnFirst, ShowOnNext, IsDischarge FROM EvaluationManagement "
        "WHERE EMCode = ",
        code));
  };
  EXPECT_EQ(told(EMCodeInsert(code, "New", 3, 2, 1, "b", "r", 4, 5, 6, message)), "0");
  EXPECT_EQ(stored(), "New|3|2|1|b|r|4|5|6");
  EXPECT_EQ(told(EMCodeUpdate(code, "Old", 3, 1, 2, "B", "R", 6, 4, 5, message)), "0");
  EXPECT_EQ(stored(), "Old|3|1|2|B|R|6|4|5");
}

TEST_F(CatalogueReadsTest, ServiceCodesAre32BitsWideButAllocatedIn16) {
  for (const int code : {32767, 70001}) {
    run("DELETE FROM EvaluationManagement WHERE EMCode > 1");
    run(concat("INSERT INTO EvaluationManagement VALUES (", code,
               ", 'Far', 1, 1, 1, '', '', 0, 0, 1)"));
    std::int32_t allocated = 0;
    EXPECT_EQ(told(EMCodeInsert(allocated, "x", 1, 1, 1, "", "", 0, 0, 1, message)),
              "1 Error obtaining new EMCode");
    EXPECT_EQ(takeMessages(),
              Strings{"OverflowSELECT TOP 1 * FROM EvaluationManagement ORDER BY EMCode DESC"});
    EXPECT_EQ(EMCodeUpdate(code, "Farther", 1, 1, 1, "", "", 0, 0, 1, message), 0);
    EXPECT_EQ(EMCodeGet(code)->text("Description"), "Farther");
    EXPECT_EQ(EMCodeDelete(code, message), 0);
  }
}

}  // namespace
}  // namespace bw
