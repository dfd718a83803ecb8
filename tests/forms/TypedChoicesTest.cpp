#include "picks/PickDialogs.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

// What is typed into the windows of an office with shared names and names of many words.
class TypedChoicesTest : public FormsTest {
 protected:
  TypedChoicesTest() {
    for (const char* statement :
         {"INSERT INTO DiagnosisFamily VALUES (2, 'Lungs'), (3, 'Bones'), (4, 'None yet')",
          "INSERT INTO Diagnosis (DiagnosisCode, Description, DiagnosisFamilyCode, "
          "RealDiagnosisCode) VALUES (31, 'Asthma', 2, 'J45'), (32, 'Cough', 2, 'R05'), "
          "(33, 'Old fracture', 1, 'Z87'), (34, 'Fracture of rib', 3, 'S22'), "
          "(35, 'Fracture of hand', 3, 'S62'), (36, 'Fracture of hand', 3, 'S62.9')",
          "INSERT INTO Facility VALUES (4, 'Oakhill', 1, 'N', ''), (5, 'Oakhill', 1, 'S', '')",
          "INSERT INTO Doctors VALUES (6, 'Smith, Ann', 'S6'), (7, 'Smith, Ann', 'S7')",
          "INSERT INTO DoctorCoveringDoctors VALUES (6, 1), (7, 1)",
          "INSERT INTO Patient (PatientId, Names, DateOfBirth, AccountNumber, InsuranceCode) "
          "VALUES (25002, 'Jones, Bob', #1961/12/31#, 'A3', 1), "
          "(25003, 'O’Hara, Mary Ann', NULL, '', 1)"})
      run(statement);
    openMainWindow();
  }
};

TEST_F(TypedChoicesTest, TwoWhomOneDoctorCoversAreToldApart) {
  script.in("frmEditCharge", [&](QWidget& editor) {
    const auto& doctors = control<ComboBox>(editor, "CBDoctors");
    QStringList marks;
    for (int i = 0; i < doctors.count(); ++i)
      if (!doctors.mark(i).isEmpty()) marks << doctors.itemText(i) + ": " + doctors.mark(i);
    EXPECT_EQ(fromQt(marks.join(" | ")),
              "Smith, Ann: S6, 6 | Smith, Ann: S7, 7 | "
              "Ames (Covering Smith, Ann): A, 1 for S6, 6 | "
              "Ames (Covering Smith, Ann): A, 1 for S7, 7");
    EXPECT_EQ(control<ComboBox>(editor, "CBFacilities").mark(2), "S, 5");
    takeStatements();
    choose(editor, "CBChargeTypes", "Inpatient");
    EXPECT_EQ(takeStatements(), Strings{"select * from DoctorsDescriptive"})
        << "who covers is read once";
    press(Qt::Key_O, Qt::AltModifier);
    letters("ames (covering");
    EXPECT_EQ(doctors.ListIndex(), 6);
    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
  });
  CurrentPatientId = 25001;
  click(window(), "Nuevo");
}

TEST_F(TypedChoicesTest, WhatTheGroupDoesNotHoldIsFoundInTheNextOnesAndEscGoesBack) {
  script.in("frmPickDiagnosis", [&](QWidget& dialog) {
    const auto& group = control<ComboBox>(dialog, "CBDiagnosisFamilies");
    ListView& list = listIn(dialog);
    const auto found = [&] {
      const auto row = list.selectedItem();
      return row ? group.currentText() + ": " + list.words(*row) : group.currentText();
    };
    letters("fract");
    EXPECT_EQ(found(), "Heart: Old fracture") << "the group on show goes first";
    letters("ure of h");
    EXPECT_EQ(found(), "Bones: Fracture of hand, S62");
    EXPECT_TRUE(hintIn(dialog).starts_with("Find: fracture of h in Bones (S62; F3 goes on)"));
    press(Qt::Key_F3);
    EXPECT_EQ(found(), "Bones: Fracture of hand, S62.9");
    for (int i = 0; i < 5; ++i) press(Qt::Key_Backspace);
    press(Qt::Key_F3);
    EXPECT_EQ(found(), "Bones: Fracture of hand, S62") << "behind the group come the next ones";
    press(Qt::Key_Escape);
    EXPECT_EQ(found(), "Heart");
    letters("asthq");
    EXPECT_TRUE(hintIn(dialog).find("no such row") != std::string::npos);
    press(Qt::Key_Backspace);
    press(Qt::Key_Insert);
    EXPECT_EQ(found(), "Lungs: Asthma") << "stays where it was ticked";
    letters("old fr");
    EXPECT_EQ(found(), "Heart: Old fracture") << "behind the last group comes the first one";
    press(Qt::Key_Escape);
    letters("fracture of h");
    press(Qt::Key_Insert);
    choose(dialog, "CBDiagnosisFamilies", "None yet");
    EXPECT_EQ(label(dialog, "LblTicked"), "2 ticked: Asthma, Fracture of hand (S62)");
    list.setFocus();
    letters("cou");
    press(Qt::Key_Return);
  });
  frmPickDiagnosis().showModal();
  const std::string& answer = chargeOpener().PickResult;
  EXPECT_EQ(answer.substr(0, 5) + answer.substr(45, 5) + answer.substr(90, 5), "000310003200035");
}

TEST_F(TypedChoicesTest, NoPatientIsTakenWhomTheTextDoesNotName) {
  EditChargeTypeCode = 2;
  PickedPatientId = 25001;
  script.in("frmPickPatient", [&](QWidget& dialog) {
    EXPECT_EQ(label(dialog, "LblTaken"), "Ok takes: Jones, Bob, 12/31/1961, A2, 25001");
    letters("o'hara, b");
    EXPECT_EQ(label(dialog, "LblTaken"), "Nothing is selected");
    press(Qt::Key_Return);  // does nothing, while Ok tells
    click(dialog, "btnOk");
    EXPECT_EQ(takeMessages(), Strings{"Select a Patiente first"});
    listIn(dialog).setFocus();
    letters("o'hara, m");
    EXPECT_EQ(label(dialog, "LblTaken"), "Ok takes: O’Hara, Mary Ann");
    press(Qt::Key_Return);
  });
  frmPickPatient().showModal();
  EXPECT_EQ(PickedPatientId, 25003);
}

}  // namespace
}  // namespace bw
