#include <QPushButton>

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
      choose(pick, "CBDoctors", doctor);
      control<ComboBox>(pick, "CBAttentionTypes").setListIndex(type);
      control<ComboBox>(pick, "CBFrequency").setListIndex(frequency);
      click(pick, "OKButton");
    };
  }
  static std::string placement(int patient) {
    return rows(concat("SELECT InFacilityCode, InWardCode, InDoctorCode, LastChargeDate FROM ",
                       "Patient WHERE PatientId=", patient));
  }
  static std::string visitorsOf(int patient) {
    return rows(concat("SELECT DoctorCode, AttentionTypeCode, Frequency FROM PatientDoctors ",
                       "WHERE PatientId=", patient));
  }
};

TEST_F(AdmissionTest, TheWardIsKeptOnlyByItsOwnFacility) {
  admit(25000, [&](QWidget& dialog) {
    EXPECT_EQ(line(dialog, "TxtPatient").text(), "Smith, Ann");
    EXPECT_TRUE(selectedRows(listIn(dialog)).empty());
    choose(dialog, "CBFacilities", "Oakhill");
    EXPECT_EQ(chosen(dialog, "CBFacilityWards"), "North");
    choose(dialog, "CBFacilities", "Empty");
    EXPECT_EQ(control<ComboBox>(dialog, "CBFacilityWards").ListIndex(), -1);
    takeStatements();
    click(dialog, "OKButton");  // no ward: nothing happens, without a word
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(takeStatements(), Strings{});
    choose(dialog, "CBFacilities", "General");
    EXPECT_EQ(chosen(dialog, "CBFacilityWards"), "East");
    choose(dialog, "CBFacilities", "Oakhill");
    choose(dialog, "CBFacilityWards", "South");
    click(dialog, "OKButton");
  });
  EXPECT_EQ(placement(25000), "2|3|1|null");
  admit(25000, [&](QWidget& dialog) {
    EXPECT_EQ(chosen(dialog, "CBFacilities") + chosen(dialog, "CBFacilityWards"), "OakhillSouth");
    click(dialog, "CancelButton");
  });
}

TEST_F(AdmissionTest, TheAttendingDoctorBecomesAVisitorAndAllGoInOneWalk) {
  admit(25001,
        [&](QWidget& dialog) {
          EXPECT_EQ(chosen(dialog, "CBFacilities") + chosen(dialog, "CBDoctors"), "GeneralAmes");
          click(dialog, "Command1");
          EXPECT_EQ(shownTexts(listIn(dialog)), Strings{"Cole"});
          click(dialog, "Command1");
          clickRow(listIn(dialog), 1);
          click(dialog, "Command2");  // added and taken out again
          choose(dialog, "CBDoctors", "Bell");
          click(dialog, "OKButton");
        },
        {visitor("Cole", 1, 2), visitor("Dunn", 0, 1)});
  EXPECT_EQ(visitorsOf(25001), "2|1|1 3|2|3");
}

TEST_F(AdmissionTest, AMarkedAttendingDoctorGoesAndADoubledVisitorIsTold) {
  admit(25000,
        [&](QWidget& dialog) {
          clickRow(listIn(dialog), 0);
          QTest::keyClick(&listIn(dialog), Qt::Key_Delete);
          click(dialog, "Command2");  // and back
          click(dialog, "Command1");
          click(dialog, "OKButton");
        },
        {visitor("Ames", 1, 1)});
  EXPECT_EQ(takeMessages(), Strings{"This doctor is among the visiting doctors already."});
  EXPECT_EQ(visitorsOf(25000), "1|1|1");
  admit(25000, [&](QWidget& dialog) {
    clickRow(listIn(dialog), 0);
    click(dialog, "Command2");
    click(dialog, "OKButton");
  });
  EXPECT_EQ(visitorsOf(25000), "") << "marked, he counted as present";
  EXPECT_EQ(placement(25000), "1|1|1|null");
}

TEST_F(AdmissionTest, WhatIsRefusedKeepsTheDialogAndTouchesNoVisitor) {
  admit(25001,
        [&](QWidget& dialog) {
          choose(dialog, "CBFacilities", "Oakhill");
          click(dialog, "Command1");
          run("DELETE FROM FacilityWards WHERE WardCode=2");  // another station
          click(dialog, "OKButton");
          EXPECT_EQ(takeMessages(),
                    Strings{"This record cannot be stored: its ward does not exist."});
          EXPECT_TRUE(dialog.isVisible());
          EXPECT_EQ(visitorsOf(25001), "");
          choose(dialog, "CBFacilityWards", "South");
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
  const auto discharge = [&](const std::string& shown, const ModalScript::Step& step) {
    script.in("frmDischargePatient", [=](QWidget& dialog) {
      std::string all;
      for (const char* box : {"TxtStatus", "TxtFacility", "TxtWard", "TxtDoctor"})
        all += fromQt(line(dialog, box).text()) + '|';
      EXPECT_EQ(all, shown);
      step(dialog);
    });
    frmDischargePatient().showModal();
  };
  CurrentPatientId = 25000;
  discharge("Admitted|General|East|Ames|", [](QWidget& dialog) { click(dialog, "OKButton"); });
  EXPECT_EQ(placement(25000), "0|0|0|1/1/1990");
  EXPECT_EQ(visitorsOf(25000), "1|1|1");
  discharge("Not admitted||||", [](QWidget& dialog) {
    EXPECT_FALSE(control<QPushButton>(dialog, "OKButton").isEnabled());
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });

  run(onServer() ? relationsOff() : "DROP TRIGGER PatientAdmissionUpdate");
  run("UPDATE Patient SET InFacilityCode=9, InWardCode=1, InDoctorCode=1 WHERE PatientId=25000");
  discharge("Admitted|||Ames|", [&](QWidget& dialog) {
    run("DELETE FROM PatientCharges");
    run("DELETE FROM Patient WHERE PatientId=25000");
    click(dialog, "OKButton");
    EXPECT_EQ(takeMessages(), Strings{withAdvice("U:IMPACTENT")});
    EXPECT_TRUE(dialog.isVisible());
    click(dialog, "CancelButton");
  });
  for (const Form* form : {&frmAdmitPatient(), &frmDischargePatient()}) {
    form->showModal();
    EXPECT_EQ(takeMessages(), Strings{"Record not found.  Please report this error!"});
  }
}

}  // namespace
}  // namespace bw
