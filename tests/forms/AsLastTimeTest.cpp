#include <fstream>

#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

// Charges that follow others: Jones (25001), no inpatient, was last seen at Oakhill by Garcia, Luis
// (5), who is offered visits; Smith-Jones (25003) lies in St. Joseph under him.
class AsLastTimeTest : public FormsTest {
 protected:
  AsLastTimeTest() {
    seedLife();
    charge(25001, "06/05/2003", "06/11/2003", 2, 2224, 5);
    charge(25001, "06/12/2003", "06/09/2003", 1, 1221, 2);  // entered later, of a day before
    run("INSERT INTO ChargeDiagnosis VALUES (25001, #06/05/2003#, #09:00:00#, 32)");
    run("INSERT INTO ChargeProcedures VALUES (25001, #06/05/2003#, #09:00:00#, 2)");
    openMainWindow();
    CurrentPatientId = 25001;
  }

  static void charge(int patient, const std::string& entered, const std::string& care, int facility,
                     int concept_, int doctor) {
    run(concat("INSERT INTO PatientCharges VALUES (", patient, ", #", entered, "#, #09:00:00#, #",
               care, "#, ", facility, ", ", concept_, ", ", doctor, ", 3, 3, NULL)"));
  }

  static std::string stored() {
    return rows(
        "SELECT PatientId, ChargeRealDate, FacilityCode, EMCode, DoctorCode, ReferDoctorCode, "
        "Status FROM PatientCharges WHERE ChargeDate = #06/15/2003#");
  }
  static std::string details(const std::string& table) {
    return rows("SELECT " + table.substr(6, 9) + "Code FROM " + table +
                " WHERE ChargeDate = #06/15/2003#");
  }

  void press(Qt::Key key, Qt::KeyboardModifiers with = {}) {
    ++keys_;
    bw::press(key, with);
  }
  void letters(const QString& text) {
    keys_ += static_cast<int>(text.size());
    bw::letters(text);
  }
  void pick(const char* window, const QString& text) {
    script.in(window, [this, text](QWidget&) {
      letters(text);
      press(Qt::Key_Return);
    });
  }
  // In a new charge; its window is to be left by the step.
  void inCharge(const ModalScript::Step& step) {
    script.in("frmEditCharge", step);
    ++keys_;
    QTest::keyClick(&list(), Qt::Key_Insert);
  }

  int keys_ = 0;
};

// The clerk has chosen the patient and stands in the list of charges.
TEST_F(AsLastTimeTest, AFollowUpChargeTakesAsManyKeysAsTheReadmeSays) {
  script.in("frmEditCharge", [&](QWidget&) {
    letters("oak");
    press(Qt::Key_O, Qt::AltModifier);
    letters("bell");
    press(Qt::Key_M, Qt::AltModifier);  // the usual one of six concepts
    for (int i = 0; i < 3; ++i) press(Qt::Key_Down);
    press(Qt::Key_A, Qt::AltModifier);
  });
  pick("frmPickDiagnosis", "d3");
  script.in("frmEditCharge", [&](QWidget&) { press(Qt::Key_D, Qt::AltModifier); });
  pick("frmPickProcedures", "p2");
  inCharge([&](QWidget&) { press(Qt::Key_Return, Qt::ControlModifier); });
  EXPECT_EQ(stored(), "25001|6/15/2003|2|2224|2|1|0");
  EXPECT_EQ(details("ChargeDiagnosis") + "," + details("ChargeProcedures"), "3,2");
  for (const QString& file :
       {QFINDTESTDATA("../../README.md"), QFINDTESTDATA("../../docs/guide.md")}) {
    std::ifstream in(file.toStdString());
    const std::string text(std::istreambuf_iterator<char>(in), {});
    EXPECT_NE(text.find(std::to_string(keys_) + " keys"), std::string::npos)
        << file.toStdString() << keys_;
  }
}

TEST_F(AsLastTimeTest, ThreeKeysRepeatTheLatestCharge) {
  inCharge([&](QWidget&) {
    takeStatements();
    press(Qt::Key_F9);
    for (const std::string& statement : takeStatements())
      EXPECT_TRUE(fold(statement).starts_with("select")) << statement;
    press(Qt::Key_F9);  // adds no diagnosis twice
    --keys_;
    press(Qt::Key_Return, Qt::ControlModifier);
  });
  EXPECT_EQ(stored(), "25001|6/15/2003|2|2224|5|3|0");
  EXPECT_EQ(details("ChargeDiagnosis") + "," + details("ChargeProcedures"), "32,2");
  EXPECT_EQ(keys_, 3);
}

// Garcia himself has no consults to give. As the one who covers for Luisa he has hers.
TEST_F(AsLastTimeTest, ACoveringEntryIsTakenWhenItAloneOffersTheConcept) {
  run("INSERT INTO PatientDoctors VALUES (25003, 6, 1, 1)");
  run("UPDATE PatientCharges SET EMCode = 2214 WHERE EMCode = 2224");
  inCharge([&](QWidget& editor) {
    press(Qt::Key_F9);
    EXPECT_EQ(chosen(editor, "CBDoctors"), "Garcia, Luis (Covering Garcia, Luisa M.)");
    EXPECT_EQ(hintIn(editor), "");
    press(Qt::Key_Return, Qt::ControlModifier);
  });
  EXPECT_EQ(stored(), "25001|6/15/2003|2|2214|5|3|0");
}

TEST_F(AsLastTimeTest, AConceptThatIsNotOfferedStopsOkOnceWithItsName) {
  run("UPDATE PatientCharges SET EMCode = 2214 WHERE EMCode = 2224");
  inCharge([&](QWidget& editor) {
    press(Qt::Key_F9);
    const std::string told =
        "Last time: Care home outpatient consult, daily (E2214-012345). Garcia, Luis is not "
        "offered it here.\nNow: Care home outpatient visit, first, short (E2221-0123). Please "
        "check it.";
    EXPECT_EQ(hintIn(editor), told);
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(hintIn(editor), told);
    ASSERT_TRUE(editor.isVisible()) << "a wrong concept must not pass with the third key";
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "CBEMCodes");
    press(Qt::Key_Return, Qt::ControlModifier);
  });
  EXPECT_EQ(stored(), "25001|6/15/2003|2|2221|5|3|0");
  run("DELETE FROM PatientCharges WHERE ChargeDate = #06/15/2003#");
  inCharge([&](QWidget& editor) {
    press(Qt::Key_F9);
    press(Qt::Key_M, Qt::AltModifier);
    press(Qt::Key_Down);
    EXPECT_EQ(hintIn(editor), "") << "chosen by the user";
    press(Qt::Key_Return, Qt::ControlModifier);
  });
  EXPECT_EQ(stored(), "25001|6/15/2003|2|2222|5|3|0");
}

// The referring doctor of an inpatient is out of sight: never the first of the catalogue.
TEST_F(AsLastTimeTest, TheReferringDoctorOfAnInpatientIsThatOfTheAdmission) {
  charge(25003, "06/10/2003", "06/10/2003", 3, 1124, 8);
  CurrentPatientId = 25003;
  const auto again = [&](QWidget&) {
    press(Qt::Key_F9);
    press(Qt::Key_Return, Qt::ControlModifier);
  };
  inCharge(again);
  EXPECT_EQ(stored(), "25003|6/15/2003|3|1124|8|5|0");
  run("DELETE FROM PatientCharges WHERE ChargeDate = #06/15/2003#");
  run("UPDATE Patient SET InFacilityCode=0, InWardCode=0, InDoctorCode=0 WHERE PatientId=25003");
  inCharge(again);
  EXPECT_EQ(stored(), "25003|6/15/2003|3|1124|8|3|0") << "discharged: as the charge had it";
}

TEST_F(AsLastTimeTest, WhereNothingCanBeTakenOverAHintSaysWhy) {
  const auto told = [&](std::int16_t patient, const std::string& hint) {
    CurrentPatientId = patient;
    inCharge([&](QWidget& editor) {
      if (patient == 25001) {  // another station
        run("INSERT INTO Facility VALUES (9, 'New', 2, '', '')");
        charge(25001, "06/13/2003", "06/13/2003", 9, 2224, 5);
      }
      press(Qt::Key_F9);
      EXPECT_EQ(hintIn(editor), hint);
      EXPECT_EQ(control<ComboBox>(editor, "CBFacilities").ListIndex(), 0);
      press(Qt::Key_Escape);
    });
  };
  told(0, "Choose the patient first: Alt+P. F9 then fills in his last charge.");
  told(25005, "This patient has no charge yet: fill in the fields.");
  told(25001,
       "The last charge names a facility or doctor entered meanwhile:\n"
       "Cancel, and begin the charge anew.");
  script.in("frmEditCharge", [&](QWidget& editor) {
    press(Qt::Key_F9);
    EXPECT_EQ(hintIn(editor), "F9 fills in new charges only.");
    press(Qt::Key_Escape);
  });
  click(frmCharges(), "optAllDates");
  doubleClickRow(list(), 0);
}

}  // namespace
}  // namespace bw
