#include <array>

#include "charges/frmEditCharge.h"
#include "patients/frmEditPatient.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

class EditorTest : public FormsTest {
 protected:
  static void open(const std::string& text) { doubleClickRow(list(), rowOf(list(), text)); }
};

// Also a code that a failed commit has handed out is not updated by the second Ok.
TEST_F(EditorTest, WhatCannotBeStoredStaysAndASecondOkInsertsIt) {
  openMainWindow();
  CurrentPatientId = 25000;
  const std::array<const char*, 3> cases[] = {
      {"NewCharge", "frmEditCharge", "PatientCharges"},
      {"NewPatient", "frmEditPatient", "Patient"},
      {"NewDoctor", "frmEditDoctor", "Doctors"},
      {"NewFacility", "frmEditFacility", "Facility"},
      {"NewInsurance", "frmEditInsurance", "Insurance"},
      {"NewEMCode", "frmEditEMCode", "EvaluationManagement"}};
  for (const auto& [entry, name, table] : cases) {
    for (const char* failing : {"INSERT", "COMMIT"}) {
      SCOPED_TRACE(concat(name, ", ", failing));
      const std::string before = count(table);
      script.in(name, [&](QWidget& editor) {
        onStatement = [&](std::string_view issued) {
          if (issued.starts_with(failing)) throw RuntimeError(ErrorNumber::database, failing);
        };
        click(editor, "btnOk");
        onStatement = nullptr;
        EXPECT_EQ(takeMessages(), Strings{failing});
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(count(table), before);
        EXPECT_FALSE(inTransaction());
        click(editor, "btnOk");
      });
      trigger(window(), entry);
      EXPECT_NE(count(table), before) << "the second Ok inserts";
      now.time.second += 1;
    }
  }
}

TEST_F(EditorTest, WhatAnEditorCannotDoWithoutIsToldAndNoDialogShown) {
  openMainWindow();
  CurrentPatientId = 7;
  trigger(window(), "NewCharge");
  CurrentChargeDate = kSeedDate;
  const std::string notFound = "Record not found.  Please report this error!";
  for (const Form* form : {&frmEditCharge(), &frmEditPatient()}) form->showModal();
  EXPECT_EQ(takeMessages(), (Strings{"Error recovering patient information.", notFound, notFound}));
  for (const char* table : {"PatientHistory", "Sickness", "PatientCharges", "Diagnosis",
                            "PatientDoctors", "Patient", "Facility"})
    run(concat("DELETE FROM ", table));
  const std::array<const char*, 3> cases[] = {
      {"EvaluationManagement", "NewCharge", "Evaluation & Management Codes first!"},
      {"SicknessType", "NewSickness", "History Groups first!"},
      {"SicknessType", "NewPatient", "Sickness Types First!"},
      {"Insurance", "NewPatient", "Insurances First!"},
      {"DiagnosisFamily", "NewDiagnosis", "Diagnosis Groups first!"},
      {"FacilityTypes", "NewFacility", "Facility Types first!"},
      {"FacilityTypes", "NewEMCode", "Facility Types first!"},
      {"ChargeTypes", "NewEMCode", "Charge types first!"},
      {"AttentionTypes", "NewEMCode", "Attention types first!"}};
  for (const auto& [table, entry, missing] : cases) {
    run(concat("DELETE FROM ", table));
    RecordSaved = true;
    trigger(window(), entry);
    EXPECT_EQ(takeMessages(), Strings{concat("You have to define ", missing)});
    EXPECT_TRUE(RecordSaved) << "a load that fails leaves it";
  }
}

TEST_F(EditorTest, AConceptKeepsItsChoicesByTheirNumbers) {
  openView(7);
  const auto stored = [] { return rows("SELECT * FROM EvaluationManagement WHERE EMCode=2"); };
  script.in("frmEditEMCode", [](QWidget& editor) {
    type(line(editor, "TxtDescription"), "Round");
    click(editor, "btnOk");
  });
  click(window(), "Nuevo");
  EXPECT_EQ(stored(), "2|Round|1|1|1|||1|1|1");
  script.in("frmEditEMCode", [](QWidget& editor) {
    for (const auto& [box, index] : {std::pair{"CBFacilityTypes", 2},
                                     {"CBChargeTypes", 1},
                                     {"CBCauseDischarge", 2},
                                     {"CBShowOnFirst", 0}})
      control<ComboBox>(editor, box).setListIndex(index);
    click(editor, "btnOk");
  });
  open("Round");
  EXPECT_EQ(stored(), "2|Round|3|2|1|||0|1|3");
}

TEST_F(EditorTest, AStoredNumberWithoutAnItemEndsTheProgram) {
  openView(7);
  for (const char* wrong : {"ShowOnFirst=2", "ShowOnNext=-1", "IsDischarge=0", "IsDischarge=4"}) {
    run("UPDATE EvaluationManagement SET ShowOnFirst=0, ShowOnNext=1, IsDischarge=1");
    run(concat("UPDATE EvaluationManagement SET ", wrong));
    open("Visit");
    EXPECT_EQ(takeFatal(), Strings{std::string(errorText(ErrorNumber::invalidPropertyValue))})
        << wrong;
  }
}

TEST_F(EditorTest, CoverageIsAddedMarkedAndRefused) {
  run("INSERT INTO DoctorCoveringDoctors VALUES (1, 2), (1, 3)");
  openView(2);
  script.in("frmEditDoctor", [&](QWidget& editor) {
    ListView& covered = listIn(editor);
    EXPECT_EQ(shownTexts(covered), (Strings{"Bell", "Cole"}));
    click(editor, "Command1");
    EXPECT_EQ(takeMessages(), Strings{"Bad selection!"});
    clickRow(covered, 0);
    QTest::keyClick(&covered, Qt::Key_Delete);
    EXPECT_EQ(covered.text(0), "*Bell");
    QTest::keyClick(&covered, Qt::Key_Insert);
    EXPECT_EQ(takeMessages(), Strings{"Doctor already on the list!"}) << "also when marked";
    click(editor, "Command1");
    EXPECT_EQ(shownTexts(covered), (Strings{"Bell", "Cole", "Dunn"})) << "the star is not kept";
    click(editor, "btnOk");
  });
  for (const char* doctor : {"Ames", "Bell", "Dunn"}) script.in("frmPickDoctor", picks(doctor));
  open("Ames");
  EXPECT_EQ(rows("SELECT * FROM DoctorCoveringDoctors"), "1|3 1|4");
}

class FacilityEditorTest : public EditorTest {
 protected:
  FacilityEditorTest() {
    run("INSERT INTO FacilityWards (WardCode, FacilityCode, Description) VALUES (2, 1, 'West'), "
        "(3, 1, 'North'), (4, 1, 'Low')");
  }
  void ward(const QString& text) {
    script.in("frmEditWard", [text](QWidget& dialog) {
      line(dialog, "TxtDescription").setText(text);
      click(dialog, "btnOk");
    });
  }
  static std::string stored(int facility) {
    return rows(
        concat("SELECT WardCode, Description FROM FacilityWards WHERE FacilityCode=", facility));
  }
};

TEST_F(FacilityEditorTest, WardsFollowTheirMarksAndOneThatFailsIsTold) {
  openView(3);
  script.in("frmEditFacility", [&](QWidget& editor) {
    ListView& list = listIn(editor);
    EXPECT_EQ(shownTexts(list), (Strings{"East", "West", "North", "Low"}));
    clickRow(list, 3);
    QTest::keyClick(&list, Qt::Key_Return);  // to "Lower"
    doubleClickRow(list, 3);                 // to blanks: stays
    EXPECT_EQ(list.text(3), "Lower");
    for (const int row : {0, 1}) {  // a patient lies in the first
      clickRow(list, row);
      click(editor, "Command2");
    }
    doubleClickRow(list, 2);  // to "Northern", which del and del again forget
    click(editor, "Command2");
    click(editor, "Command2");
    EXPECT_EQ(shownTexts(list), (Strings{"*East", "*West", "Northern", "Lower"}));
    QTest::keyClick(&list, Qt::Key_Insert);
    click(editor, "Command1");  // blanks: no ward
    EXPECT_EQ(list.count(), 5);
    click(editor, "btnOk");
  });
  for (const char* text : {"Lower", "  ", "Northern", "South", "   "}) ward(text);
  open("General");
  EXPECT_TRUE(takeMessage().starts_with("This record cannot be deleted"));
  EXPECT_EQ(stored(1), "1|East 3|North 4|Lower 5|South");
  EXPECT_TRUE(RecordSaved);
}

TEST_F(FacilityEditorTest, ANewFacilityStaysOpenAtTheFirstWardThatFails) {
  openView(3);
  script.in("frmEditFacility", [&](QWidget& editor) {
    type(line(editor, "TxtDescription"), "Oakhill");
    type(line(editor, "TxtBillingCode"), "in");
    type(line(editor, "TxtBillingCodeOut"), "out");
    EXPECT_EQ(shownTexts(listIn(editor)), Strings{"Default"});
    click(editor, "Command1");
    click(editor, "Command1");
    click(editor, "btnOk");
    EXPECT_EQ(takeMessages().size(), 1U);
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(CurrentFacilityCode, 2);
    EXPECT_EQ(stored(2), "5|Default");
    click(editor, "btnOk");
    EXPECT_EQ(takeMessages().size(), 1U);
    EXPECT_FALSE(editor.isVisible());
  });
  ward("O'Neil");
  ward("South");
  click(window(), "Nuevo");
  EXPECT_EQ(rows("SELECT * FROM Facility WHERE FacilityCode=2"), "2|Oakhill|1|in|out");
  EXPECT_EQ(stored(2), "5|Default 6|Default 7|South") << "tried again by their marks";
}

}  // namespace
}  // namespace bw
