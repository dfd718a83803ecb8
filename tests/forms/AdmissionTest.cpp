#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "core/Principal.h"
#include "patients/frmAdmitPatient.h"
#include "patients/frmDischargePatient.h"
#include "tests/forms/FormsFixture.h"
#include "tests/server/TestDatabase.h"

namespace bw {
namespace {

// Facility 1 with ward 1, facility 2 with wards 2 and 3, facility 3 without. Patient 25000 lies in
// ward 1 under doctor 1, who visits him; 25001 is not admitted.
class AdmissionTest : public FormsTest {
 protected:
  AdmissionTest() {
    run("INSERT INTO Facility VALUES (2, 'Oakhill', 2, '', ''), (3, 'Empty', 2, '', '')");
    run("INSERT INTO FacilityWards (WardCode, FacilityCode, Description) VALUES "
        "(2, 2, 'North'), (3, 2, 'South')");
  }

  // Each of the visitors answers one "add".
  void admit(std::int16_t patient, const ModalScript::Step& step,
             const std::vector<ModalScript::Step>& visitors = {}) {
    CurrentPatientId = patient;
    script.in("frmAdmitPatient", step);
    for (const ModalScript::Step& visitor : visitors) script.in("frmAdmitPatientDoctors", visitor);
    frmAdmitPatient().showModal();
  }
  static ModalScript::Step visitor(const QString& doctor, int type, int frequency) {
    return [=](QWidget& pick) {
      choose(control<ComboBox>(pick, "CBDoctors"), doctor);
      control<ComboBox>(pick, "CBAttentionTypes").setListIndex(type);
      control<ComboBox>(pick, "CBFrequency").setListIndex(frequency);
      click(pick, "OKButton");
    };
  }
  static ListView& visitors(const QWidget& dialog) {
    return control<ListView>(dialog, "ListView1");
  }
  static std::string shown(const QWidget& dialog, const char* box) {
    return control<ComboBox>(dialog, box).currentText().toStdString();
  }
  static std::string placement(int patient) {
    return rows(
        "SELECT InFacilityCode, InWardCode, InDoctorCode, LastChargeDate FROM Patient "
        "WHERE PatientId=" +
        std::to_string(patient));
  }
  static std::string visitorsOf(int patient) {
    return rows(
        "SELECT DoctorCode, AttentionTypeCode, Frequency FROM PatientDoctors "
        "WHERE PatientId=" +
        std::to_string(patient));
  }
};

TEST_F(AdmissionTest, TheWardIsKeptOnlyByItsOwnFacility) {
  admit(25000, [&](QWidget& dialog) {
    auto& facilities = control<ComboBox>(dialog, "CBFacilities");
    EXPECT_EQ(control<QLineEdit>(dialog, "TxtPatient").text(), "Smith, Ann");
    EXPECT_TRUE(control<QLineEdit>(dialog, "TxtPatient").isReadOnly());
    EXPECT_TRUE(selectedRows(visitors(dialog)).empty());
    choose(facilities, "Oakhill");
    EXPECT_EQ(shown(dialog, "CBFacilityWards"), "North");
    choose(facilities, "Empty");
    EXPECT_EQ(control<ComboBox>(dialog, "CBFacilityWards").ListIndex(), -1);
    takeStatements();
    click(dialog, "OKButton");  // no ward: nothing happens, without a word
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(takeStatements(), Strings{});
    choose(facilities, "General");
    EXPECT_EQ(shown(dialog, "CBFacilityWards"), "East");
    choose(facilities, "Oakhill");
    choose(control<ComboBox>(dialog, "CBFacilityWards"), "South");
    click(dialog, "OKButton");
  });
  EXPECT_EQ(placement(25000), "2|3|1|null");
  EXPECT_EQ(visitorsOf(25000), "1|1|1");
  admit(25000, [&](QWidget& dialog) {
    EXPECT_EQ(shown(dialog, "CBFacilities") + shown(dialog, "CBFacilityWards"), "OakhillSouth");
    click(dialog, "CancelButton");
  });
  EXPECT_EQ(CurrentFacilityCode, 2);
  EXPECT_EQ(CurrentWardCode, 3);
}

TEST_F(AdmissionTest, TheAttendingDoctorBecomesAVisitorAndAllGoInOneWalk) {
  admit(25001,
        [&](QWidget& dialog) {
          EXPECT_EQ(shown(dialog, "CBFacilities") + shown(dialog, "CBDoctors"), "GeneralAmes");
          click(dialog, "Command1");
          EXPECT_EQ(shownTexts(visitors(dialog)), Strings{"Cole"});
          EXPECT_TRUE(selectedRows(visitors(dialog)).empty());
          click(dialog, "Command1");
          clickRow(visitors(dialog), 1);
          click(dialog, "Command2");  // added and taken out again
          choose(control<ComboBox>(dialog, "CBDoctors"), "Bell");
          click(dialog, "OKButton");
        },
        {visitor("Cole", 1, 2), visitor("Dunn", 0, 1)});
  EXPECT_EQ(visitorsOf(25001), "2|1|1 3|2|3");
}

TEST_F(AdmissionTest, AMarkedAttendingDoctorGoesAndADoubledVisitorIsTold) {
  admit(25000,
        [&](QWidget& dialog) {
          visitors(dialog).setFocus();
          clickRow(visitors(dialog), 0);
          QTest::keyClick(&visitors(dialog), Qt::Key_Delete);
          EXPECT_EQ(visitors(dialog).text(0), "*Ames");
          click(dialog, "Command2");
          EXPECT_EQ(visitors(dialog).text(0), "Ames");
          click(dialog, "Command1");
          click(dialog, "OKButton");
        },
        {visitor("Ames", 1, 1)});
  EXPECT_EQ(takeMessages(), Strings{"This doctor is among the visiting doctors already."});
  EXPECT_EQ(visitorsOf(25000), "1|1|1");
  admit(25000, [&](QWidget& dialog) {
    clickRow(visitors(dialog), 0);
    click(dialog, "Command2");
    click(dialog, "OKButton");
  });
  EXPECT_EQ(visitorsOf(25000), "") << "marked, he counted as present";
  EXPECT_EQ(placement(25000), "1|1|1|null");
}

TEST_F(AdmissionTest, WhatIsRefusedKeepsTheDialogAndTouchesNoVisitor) {
  admit(25001,
        [&](QWidget& dialog) {
          choose(control<ComboBox>(dialog, "CBFacilities"), "Oakhill");
          click(dialog, "Command1");
          run("DELETE FROM FacilityWards WHERE WardCode=2");  // another station
          click(dialog, "OKButton");
          EXPECT_EQ(takeMessages(),
                    Strings{"This record cannot be stored: its ward does not exist."});
          EXPECT_TRUE(dialog.isVisible());
          EXPECT_EQ(visitorsOf(25001), "");
          choose(control<ComboBox>(dialog, "CBFacilityWards"), "South");
          onStatement = [](std::string_view statement) {
            if (statement.starts_with("INSERT INTO PatientDoctors"))
              throw RuntimeError(ErrorNumber::database, "locked");
          };
          click(dialog, "OKButton");
        },
        {visitor("Cole", 0, 0)});
  EXPECT_EQ(takeMessages(), (Strings{"locked", "locked"}));
  EXPECT_EQ(placement(25001), "2|3|1|null") << "the admission stands";
  EXPECT_EQ(visitorsOf(25001), "");
}

TEST_F(AdmissionTest, AVisitThatCountsAsChangedIsRewritten) {
  run("DROP VIEW PatientDoctorsDescriptive");
  run("CREATE VIEW PatientDoctorsDescriptive AS SELECT PatientId, DoctorCode, 'Ames' AS Names, "
      "2 AS AttentionTypeCode, '' AS AttentionTypeDescription, 3 AS Frequency, "
      "'' AS FrequencyDescription, 3 AS checked FROM PatientDoctors");
  admit(25000, [](QWidget& dialog) { click(dialog, "OKButton"); });
  EXPECT_EQ(visitorsOf(25000), "1|2|3");
}

TEST_F(AdmissionTest, DischargeShowsThePlacementAndLeavesTheVisitors) {
  const auto discharge = [](const std::string& shown, const ModalScript::Step& step) {
    return [shown, step](QWidget& dialog) {
      std::string all;
      for (const char* box : {"TxtStatus", "TxtFacility", "TxtWard", "TxtDoctor"})
        all += control<QLineEdit>(dialog, box).text().toStdString() + '|';
      EXPECT_EQ(all, shown);
      step(dialog);
    };
  };
  const auto ok = [](QWidget& dialog) { click(dialog, "OKButton"); };
  CurrentPatientId = 25000;
  script.in("frmDischargePatient", discharge("Admitted|General|East|Ames|", ok));
  frmDischargePatient().showModal();
  EXPECT_EQ(placement(25000), "0|0|0|1/1/1990");
  EXPECT_EQ(visitorsOf(25000), "1|1|1");
  script.in("frmDischargePatient", discharge("Not admitted||||", [](QWidget& dialog) {
              EXPECT_FALSE(control<QPushButton>(dialog, "OKButton").isEnabled());
              QTest::keyClick(&dialog, Qt::Key_Escape);
            }));
  frmDischargePatient().showModal();

  run(onServer() ? relationsOff() : "DROP TRIGGER PatientAdmissionUpdate");
  run("UPDATE Patient SET InFacilityCode=9, InWardCode=1, InDoctorCode=1 WHERE PatientId=25000");
  script.in("frmDischargePatient", discharge("Admitted|||Ames|", [&](QWidget& dialog) {
              run("DELETE FROM PatientCharges");
              run("DELETE FROM Patient WHERE PatientId=25000");
              click(dialog, "OKButton");
              EXPECT_EQ(takeMessages(), Strings{withAdvice("U:IMPACTENT")});
              EXPECT_TRUE(dialog.isVisible());
              click(dialog, "CancelButton");
            }));
  frmDischargePatient().showModal();
  for (const Form* form : {&frmAdmitPatient(), &frmDischargePatient()}) {
    form->showModal();
    EXPECT_EQ(takeMessages(), Strings{"Record not found.  Please report this error!"});
  }
}

}  // namespace
}  // namespace bw
