#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

// A charge through the real windows, and what its editor says when it cannot be stored.
class CaptureTest : public FormsTest {
 protected:
  CaptureTest() {
    seedLife();
    run("DELETE FROM PatientCharges");
    openMainWindow();
  }

  static std::string charge() {
    return rows(
        "SELECT PatientId, ChargeRealDate, FacilityCode, EMCode, DoctorCode, ReferDoctorCode, "
        "Status, PrintLot FROM PatientCharges");
  }
  static std::string diagnoses() { return rows("SELECT DiagnosisCode FROM ChargeDiagnosis"); }
};

TEST_F(CaptureTest, ByMouseNewAndChanged) {
  script.in("frmEditCharge", [&](QWidget& editor) {
    // Before the patient: each new status begins the list of doctors anew.
    choose(editor, "CBChargeTypes", "Outpatient");
    click(editor, "Command5");
    choose(editor, "CBDoctors", "Bell");
    choose(editor, "CBRefDoctors", "Cole");
    click(editor, "Command1");
    click(editor, "Command4");
    EXPECT_EQ(shownTexts(listIn(editor)), (Strings{"Asthma", "d1", "d3"}));
    click(editor, "btnOk");
  });
  script.in("frmPickPatient", [](QWidget& pick) {
    EXPECT_EQ(shownTexts(listIn(pick)),
              (Strings{"Jones, Bob", "Smith, Anna Lee", "St. Clair, Kay"}));
    click(pick, "btnOk");
  });
  script.in("frmPickDiagnosis", [](QWidget& pick) {
    ListView& catalogue = listIn(pick);
    tick(catalogue, "d1");
    tick(catalogue, "d3");
    choose(pick, "CBDiagnosisFamilies", "Lungs");
    tick(catalogue, "Asthma");
    choose(pick, "CBDiagnosisFamilies", "Heart");
    click(pick, "btnOk");
  });
  script.in("frmPickProcedures", [](QWidget& pick) {
    tick(listIn(pick), "p2");
    tick(listIn(pick), "p21");
    click(pick, "btnOk");
  });
  click(window(), "Nuevo");

  EXPECT_EQ(charge(), "25001|6/15/2003|1|1221|2|3|0|null");
  EXPECT_EQ(diagnoses(), "1 3 31");
  EXPECT_EQ(rows("SELECT ProcedureCode FROM ChargeProcedures"), "2 21");
  EXPECT_EQ(shownTexts(list(), 1), Strings{"Jones, Bob"});

  script.in("frmEditCharge", [&](QWidget& editor) {
    EXPECT_EQ(chosen(editor, "CBDoctors"), "Bell");
    EXPECT_EQ(chosen(editor, "CBRefDoctors"), "Cole");
    EXPECT_EQ(chosen(editor, "CBEMCodes"), "Hospital outpatient visit, first, short (E1221-012)");
    EXPECT_FALSE(control<QWidget>(editor, "Command5").isVisible());
    clickRow(listIn(editor), 0);
    click(editor, "Command2");
    choose(editor, "CBFacilities", "Oakhill");
    auto& date = control<DatePicker>(editor, "DTDOC");
    type(date, "6/14/03");
    QTest::keyClick(&date, Qt::Key_Return, Qt::ControlModifier);
  });
  doubleClickRow(list(), 0);
  EXPECT_EQ(charge(), "25001|6/14/2003|2|2111|2|3|0|null");
  EXPECT_EQ(diagnoses(), "3 31");
  EXPECT_EQ(shownTexts(list(), 4), Strings{"Oakhill"});
}

TEST_F(CaptureTest, AnInpatientWhoIsPickedBringsTheDoctorOfHisAdmission) {
  script.in("frmEditCharge", [](QWidget& editor) {
    choose(editor, "CBChargeTypes", "Inpatient");
    choose(editor, "CBFacilities", "St. Joseph Hospital");
    click(editor, "Command5");
    EXPECT_EQ(line(editor, "TxtPatient").text(), "Smith-Jones, Al");
    click(editor, "btnOk");
  });
  script.in("frmPickPatient", [](QWidget& pick) { click(pick, "btnOk"); });
  trigger(window(), "NewCharge");
  EXPECT_EQ(rows("SELECT FacilityCode, ReferDoctorCode FROM PatientCharges"), "3|5");
}

TEST_F(CaptureTest, WhatIsRefusedIsToldWithWhatToDoAndStaysInTheDialog) {
  CurrentPatientId = 25001;
  script.in("frmEditCharge", [](QWidget& editor) { click(editor, "btnOk"); });
  click(window(), "Nuevo");
  const auto refused = [&](QWidget& editor, const char* text, const char* advice) {
    click(editor, "btnOk");
    EXPECT_EQ(takeMessages(), Strings{withAdvice(text, advice)});
    ASSERT_TRUE(editor.isVisible());
    EXPECT_EQ(chosen(editor, "CBDoctors"), "Dunn");
  };
  script.in("frmEditCharge", [&](QWidget& editor) {
    choose(editor, "CBChargeTypes", "Outpatient");
    choose(editor, "CBDoctors", "Dunn");
    refused(editor, kMissingParent, "Choose the patient first: Alt+P.");
    click(editor, "Command5");
    choose(editor, "CBDoctors", "Dunn");
    now.time.second += 1;
    for (int i = 0; i < 2; ++i) click(editor, "Command1");
    refused(editor, kDuplicateKey,
            "Asthma stands twice in the list. Take it out once with del, then press Ok.");
    clickRow(listIn(editor), 1);
    click(editor, "Command2");
    now.time.second -= 1;
    refused(editor, kDuplicateKey,
            "Another charge of this patient was entered in this second. Press Ok again.");
    now.time.second += 1;
    click(editor, "btnOk");
  });
  script.in("frmPickPatient", picks("Jones, Bob"));
  for (int i = 0; i < 2; ++i)
    script.in("frmPickDiagnosis", [](QWidget& pick) {
      choose(pick, "CBDiagnosisFamilies", "Lungs");
      tick(listIn(pick), "Asthma");
      click(pick, "btnOk");
    });
  CurrentPatientId = 0;
  click(window(), "Nuevo");
  EXPECT_EQ(count("PatientCharges"), "2");
  EXPECT_EQ(diagnoses(), "31");
}

TEST_F(CaptureTest, WithoutAConceptThatFitsOkDoesNothingAndEscIsCancel) {
  run("INSERT INTO Facility VALUES (7, 'At home', 3, '', '')");
  script.in("frmEditCharge", [](QWidget& editor) {
    choose(editor, "CBFacilities", "At home");
    click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
    QTest::keyClick(&editor, Qt::Key_Escape);
  });
  RecordSaved = true;
  click(window(), "Nuevo");
  EXPECT_FALSE(RecordSaved);
}

}  // namespace
}  // namespace bw
