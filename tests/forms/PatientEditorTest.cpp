
#include "patients/frmEditPatient.h"
#include "patients/frmPatients.h"
#include "picks/PickDialogs.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

class PatientEditorTest : public FormsTest {
 protected:
  PatientEditorTest() {
    run("INSERT INTO Insurance VALUES (2, 'Provident', '')");
    run("INSERT INTO Sickness (SicknessCode, Description, SicknessTypeCode) VALUES "
        "(3, 'Dust', 0), (4, 'Asthma', 1)");
    openView(1);
  }

  // Opens the editor on 25000.
  void edit(const ModalScript::Step& step, const Strings& picked = {}) {
    script.in("frmEditPatient", step);
    if (!picked.empty()) pickHistory(picked);
    frmPatients().Refresca();
    doubleClickRow(list(), 1);
  }
  void pickHistory(const Strings& items) {
    script.in("frmPickHistory", [items](QWidget& pick) {
      for (const std::string& item : items) tick(listIn(pick), item);
      click(pick, "btnOk");
    });
  }
  // Of the current patient.
  static std::string stored(const char* columns, const char* table = "Patient") {
    return rows(concat("SELECT ", columns, " FROM ", table, " WHERE PatientId=", CurrentPatientId));
  }
  static std::string history() {
    return stored("SicknessCode, SicknessTypeCode", "PatientHistory");
  }
};

TEST_F(PatientEditorTest, ANewPatientWithHistoryOfTwoTypesComesIntoTheList) {
  script.in("frmEditPatient", [&](QWidget& editor) {
    EXPECT_EQ(control<DatePicker>(editor, "DTDOB").value(), now.date);
    type(control<QWidget>(editor, "TxtNames"), "Brown, Cy");
    type(control<QWidget>(editor, "DTDOB"), "2/29/80");
    type(control<QWidget>(editor, "TxtAccount"), "00417");
    choose(editor, "CBSeguros", "Provident");
    click(editor, "Command1");
    EXPECT_EQ(shownTexts(listIn(editor)), (Strings{"Pollen", "Dust"}));
    clickRow(listIn(editor), 1);
    click(editor, "Command2");
    EXPECT_EQ(shownTexts(listIn(editor)), Strings{"Pollen"}) << "never a star on a new row";
    control<ComboBox>(editor, "CBSicknessType").setListIndex(1);
    click(editor, "Command1");
    EXPECT_EQ(patientOpener().LastSicknessTypeCode, 1);
    EXPECT_EQ(shownTexts(listIn(editor)), Strings{"Asthma"});
    click(editor, "btnOk");
  });
  pickHistory({"Pollen", "Dust"});
  pickHistory({"Asthma"});
  list().setFocus();
  QTest::keyClick(&list(), Qt::Key_Insert);
  EXPECT_EQ(CurrentPatientId, 25002);
  EXPECT_EQ(stored("Names, DateOfBirth, AccountNumber, InsuranceCode, InFacilityCode, ZITS"),
            "Brown, Cy|2/29/1980|00417|2|0|null");
  EXPECT_EQ(history(), "1|0 4|1");
  EXPECT_EQ(selectedRows(list()), std::vector<int>{rowOf(list(), "Brown, Cy")});
}

TEST_F(PatientEditorTest, AMarkOutlivesTheChangeOfTypeWithoutItsStar) {
  edit([&](QWidget& editor) {
    clickRow(listIn(editor), 0);
    click(editor, "Command2");
    EXPECT_EQ(listIn(editor).text(0), "*Pollen");
    control<ComboBox>(editor, "CBSicknessType").setListIndex(1);
    EXPECT_EQ(listIn(editor).count(), 0);
    control<ComboBox>(editor, "CBSicknessType").setListIndex(0);
    EXPECT_EQ(listIn(editor).text(0), "Pollen");
    clickRow(listIn(editor), 0);
    click(editor, "Command2");
    EXPECT_EQ(listIn(editor).text(0), "ollen") << "the mark is taken back, with a letter";
    click(editor, "Command2");
    click(editor, "btnOk");
  });
  EXPECT_EQ(history(), "");
}

TEST_F(PatientEditorTest, AHistoryRowThatFailsIsToldAndTheRestIsStored) {
  edit(
      [&](QWidget& editor) {
        click(editor, "Command1");
        EXPECT_EQ(shownTexts(listIn(editor)), (Strings{"Pollen", "Pollen", "Dust"}));
        click(editor, "btnOk");
      },
      {"Pollen", "Dust"});
  EXPECT_EQ(takeMessages(), Strings{"This item is in the medical history already."});
  EXPECT_TRUE(RecordSaved);
  EXPECT_EQ(history(), "1|0 3|0");
}

TEST_F(PatientEditorTest, AMissingBirthdayIsEmptyAndRefusedAndAllStaysInTheDialog) {
  run("UPDATE Patient SET DateOfBirth=NULL WHERE PatientId=25000");
  edit([&](QWidget& editor) {
    RecordSaved = false;
    auto& birth = control<DatePicker>(editor, "DTDOB");
    EXPECT_EQ(birth.text(), "");
    type(line(editor, "TxtNames"), "Smith, Anna");
    line(editor, "TxtAccount").clear();
    clickRow(listIn(editor), 0);
    click(editor, "Command2");
    click(editor, "btnOk");
    EXPECT_EQ(takeMessages(),
              Strings{"The date of birth is missing: please fill in DOB. Nothing was stored."});
    EXPECT_TRUE(editor.isVisible());
    EXPECT_FALSE(RecordSaved);
    EXPECT_TRUE(birth.hasFocus());
    EXPECT_EQ(stored("Names, DateOfBirth, AccountNumber"), "Smith, Ann|null|A1");
    EXPECT_EQ(history(), "1|0");
    letters("061603");  // the day after today's
    press(Qt::Key_Return);
  });
  EXPECT_EQ(stored("Names, DateOfBirth, AccountNumber"), "Smith, Anna|6/16/1903|");
  EXPECT_EQ(history(), "");
}

}  // namespace
}  // namespace bw
