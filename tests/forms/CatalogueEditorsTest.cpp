#include <QLineEdit>
#include <QTest>

#include "core/Principal.h"
#include "lists/RecordView.h"
#include "patients/frmEditPatient.h"
#include "shell/RecordKinds.h"
#include "shell/frmShorcuts.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

QLineEdit& line(const QWidget& editor, const char* name) {
  return control<QLineEdit>(editor, name);
}

class EditorTest : public FormsTest {
 protected:
  // Opens the main window on a view.
  void openView(std::int16_t view) {
    openMainWindow();
    window().resize(1300, 700);
    frmShorcuts().FuerzaNodeClick(view, 0);
    list_ = &control<ListView>(recordView(recordKind(view)), "ListView1");
  }
  ListView& list() { return *list_; }
  void pressNew() { QTest::mouseClick(&control<QWidget>(window(), "Nuevo"), Qt::LeftButton); }
  void open(const std::string& text) {
    for (int row = 0; row < list().count(); ++row)
      if (list().text(row) == text) return doubleClickRow(list(), row);
    FAIL() << "no row " << text;
  }

 private:
  ListView* list_ = nullptr;
};

TEST_F(EditorTest, ACodeThatAFailedCommitHandedOutIsNotUpdated) {
  openMainWindow();
  const struct {
    const char* entry;
    const char* editor;
    const char* table;
  } cases[] = {{"NewPatient", "frmEditPatient", "Patient"},
               {"NewDoctor", "frmEditDoctor", "Doctors"},
               {"NewFacility", "frmEditFacility", "Facility"},
               {"NewInsurance", "frmEditInsurance", "Insurance"},
               {"NewEMCode", "frmEditEMCode", "EvaluationManagement"}};
  for (const auto& [entry, name, table] : cases) {
    const std::string before = count(table);
    script.in(name, [&](QWidget& editor) {
      onStatement = [](std::string_view issued) {
        if (issued == "COMMIT") throw RuntimeError(ErrorNumber::database, "The disk is full.");
      };
      click(editor, "btnOk");
      onStatement = nullptr;
      EXPECT_EQ(takeMessages(), Strings{"The disk is full."});
      EXPECT_EQ(count(table), before) << table;
      click(editor, "btnOk");
    });
    trigger(window(), entry);
    EXPECT_NE(count(table), before) << table << ": the second Ok inserts";
  }
}

TEST_F(EditorTest, WhatAnEditorCannotDoWithoutIsToldAndNoDialogShown) {
  openMainWindow();
  CurrentPatientId = 7;
  trigger(window(), "NewCharge");
  frmEditPatient().showModal();
  EXPECT_EQ(takeMessages(), (Strings{"Error recovering patient information.",
                                     "Record not found.  Please report this error!"}));
  for (const char* table : {"PatientHistory", "Sickness", "PatientCharges", "Diagnosis",
                            "PatientDoctors", "Patient", "Facility"})
    run(std::string("DELETE FROM ") + table);
  const struct {
    const char* table;
    const char* entry;
    const char* missing;
  } cases[] = {{"EvaluationManagement", "NewCharge", "Evaluation & Management Codes first!"},
               {"SicknessType", "NewSickness", "History Groups first!"},
               {"SicknessType", "NewPatient", "Sickness Types First!"},
               {"Insurance", "NewPatient", "Insurances First!"},
               {"DiagnosisFamily", "NewDiagnosis", "Diagnosis Groups first!"},
               {"FacilityTypes", "NewFacility", "Facility Types first!"},
               {"FacilityTypes", "NewEMCode", "Facility Types first!"},
               {"ChargeTypes", "NewEMCode", "Charge types first!"},
               {"AttentionTypes", "NewEMCode", "Attention types first!"}};
  for (const auto& [table, entry, missing] : cases) {
    run(std::string("DELETE FROM ") + table);
    RecordSaved = true;
    trigger(window(), entry);
    EXPECT_EQ(takeMessages(), Strings{std::string("You have to define ") + missing});
    EXPECT_TRUE(RecordSaved) << "a load that fails leaves it";
  }
}

TEST_F(EditorTest, AConceptKeepsItsChoicesByTheirNumbers) {
  openView(7);
  const auto stored = [] {
    return rows(
        "SELECT FacilityTypeCode, ChargeTypeCode, AttentionTypeCode, ShowOnFirst, ShowOnNext, "
        "IsDischarge FROM EvaluationManagement WHERE EMCode=2");
  };
  script.in("frmEditEMCode", [](QWidget& editor) {
    type(line(editor, "TxtDescription"), "Round");
    click(editor, "btnOk");
  });
  pressNew();
  EXPECT_EQ(stored(), "1|1|1|1|1|1");
  script.in("frmEditEMCode", [](QWidget& editor) {
    for (const auto& [box, index] : {std::pair{"CBFacilityTypes", 2},
                                     {"CBChargeTypes", 1},
                                     {"CBCauseDischarge", 2},
                                     {"CBShowOnFirst", 0}})
      control<ComboBox>(editor, box).setListIndex(index);
    click(editor, "btnOk");
  });
  open("Round");
  EXPECT_EQ(stored(), "3|2|1|0|1|3");
}

TEST_F(EditorTest, AStoredNumberWithoutAnItemEndsTheProgram) {
  openView(7);
  for (const char* wrong : {"ShowOnFirst=2", "ShowOnNext=-1", "IsDischarge=0", "IsDischarge=4"}) {
    run("UPDATE EvaluationManagement SET ShowOnFirst=0, ShowOnNext=1, IsDischarge=1");
    run(std::string("UPDATE EvaluationManagement SET ") + wrong);
    open("Visit");
    EXPECT_EQ(takeFatal(), Strings{std::string(errorText(ErrorNumber::invalidPropertyValue))})
        << wrong;
  }
}

TEST_F(EditorTest, CoverageIsAddedMarkedAndRefused) {
  run("INSERT INTO DoctorCoveringDoctors VALUES (1, 2), (1, 3)");
  openView(2);
  const auto pick = [](const char* doctor) {
    return [doctor](QWidget& dialog) {
      auto& doctors = control<ListView>(dialog, "ListView1");
      for (int row = 0; row < doctors.count(); ++row)
        if (doctors.text(row) == doctor) clickRow(doctors, row);
      click(dialog, "btnOk");
    };
  };
  script.in("frmEditDoctor", [&](QWidget& editor) {
    auto& covered = control<ListView>(editor, "ListView1");
    EXPECT_EQ(shownTexts(covered), (Strings{"Bell", "Cole"}));
    EXPECT_TRUE(selectedRows(covered).empty());
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
  for (const char* doctor : {"Ames", "Bell", "Dunn"}) script.in("frmPickDoctor", pick(doctor));
  open("Ames");
  EXPECT_EQ(rows("SELECT * FROM DoctorCoveringDoctors"), "1|3 1|4");
}

class FacilityEditorTest : public EditorTest {
 protected:
  FacilityEditorTest() {
    run("INSERT INTO FacilityWards (WardCode, FacilityCode, Description) VALUES (2, 1, 'West'), "
        "(3, 1, 'North')");
  }
  void ward(const QString& text) {
    script.in("frmEditWard", [text](QWidget& dialog) {
      line(dialog, "TxtDescription").setText(text);
      click(dialog, "btnOk");
    });
  }
  static ListView& wards(QWidget& editor) { return control<ListView>(editor, "ListView1"); }
  static std::string stored(int facility) {
    return rows("SELECT WardCode, Description FROM FacilityWards WHERE FacilityCode=" +
                std::to_string(facility));
  }
};

TEST_F(FacilityEditorTest, WardsFollowTheirMarks) {
  openView(3);
  script.in("frmEditFacility", [&](QWidget& editor) {
    ListView& list = wards(editor);
    EXPECT_EQ(shownTexts(list), (Strings{"East", "West", "North"}));
    clickRow(list, 0);
    QTest::keyClick(&list, Qt::Key_Return);  // to "Eastern"
    EXPECT_EQ(list.text(0), "Eastern");
    doubleClickRow(list, 0);  // to blanks: stays
    EXPECT_EQ(list.text(0), "Eastern");
    clickRow(list, 1);
    click(editor, "Command2");
    doubleClickRow(list, 2);  // to "Northern", which del and del again forget
    click(editor, "Command2");
    click(editor, "Command2");
    EXPECT_EQ(shownTexts(list), (Strings{"Eastern", "*West", "Northern"}));
    QTest::keyClick(&list, Qt::Key_Insert);
    click(editor, "Command1");  // blanks: no ward
    EXPECT_EQ(list.count(), 4);
    click(editor, "btnOk");
  });
  for (const char* text : {"Eastern", "  ", "Northern", "South", "   "}) ward(text);
  open("General");
  EXPECT_EQ(stored(1), "1|Eastern 3|North 4|South");
  EXPECT_TRUE(RecordSaved);
}

TEST_F(FacilityEditorTest, AStoredFacilityTellsOfFailingWardsAndCloses) {
  openView(3);
  script.in("frmEditFacility", [&](QWidget& editor) {
    clickRow(wards(editor), 0);  // a patient lies there
    click(editor, "Command2");
    click(editor, "Command1");
    click(editor, "btnOk");
  });
  ward("South");
  open("General");
  const Strings shown = takeMessages();
  ASSERT_EQ(shown.size(), 1U);
  EXPECT_TRUE(shown[0].starts_with("This record cannot be deleted")) << shown[0];
  EXPECT_EQ(stored(1), "1|East 2|West 3|North 4|South");
}

TEST_F(FacilityEditorTest, ANewFacilityStaysOpenAtTheFirstWardThatFails) {
  openView(3);
  script.in("frmEditFacility", [&](QWidget& editor) {
    type(line(editor, "TxtDescription"), "Oakhill");
    type(line(editor, "TxtBillingCode"), "in");
    type(line(editor, "TxtBillingCodeOut"), "out");
    EXPECT_EQ(shownTexts(wards(editor)), Strings{"Default"});
    click(editor, "Command1");
    click(editor, "Command1");
    click(editor, "btnOk");
    EXPECT_EQ(takeMessages().size(), 1U);
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(CurrentFacilityCode, 2);
    EXPECT_EQ(stored(2), "4|Default");
    click(editor, "btnOk");
    EXPECT_EQ(takeMessages().size(), 1U);
    EXPECT_FALSE(editor.isVisible());
  });
  ward("O'Neil");
  ward("South");
  pressNew();
  EXPECT_EQ(rows("SELECT * FROM Facility WHERE FacilityCode=2"), "2|Oakhill|1|in|out");
  EXPECT_EQ(stored(2), "4|Default 5|Default 6|South") << "tried again by their marks";
}

}  // namespace
}  // namespace bw
