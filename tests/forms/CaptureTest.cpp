#include <QLineEdit>
#include <QTest>

#include "charges/frmCharges.h"
#include "core/Principal.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

// A charge from an empty list to the archive of deleted things, through the real windows.
class CaptureTest : public FormsTest {
 protected:
  CaptureTest() {
    seedLife();
    run("DELETE FROM PatientCharges");
  }

  ListView& list() { return control<ListView>(frmCharges(), "ListView1"); }
  std::string charge() {
    return rows(
        "SELECT PatientId, ChargeRealDate, FacilityCode, EMCode, DoctorCode, ReferDoctorCode, "
        "Status, PrintLot FROM PatientCharges");
  }
  std::string diagnoses() { return rows("SELECT DiagnosisCode FROM ChargeDiagnosis"); }
  std::string procedures() { return rows("SELECT ProcedureCode FROM ChargeProcedures"); }
};

TEST_F(CaptureTest, ByMouseNewChangedDeletedAndStillThereAfterARestart) {
  openMainWindow();
  script.in("frmEditCharge", [&](QWidget& editor) {
    EXPECT_EQ(control<QLineEdit>(editor, "TxtPatient").text(), "Select a Patient");
    // Before the patient: each new status begins the list of doctors anew.
    choose(control<ComboBox>(editor, "CBChargeTypes"), "Outpatient");
    click(editor, "Command5");
    choose(control<ComboBox>(editor, "CBDoctors"), "Bell");
    choose(control<ComboBox>(editor, "CBRefDoctors"), "Cole");
    click(editor, "Command1");
    click(editor, "Command4");
    EXPECT_EQ(shownTexts(control<ListView>(editor, "ListView1")), (Strings{"Asthma", "d1", "d3"}));
    EXPECT_TRUE(selectedRows(control<ListView>(editor, "ListView1")).empty());
    click(editor, "btnOk");
  });
  script.in("frmPickPatient", [](QWidget& pick) {
    EXPECT_EQ(shownTexts(control<ListView>(pick, "ListView1")),
              (Strings{"Jones, Bob", "Smith, Anna Lee", "St. Clair, Kay"}));
    click(pick, "btnOk");
  });
  script.in("frmPickDiagnosis", [](QWidget& pick) {
    auto& catalogue = control<ListView>(pick, "ListView1");
    tick(catalogue, "d1");
    tick(catalogue, "d3");
    choose(control<ComboBox>(pick, "CBDiagnosisFamilies"), "Lungs");
    tick(catalogue, "Asthma");
    choose(control<ComboBox>(pick, "CBDiagnosisFamilies"), "Heart");
    EXPECT_TRUE(catalogue.checked(0)) << "a tick must survive a change of group";
    click(pick, "btnOk");
  });
  script.in("frmPickProcedures", [](QWidget& pick) {
    tick(control<ListView>(pick, "ListView1"), "p2");
    tick(control<ListView>(pick, "ListView1"), "p21");
    click(pick, "btnOk");
  });
  QTest::mouseClick(&control<QWidget>(window(), "Nuevo"), Qt::LeftButton);

  EXPECT_EQ(charge(), "25001|6/15/2003|1|1221|2|3|0|null");
  EXPECT_EQ(diagnoses(), "1 3 31");
  EXPECT_EQ(procedures(), "2 21");
  EXPECT_EQ(shownTexts(list(), 1), Strings{"Jones, Bob"});
  EXPECT_EQ(selectedRows(list()), std::vector<int>{0});

  script.in("frmEditCharge", [&](QWidget& editor) {
    EXPECT_EQ(control<ComboBox>(editor, "CBDoctors").currentText(), "Bell");
    EXPECT_EQ(control<ComboBox>(editor, "CBRefDoctors").currentText(), "Cole");
    EXPECT_EQ(control<ComboBox>(editor, "CBEMCodes").currentText(),
              "Hospital outpatient visit, first, short (E1221-012)");
    EXPECT_FALSE(control<QWidget>(editor, "Command5").isVisible());
    auto& marked = control<ListView>(editor, "ListView1");
    clickRow(marked, 0);
    click(editor, "Command2");
    EXPECT_EQ(marked.text(0), "*d1");
    clickRow(marked, 1);
    click(editor, "Command2");
    click(editor, "Command2");
    EXPECT_EQ(marked.text(1), "d3") << "a second del takes the mark back";
    choose(control<ComboBox>(editor, "CBFacilities"), "Oakhill");
    auto& date = control<DatePicker>(editor, "DTDOC");
    type(date, "14/6/2003");
    QTest::keyClick(&date, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(charge(), "25001|6/15/2003|1|1221|2|3|0|null") << "no date is stored for another";
    type(date, "6/14/03");
    QTest::keyClick(&date, Qt::Key_Return, Qt::ControlModifier);
  });
  doubleClickRow(list(), 0);
  EXPECT_EQ(charge(), "25001|6/14/2003|2|2111|2|3|0|null");
  EXPECT_EQ(diagnoses(), "3 31");
  EXPECT_EQ(shownTexts(list(), 4), Strings{"Oakhill"});

  answer(true);
  clickRow(list(), 0);
  trigger(window(), "Eliminar");
  EXPECT_EQ(takeQuestions(), Strings{"Are you sure you want to delete the selected Charges?"});
  EXPECT_EQ(count("PatientCharges"), "0");
  EXPECT_EQ(count("ChargeDiagnosis"), "0");
  EXPECT_EQ(list().count(), 0);
}

TEST_F(CaptureTest, AnInpatientWhoIsPickedBringsTheDoctorOfHisAdmission) {
  openMainWindow();
  script.in("frmEditCharge", [](QWidget& editor) {
    choose(control<ComboBox>(editor, "CBChargeTypes"), "Inpatient");
    choose(control<ComboBox>(editor, "CBFacilities"), "St. Joseph Hospital");
    click(editor, "Command5");
    EXPECT_EQ(control<QLineEdit>(editor, "TxtPatient").text(), "Smith-Jones, Al");
    click(editor, "btnOk");
  });
  script.in("frmPickPatient", [](QWidget& pick) { click(pick, "btnOk"); });
  trigger(window(), "NewCharge");
  EXPECT_EQ(rows("SELECT FacilityCode, ReferDoctorCode FROM PatientCharges"), "3|5");
}

TEST_F(CaptureTest, WhatCannotBeStoredStaysInTheDialog) {
  run("INSERT INTO Facility VALUES (7, 'At home', 3, '', '')");
  openMainWindow();
  script.in("frmEditCharge", [&](QWidget& editor) {
    choose(control<ComboBox>(editor, "CBChargeTypes"), "Outpatient");
    choose(control<ComboBox>(editor, "CBDoctors"), "Dunn");
    click(editor, "btnOk");  // no patient
    EXPECT_EQ(takeMessages(),
              Strings{withAdvice(kMissingParent, "Choose the patient first: Alt+P.")});
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(control<ComboBox>(editor, "CBDoctors").currentText(), "Dunn");
    choose(control<ComboBox>(editor, "CBChargeTypes"), "Inpatient");
    choose(control<ComboBox>(editor, "CBFacilities"), "At home");  // no concept fits
    click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
    QTest::keyClick(&editor, Qt::Key_Escape);
  });
  RecordSaved = true;
  QTest::mouseClick(&control<QWidget>(window(), "Nuevo"), Qt::LeftButton);
  EXPECT_FALSE(RecordSaved) << "Esc is Cancel";
  EXPECT_EQ(count("PatientCharges"), "0");
}

TEST_F(CaptureTest, ADoubledDiagnosisIsNamed) {
  openMainWindow();
  CurrentPatientId = 25001;
  const auto asthma = [](QWidget& pick) {
    choose(control<ComboBox>(pick, "CBDiagnosisFamilies"), "Lungs");
    tick(control<ListView>(pick, "ListView1"), "Asthma");
    click(pick, "btnOk");
  };
  script.in("frmEditCharge", [&](QWidget& editor) {
    click(editor, "Command1");
    click(editor, "Command1");
    click(editor, "btnOk");
    EXPECT_EQ(takeMessages(),
              Strings{withAdvice(
                  kDuplicateKey,
                  "Asthma stands twice in the list. Take it out once with del, then press Ok.")});
    ASSERT_TRUE(editor.isVisible());
    clickRow(control<ListView>(editor, "ListView1"), 1);
    click(editor, "Command2");
    click(editor, "btnOk");
  });
  for (int i = 0; i < 2; ++i) script.in("frmPickDiagnosis", asthma);
  trigger(window(), "NewCharge");
  EXPECT_EQ(diagnoses(), "31");
}

// Their coverage is read once while the editor is open: no more statements for a thousand doctors.
TEST_F(CaptureTest, CoveringDoctorsStandBehindTheOthersUnderTheirOwnCode) {
  openMainWindow();
  CurrentPatientId = 25001;
  takeStatements();
  script.in("frmEditCharge", [&](QWidget& editor) {
    EXPECT_LE(takeStatements().size(), 12U);
    run("UPDATE Doctors SET Description = 'Ames-Bell' WHERE DoctorCode = 1");
    takeStatements();
    choose(control<ComboBox>(editor, "CBChargeTypes"), "Inpatient");
    EXPECT_EQ(takeStatements(), Strings{"select * from DoctorsDescriptive"});
    auto& doctors = control<ComboBox>(editor, "CBDoctors");
    QStringList names;
    for (int i = 10; i < doctors.count(); ++i) names << doctors.itemText(i);
    EXPECT_EQ(names.join('|').toStdString(),
              "Bell (Covering Ames-Bell)|Ames (Covering Cole)|"
              "Garcia, Luisa M. (Covering Garcia, Luis)|Garcia, Luis (Covering Garcia, Luisa M.)");
    doctors.setListIndex(11);  // with Cole's attention type
    click(editor, "btnOk");
  });
  trigger(window(), "NewCharge");
  EXPECT_EQ(rows("SELECT DoctorCode FROM PatientCharges"), "1");
}

}  // namespace
}  // namespace bw
