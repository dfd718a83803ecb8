#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "charges/frmCharges.h"
#include "charges/frmEditCharge.h"
#include "core/Principal.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

// A charge from an empty list to the archive of deleted things, through the real windows.
class CaptureTest : public FormsTest {
 protected:
  CaptureTest() {
    for (const char* statement : {
             "INSERT INTO DiagnosisFamily VALUES (2, 'Lungs')",
             "INSERT INTO Diagnosis (DiagnosisCode, Description, DiagnosisFamilyCode) VALUES "
             "(31, 'Asthma', 2), (32, 'Cough', 2)",
             "INSERT INTO Facility VALUES (2, 'Oakhill', 2, 'OI', 'OO')",
             "INSERT INTO EvaluationManagement VALUES "
             "(2, 'Outpatient visit', 1, 2, 2, 'OV', '99212', 1, 1, 2), "
             "(3, 'Care visit', 2, 2, 2, 'CV', '99309', 1, 1, 2)",
             "DELETE FROM PatientCharges",
         })
      run(statement);
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
    EXPECT_EQ(shownTexts(control<ListView>(editor, "ListView1")),
              (std::vector<std::string>{"Asthma", "d1", "d3"}));
    EXPECT_TRUE(selectedRows(control<ListView>(editor, "ListView1")).empty());
    click(editor, "btnOk");
  });
  script.in("frmPickPatient", [](QWidget& pick) {
    EXPECT_EQ(shownTexts(control<ListView>(pick, "ListView1")),
              std::vector<std::string>{"Jones, Bob"});
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

  EXPECT_EQ(charge(), "25001|6/15/2003|1|2|2|3|0|null");
  EXPECT_EQ(diagnoses(), "1 3 31");
  EXPECT_EQ(procedures(), "2 21");
  EXPECT_EQ(shownTexts(list(), 1), std::vector<std::string>{"Jones, Bob"});
  EXPECT_EQ(selectedRows(list()), std::vector<int>{0});

  script.in("frmEditCharge", [&](QWidget& editor) {
    EXPECT_EQ(control<ComboBox>(editor, "CBDoctors").currentText(), "Bell");
    EXPECT_EQ(control<ComboBox>(editor, "CBRefDoctors").currentText(), "Cole");
    EXPECT_EQ(control<ComboBox>(editor, "CBEMCodes").currentText(), "Outpatient visit (OV)");
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
    control<DatePicker>(editor, "DTDOC").setValue(day(2003, 6, 14));
    click(editor, "btnOk");
  });
  doubleClickRow(list(), 0);
  EXPECT_EQ(charge(), "25001|6/14/2003|2|3|2|3|0|null");
  EXPECT_EQ(diagnoses(), "3 31");
  EXPECT_EQ(shownTexts(list(), 4), std::vector<std::string>{"Oakhill"});

  answer(true);
  clickRow(list(), 0);
  trigger(window(), "Eliminar");
  EXPECT_EQ(takeQuestions(),
            std::vector<std::string>{"Are you sure you want to delete the selected Charges?"});
  EXPECT_EQ(count("PatientCharges"), "0");
  EXPECT_EQ(count("ChargeDiagnosis"), "0");
  EXPECT_EQ(list().count(), 0);
}

// The clerk has chosen the patient and stands in the list of charges. The number stands in README.
TEST_F(CaptureTest, FollowUpChargeTakesFewKeys) {
  openMainWindow();
  CurrentPatientId = 25001;
  int keys = 0;
  const auto press = [&](QWidget* target, Qt::Key key, Qt::KeyboardModifiers with = {}) {
    ++keys;
    QTest::keyClick(target, key, with);
  };
  const auto letters = [&](QWidget* target, const QString& text) {
    keys += static_cast<int>(text.size());
    QTest::keyClicks(target, text);
  };
  const auto focus = [] { return QApplication::focusWidget(); };

  script.in("frmEditCharge", [&](QWidget& editor) {
    EXPECT_EQ(focus()->objectName(), "CBFacilities");
    letters(focus(), "oak");
    press(&editor, Qt::Key_O, Qt::AltModifier);
    letters(focus(), "bell");  // the concept follows from facility, status and doctor
    press(&editor, Qt::Key_A, Qt::AltModifier);
  });
  const auto pickOne = [&](const QString& text) {
    return [&, text](QWidget&) {
      letters(focus(), text);
      press(focus(), Qt::Key_Space);
      press(focus(), Qt::Key_Return);
    };
  };
  script.in("frmPickDiagnosis", pickOne("d3"));
  script.in("frmEditCharge", [&](QWidget& editor) { press(&editor, Qt::Key_D, Qt::AltModifier); });
  script.in("frmPickProcedures", pickOne("p2"));
  script.in("frmEditCharge",
            [&](QWidget&) { press(focus(), Qt::Key_Return, Qt::ControlModifier); });
  list().setFocus();
  press(&list(), Qt::Key_Insert);

  EXPECT_EQ(charge(), "25001|6/15/2003|2|3|2|1|0|null");
  EXPECT_EQ(diagnoses(), "3");
  EXPECT_EQ(procedures(), "2");
  EXPECT_LE(keys, 20);
  RecordProperty("keys", keys);
}

TEST_F(CaptureTest, TabGoesDownTheLeftAndThenTheRight) {
  openMainWindow();
  script.in("frmEditCharge", [](QWidget& editor) {
    choose(control<ComboBox>(editor, "CBChargeTypes"), "Outpatient");
    control<QWidget>(editor, "CBFacilities").setFocus();
    std::vector<std::string> stops;
    while (QApplication::focusWidget()->objectName() != "btnOk") {
      const std::string stop = QApplication::focusWidget()->objectName().toStdString();
      if (stops.empty() || stop != stops.back()) stops.push_back(stop);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(stops, (std::vector<std::string>{"CBFacilities", "CBChargeTypes", "Command5",
                                               "CBDoctors", "CBEMCodes", "DTDOC", "CBRefDoctors",
                                               "CBStatus", "ListView1", "Command1", "Command2",
                                               "ListView2", "Command4", "Command3"}));
    QTest::keyClick(&editor, Qt::Key_Escape);
  });
  QTest::mouseClick(&control<QWidget>(window(), "Nuevo"), Qt::LeftButton);
}

TEST_F(CaptureTest, WhatCannotBeStoredStaysInTheDialog) {
  openMainWindow();
  script.in("frmEditCharge", [&](QWidget& editor) {
    choose(control<ComboBox>(editor, "CBChargeTypes"), "Outpatient");
    choose(control<ComboBox>(editor, "CBDoctors"), "Dunn");
    click(editor, "btnOk");  // no patient
    EXPECT_EQ(takeMessages(), std::vector<std::string>{kMissingParent});
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(control<ComboBox>(editor, "CBDoctors").currentText(), "Dunn");
    choose(control<ComboBox>(editor, "CBDoctors"), "Ames");
    choose(control<ComboBox>(editor, "CBChargeTypes"), "Inpatient");
    choose(control<ComboBox>(editor, "CBFacilities"), "Oakhill");  // no concept fits
    click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
    QTest::keyClick(&editor, Qt::Key_Escape);
  });
  RecordSaved = true;
  QTest::mouseClick(&control<QWidget>(window(), "Nuevo"), Qt::LeftButton);
  EXPECT_FALSE(RecordSaved) << "Esc is Cancel";
  EXPECT_EQ(count("PatientCharges"), "0");
}

TEST_F(CaptureTest, AnEmptiedCatalogueShowsItsMessageAndNoDialog) {
  openMainWindow();
  run("DELETE FROM EvaluationManagement");
  trigger(window(), "NewCharge");
  EXPECT_EQ(takeMessages(),
            std::vector<std::string>{"You have to define Evaluation & Management Codes first!"});
  CurrentPatientId = 7;
  run("INSERT INTO EvaluationManagement VALUES (1, 'Visit', 1, 1, 1, 'BV', '99231', 1, 1, 2)");
  trigger(window(), "NewCharge");
  EXPECT_EQ(takeMessages(), std::vector<std::string>{"Error recovering patient information."});
}

TEST_F(CaptureTest, CoveringDoctorsStandBehindTheOthersUnderTheirOwnCode) {
  run("INSERT INTO DoctorCoveringDoctors VALUES (1, 2), (3, 1)");
  openMainWindow();
  script.in("frmEditCharge", [&](QWidget& editor) {
    auto& doctors = control<ComboBox>(editor, "CBDoctors");
    QStringList names;
    for (int i = 0; i < doctors.count(); ++i) names << doctors.itemText(i);
    EXPECT_EQ(names.join('|'), "Ames|Bell|Cole|Dunn|Bell (Covering Ames)|Ames (Covering Cole)");
    choose(control<ComboBox>(editor, "CBChargeTypes"), "Outpatient");
    doctors.setListIndex(5);  // with Cole's attention type
    click(editor, "btnOk");
  });
  CurrentPatientId = 25001;
  trigger(window(), "NewCharge");
  EXPECT_EQ(rows("SELECT DoctorCode FROM PatientCharges"), "1");
}

}  // namespace
}  // namespace bw
