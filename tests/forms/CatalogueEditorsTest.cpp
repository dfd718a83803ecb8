#include <QLineEdit>
#include <QTest>

#include "core/Principal.h"
#include "lists/RecordView.h"
#include "shell/RecordKinds.h"
#include "shell/frmShorcuts.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

using Strings = std::vector<std::string>;

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

struct Plain {
  const char* editor;
  std::int16_t view;
  const char* read;  // the rows that the test makes
  std::vector<std::pair<const char*, const char*>> typed;
  const char* box;
  const char* item;
  const char* stored;
  const char* changed;
  const char* vanish;
};
void PrintTo(const Plain& plain, std::ostream* out) { *out << plain.editor; }

// clang-format off
const Plain kPlain[] = {
    {"frmEditInsurance", 6, "SELECT InsuranceCode, Description, BillingInsuranceCode FROM Insurance WHERE InsuranceCode>1",
     {{"TxtDescription", "Neue Kasse"}, {"TxtBillingCode", "b7"}}, nullptr, nullptr, "2|Neue Kasse|b7", "2|Changed|b7",
     "DELETE FROM Insurance WHERE InsuranceCode>1"},
    {"frmEditProcedure", 5, "SELECT ProcedureCode, Description, BillingProcedureCode, RealProcedureCode FROM Procedures WHERE ProcedureCode>21",
     {{"TxtDescription", "X-ray"}, {"TxtBillingCode", "b7"}, {"TxtRealCode", "r7"}}, nullptr, nullptr, "22|X-ray|b7|r7", "22|Changed|b7|r7",
     "DELETE FROM Procedures WHERE ProcedureCode>21"},
    {"frmEditDiagnosis", 4, "SELECT DiagnosisCode, Description, DiagnosisFamilyCode, BillingDiagnosisCode, RealDiagnosisCode FROM Diagnosis WHERE DiagnosisCode>21",
     {{"TxtDescription", "Asthma"}, {"TxtBillingCode", "b7"}, {"TxtRealCode", "r7"}}, "CBDiagnosisFamily", "Lungs", "22|Asthma|7|b7|r7", "22|Changed|7|b7|r7",
     "DELETE FROM Diagnosis WHERE DiagnosisCode>21"},
    {"frmEditDiagnosisFamily", 9, "SELECT * FROM DiagnosisFamily WHERE DiagnosisFamilyCode>7",
     {{"TxtDescription", "Bones"}}, nullptr, nullptr, "8|Bones", "8|Changed",
     "DELETE FROM DiagnosisFamily WHERE DiagnosisFamilyCode>7"},
    {"frmEditSickness", 8, "SELECT SicknessCode, Description, SicknessTypeCode FROM Sickness WHERE SicknessCode>2",
     {{"TxtDescription", "Mumps"}}, "CBSicknessTypes", nullptr, "3|Mumps|1", "3|Changed|1",
     "DELETE FROM Sickness WHERE SicknessCode>2"},
};
// clang-format on

class PlainEditorTest : public EditorTest, public testing::WithParamInterface<Plain> {};

TEST_P(PlainEditorTest, NewRefusedStoredCancelledChangedAndVanished) {
  const Plain& plain = GetParam();
  run("INSERT INTO DiagnosisFamily VALUES (7, 'Lungs')");
  openView(plain.view);
  const std::string first = plain.typed[0].second;
  script.in(plain.editor, [&](QWidget& editor) {
    for (const auto& [name, text] : plain.typed) type(line(editor, name), text);
    if (plain.box != nullptr) {
      auto& box = control<ComboBox>(editor, plain.box);
      EXPECT_EQ(box.ListIndex(), 0);
      plain.item != nullptr ? choose(box, plain.item) : box.setListIndex(1);
    }
    for (const QString& refused : {QString("O'Brien"), QString(300, 'x')}) {
      line(editor, "TxtDescription").setText(refused);
      click(editor, "btnOk");
      const Strings told = takeMessages();
      ASSERT_EQ(told.size(), 1U);
      EXPECT_EQ(told[0].find("\n\nThe sign ' (apostrophe)") != std::string::npos,
                refused.contains('\''))
          << told[0];
      EXPECT_TRUE(editor.isVisible());
      EXPECT_EQ(line(editor, "TxtDescription").text(), refused) << "nothing typed is lost";
    }
    type(line(editor, "TxtDescription"), first.c_str());
    QTest::keyClick(&editor, Qt::Key_Return);
  });
  pressNew();
  EXPECT_EQ(rows(plain.read), plain.stored);
  ASSERT_EQ(selectedRows(list()).size(), 1U);
  EXPECT_EQ(list().text(selectedRows(list())[0]), first);

  script.in(plain.editor, [&](QWidget& editor) {
    for (const auto& [name, text] : plain.typed) EXPECT_EQ(line(editor, name).text(), text);
    type(line(editor, "TxtDescription"), "Cancelled");
    QTest::keyClick(&editor, Qt::Key_Escape);
  });
  open(first);
  EXPECT_FALSE(RecordSaved);
  EXPECT_EQ(rows(plain.read), plain.stored);

  script.in(plain.editor, [&](QWidget& editor) {
    type(line(editor, "TxtDescription"), "Changed");
    click(editor, "btnOk");
  });
  QTest::keyClick(&list(), Qt::Key_Return);
  EXPECT_EQ(rows(plain.read), plain.changed);

  script.in(plain.editor, [&](QWidget& editor) {
    run(plain.vanish);
    click(editor, "btnOk");
    EXPECT_EQ(takeMessages(), Strings{"U:IMPACTENT\n\nAnother station has deleted this record. "
                                      "Close this window and press F5."});
    EXPECT_TRUE(editor.isVisible());
    click(editor, "btnCancel");
  });
  open("Changed");
  open("Changed");
  EXPECT_EQ(takeMessages(), Strings{"Record not found.  Please report this error!"});
}

INSTANTIATE_TEST_SUITE_P(Editors, PlainEditorTest, testing::ValuesIn(kPlain),
                         [](const auto& member) { return std::string(member.param.editor); });

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

TEST_F(EditorTest, AnEmptiedLookupTableShowsItsMessageAndNoDialog) {
  openMainWindow();
  for (const char* table : {"PatientHistory", "Sickness", "PatientCharges", "Diagnosis",
                            "PatientDoctors", "EvaluationManagement", "Patient", "Facility"})
    run(std::string("DELETE FROM ") + table);
  const struct {
    const char* table;
    const char* entry;
    const char* message;
  } cases[] = {{"SicknessType", "NewSickness", "You have to define History Groups first!"},
               {"DiagnosisFamily", "NewDiagnosis", "You have to define Diagnosis Groups first!"},
               {"FacilityTypes", "NewFacility", "You have to define Facility Types first!"},
               {"FacilityTypes", "NewEMCode", "You have to define Facility Types first!"},
               {"ChargeTypes", "NewEMCode", "You have to define Charge types first!"},
               {"AttentionTypes", "NewEMCode", "You have to define Attention types first!"}};
  for (const auto& [table, entry, message] : cases) {
    run(std::string("DELETE FROM ") + table);
    trigger(window(), entry);
    EXPECT_EQ(takeMessages(), Strings{message});
  }
}

TEST_F(EditorTest, ANewConceptIsInitialAndShownAndComesBackAsItWasStored) {
  openView(7);
  const char* read =
      "SELECT EMCode, Description, FacilityTypeCode, ChargeTypeCode, AttentionTypeCode, "
      "BillingEMCode, RealEMCode, ShowOnFirst, ShowOnNext, IsDischarge FROM EvaluationManagement "
      "WHERE EMCode>1";
  script.in("frmEditEMCode", [&](QWidget& editor) {
    type(line(editor, "TxtDescription"), "Round");
    type(line(editor, "TxtRealCode"), "r");
    type(line(editor, "TxtBillingCode"), "b");
    click(editor, "btnOk");
  });
  pressNew();
  EXPECT_EQ(rows(read), "2|Round|1|1|1|b|r|1|1|1");
  const std::pair<const char*, int> boxes[] = {{"CBFacilityTypes", 2},  {"CBChargeTypes", 1},
                                               {"CBAttentionTypes", 1}, {"CBCauseDischarge", 2},
                                               {"CBShowOnFirst", 0},    {"CBShowOnNext", 1}};
  script.in("frmEditEMCode", [&](QWidget& editor) {
    for (const auto& [box, index] : boxes) control<ComboBox>(editor, box).setListIndex(index);
    click(editor, "btnOk");
  });
  open("Round");
  EXPECT_EQ(rows(read), "2|Round|3|2|2|b|r|0|1|3");
  script.in("frmEditEMCode", [&](QWidget& editor) {
    for (const auto& [box, index] : boxes)
      EXPECT_EQ(control<ComboBox>(editor, box).ListIndex(), index) << box;
    click(editor, "btnCancel");
  });
  open("Round");
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
