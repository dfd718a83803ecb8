
#include "patients/frmPatients.h"
#include "tests/forms/FormsFixture.h"
#include "tests/server/TestDatabase.h"

namespace bw {
namespace {

// Patients 25000 (admitted, with a charge) and 25001 of the small office, and the doubles of 25010
// to 25019.
class PatientsViewTest : public FormsTest {
 protected:
  PatientsViewTest() {
    add(25010, "Muñoz, Eva", "2001/02/03", "B1");
    add(25011, "MUÑOZ, EVA", "1999/01/01", "C1");
    add(25012, "Иванов", "2001/02/03", "c1  ");
    add(25013, "ИВАНОВ", "2001/02/03", "");
    add(25014, "", "1950/01/01", "D1");
    openView(1);
  }
  static void add(int id, const std::string& names, const char* born, const char* account) {
    run(concat("INSERT INTO Patient (PatientId, Names, DateOfBirth, AccountNumber, InsuranceCode) ",
               "VALUES (", id, ", '", names, "', #", born, "#, '", account, "', 1)"));
  }
  static int rowOf(const std::string& names) { return bw::rowOf(list(), names); }
};

// Among them a name of blanks without an account, an insurance that has vanished, and no date of
// birth.
TEST_F(PatientsViewTest, EachFilterShowsItsPatientsInItsOrder) {
  add(25015, "  ", "1950/01/01", "");
  add(25016, "Zorn, Al", "1971/01/01", "F1");
  run(relationsOff());
  run("UPDATE Patient SET InsuranceCode=9 WHERE PatientId=25016");
  run("UPDATE Patient SET DateOfBirth=NULL WHERE PatientId=25011");
  const std::string bob = "Jones, Bob", ann = "Smith, Ann", al = "Zorn, Al", blank = "  ";
  const std::string eva = "Muñoz, Eva", evaLoud = "MUÑOZ, EVA", ivan = "Иванов",
                    ivanLoud = "ИВАНОВ";
  const std::pair<std::int16_t, Strings> cases[] = {
      {1, {"", blank, evaLoud, al, ivanLoud}},
      {2, {ann}},
      {3, {"", blank, bob, eva, evaLoud, al, ivan, ivanLoud}},
      {15, {"", blank, eva, ivan, ivanLoud}},
      {16, {eva, evaLoud, ivan, ivanLoud}},
      {17, {ivan, ivanLoud}},
      {18, {evaLoud, ivan}},
      {0, {"", blank, bob, eva, evaLoud, ann, al, ivan, ivanLoud}}};
  for (const auto& [filter, names] : cases) {
    window().CambiaAVista(1, filter);
    EXPECT_EQ(shownTexts(list()), names) << "filter " << filter;
  }
  // A filter of another view has no statement.
  EXPECT_NO_THROW(window().CambiaAVista(1, 7));
  EXPECT_THROW(frmPatients().Refresca(), RuntimeError);
}

TEST_F(PatientsViewTest, GoingToARowMakesItThePatientOfTheCharges) {
  clickRow(list(), rowOf("Smith, Ann"));
  EXPECT_EQ(CurrentPatientId, 25000);
  list().setFocus();
  QTest::keyClick(&list(), Qt::Key_Home);
  EXPECT_EQ(CurrentPatientId, 25014);
  QTest::keyClick(&list(), Qt::Key_Down);
  EXPECT_EQ(CurrentPatientId, 25001);
}

TEST_F(PatientsViewTest, DeletingSeveralKeepsTheRowThatChargesUse) {
  list().selectAll();
  answer(true);
  trigger(window(), "Eliminar");
  EXPECT_EQ(takeQuestions(), Strings{"Are You sure you want to delete the selected Patients?"});
  EXPECT_EQ(takeMessages(), Strings{"This record cannot be deleted: charges still use it."});
  EXPECT_EQ(rows("SELECT PatientId FROM Patient"), "25000");
  EXPECT_EQ(list().count(), 1);
}

TEST_F(PatientsViewTest, OfSeveralSelectedOnlyTheLowestIsAdmitted) {
  window().CambiaAVista(1, 3);
  list().selectAll();
  script.in("frmAdmitPatient", [](QWidget& dialog) { click(dialog, "OKButton"); });
  trigger(window(), "Admit");
  EXPECT_EQ(rows("SELECT PatientId FROM Patient WHERE InFacilityCode=1"), "25000 25013");
  const int row = rowOf("ИВАНОВ");
  EXPECT_EQ(selectedRows(list()), std::vector<int>{row});
  EXPECT_EQ(shownTexts(list(), 3)[static_cast<std::size_t>(row)], "General")
      << "the row stays until the filter is chosen again";
  frmPatients().Refresca();
  EXPECT_EQ(list().count(), 5);
}

// Merge. The charge of 25000 was entered at kSeedDate and kSeedTime.
class MergeTest : public PatientsViewTest {
 protected:
  MergeTest() {
    run("INSERT INTO PatientCharges VALUES "
        "(25001, #06/01/2003#, #09:00:00#, #06/01/2003#, 1, 1, 1, 2, 1, 7), "
        "(25010, #06/01/2003#, #08:30:00#, #06/01/2003#, 1, 1, 1, 2, 1, 7), "
        "(25010, #06/01/2003#, #10:00:00#, #06/01/2003#, 1, 1, 1, 2, 1, 7)");
  }
  void select(const Strings& names) {
    list().clearSelected();
    for (const std::string& name : names) clickRow(list(), rowOf(name), Qt::ControlModifier);
  }
  static std::string owners() {
    return rows("SELECT PatientId, count(*) FROM PatientCharges GROUP BY 1 ORDER BY 1");
  }
};

TEST_F(MergeTest, OneWhoseChargesCollideKeepsThemAllTheOthersAreMoved) {
  select({"Smith, Ann", "Jones, Bob", "Muñoz, Eva", "Иванов"});
  script.in("frmMergePatients", [&](QWidget& dialog) {
    ListView& choice = listIn(dialog);
    EXPECT_EQ(shownTexts(choice), (Strings{"Smith, Ann", "Jones, Bob", "Muñoz, Eva", "Иванов"}));
    click(dialog, "btnOk");
    EXPECT_EQ(takeMessages(),
              (Strings{"Muñoz, Eva : Both patients have a charge that was entered on the same "
                       "date at the same time. Nothing was moved.",
                       "Иванов : No Charges to transfer!"}));
    EXPECT_EQ(owners(), "25000|2 25010|2");
    EXPECT_TRUE(dialog.isVisible() && RecordSaved);
    takeStatements();
    click(dialog, "btnCancel");
  });
  trigger(window(), "Merge");
  EXPECT_EQ(takeStatements(), Strings{});
  EXPECT_EQ(MergeSelection, "0000025012000002500000000250100000025001");
  EXPECT_FALSE(RecordSaved);
}

TEST_F(MergeTest, OnlyTheCloseBoxAfterAMergeReadsTheViewAgain) {
  select({"Smith, Ann", "Jones, Bob"});
  script.in("frmMergePatients", [](QWidget& dialog) {
    listIn(dialog).clearSelected();
    click(dialog, "btnOk");  // nothing selected: nothing moves, without a word
    dialog.close();
  });
  takeStatements();
  trigger(window(), "Merge");
  EXPECT_EQ(takeStatements(),
            (Strings{"SELECT * FROM PatientsDescriptive Where PatientId =  25000 or "
                     "PatientId =  25001",
                     "SELECT * FROM PatientsDescriptive"}));
  EXPECT_EQ(owners(), "25000|1 25001|1 25010|2");
}

// More than the engine takes conditions in one statement.
TEST_F(MergeTest, TwelveHundredPatientsBecomeOne) {
  const std::string numbers =
      " WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 1199) SELECT ";
  run("INSERT INTO Patient (PatientId, Names, DateOfBirth, InsuranceCode)" + numbers +
      "i + 26000, 'P', '1950-01-01', 1 FROM n");
  run("INSERT INTO PatientCharges" + numbers +
      "i + 26000, '2001-01-01', time(i, 'unixepoch'), '2001-01-01', 1, 1, 1, 2, 0, NULL FROM n");
  frmPatients().Refresca();
  clickRow(list(), rowOf("P"));
  clickRow(list(), rowOf("P") + 1199, Qt::ShiftModifier);
  script.in("frmMergePatients", [](QWidget& dialog) {
    ListView& choice = listIn(dialog);
    EXPECT_EQ(choice.count(), 1200);
    clickRow(choice, 1100);
    click(dialog, "btnOk");
    click(dialog, "btnCancel");
  });
  trigger(window(), "Merge");
  EXPECT_EQ(owners(), "25000|1 25001|1 25010|2 27100|1200");
}

TEST_F(MergeTest, FewerThanTwoPatientsGetAMessageAndNoDialog) {
  for (const Strings& names : {Strings{}, Strings{"Smith, Ann"}}) {
    select(names);
    trigger(window(), "Merge");
    EXPECT_EQ(takeMessages(), Strings{"You have to select at least 2 patients!"});
  }
  select({"Smith, Ann", ""});
  run("DELETE FROM Patient WHERE PatientId=25014");
  trigger(window(), "Merge");
  EXPECT_EQ(takeMessages(),
            Strings{"At least two patients need to be selected to proceed with this "
                    "operation!"});
}

}  // namespace
}  // namespace bw
