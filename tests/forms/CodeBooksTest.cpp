#include <QLabel>

#include "catalogues/Editors.h"
#include "data/CodeBooks.h"
#include "tests/forms/FormsFixture.h"
#include "tests/tools/TemporaryFolder.h"

namespace bw {
namespace {

class CodeBooksTest : public FormsTest {
 protected:
  CodeBooksTest() {
    openMainWindow();
    DatabasePath = folder_ / "office.db";
    CurrentDiagnosisCode = 0;
  }
  void bringBook() const {
    writeCodeBook(codeBooksOf(DatabasePath), CodeBook::diagnoses,
                  {{"Q01", false, "Quillwort fever", "Quillwort fever"},
                   {"Q010", true, "Quillwort fever without cough", "Quillwort fvr w/o cough"},
                   {"Q0111", true, "Marsh's quillwort fever of the left éye", "Marsh fvr, l eye"},
                   {"Q0112", true, std::string(121, 'x') + " marsh left", "Marsh fvr, long"}});
  }
  static void press(QWidget& box, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    box.activateWindow();  // another one may just have gone
    QApplication::processEvents();
    box.setFocus();
    QTest::keyClick(&box, key, modifiers);
  }
  static std::string stored() {
    return rows(
        concat("SELECT Description, RealDiagnosisCode FROM Diagnosis WHERE DiagnosisCode = ",
               CurrentDiagnosisCode));
  }

  TemporaryFolder folder_;
};

TEST_F(CodeBooksTest, WordsInAnyOrderFindTheCodeAndFillTheEditor) {
  bringBook();
  script.in("frmEditDiagnosis", [&](QWidget& editor) {
    type(line(editor, "TxtDescription"), "left marsh");
    press(line(editor, "TxtRealCode"), Qt::Key_F4);
    EXPECT_EQ(line(editor, "TxtRealCode").text(), "Q01.11");
    EXPECT_EQ(fromQt(line(editor, "TxtDescription").text()),
              "Marsh’s quillwort fever of the left éye");
    line(editor, "TxtDescription").undo();
    EXPECT_EQ(line(editor, "TxtDescription").text(), "left marsh") << "what was typed comes back";
    press(line(editor, "TxtRealCode"), Qt::Key_F4);  // Esc: all stays
    EXPECT_EQ(line(editor, "TxtRealCode").text(), "Q01.11");
    press(line(editor, "TxtRealCode"), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(line(editor, "TxtDescription").text(), "Marsh fvr, long");
    click(editor, "btnOk");
  });
  script.in("frmPickCode", [&](QWidget& dialog) {
    ListView& list = listIn(dialog);
    EXPECT_EQ(shownTexts(list), (Strings{"Q01.11", "Q01.12"}));
    type(line(dialog, "TxtWords"), "eye FEV");
    EXPECT_EQ(shownTexts(list), Strings{"Q01.11"});
    QTest::keyClick(&line(dialog, "TxtWords"), Qt::Key_Return);
  });
  script.in("frmPickCode", [&](QWidget& dialog) {
    ListView& list = listIn(dialog);
    EXPECT_EQ(shownTexts(list), Strings{"Q01.11"}) << "it begins with the code";
    type(line(dialog, "TxtWords"), "q01");
    EXPECT_EQ(shownTexts(list, 2), (Strings{"heading", "", "", ""}));
    type(line(dialog, "TxtWords"), "willow");
    EXPECT_EQ(list.count(), 0);
    click(dialog, "btnOk");
    EXPECT_EQ(takeMessages(), Strings{"Select a code first"});
    type(line(dialog, "TxtWords"), "uill");
    EXPECT_EQ(list.count(), 3) << "inside words when none begins so";
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  script.in("frmPickCode", [&](QWidget& dialog) {
    type(line(dialog, "TxtWords"), "marsh");
    QTest::keyClick(&line(dialog, "TxtWords"), Qt::Key_Down);
    click(dialog, "btnOk");
  });
  frmEditDiagnosis().showModal();
  EXPECT_EQ(stored(), "Marsh fvr, long|Q01.12");
}

TEST_F(CodeBooksTest, WhatIsInNoBookIsToldAndStored) {
  script.in("frmEditDiagnosis", [&](QWidget& editor) {
    EXPECT_TRUE(control<QLabel>(editor, "LblRealCode").isHidden());
    press(line(editor, "TxtRealCode"), Qt::Key_F4);
    EXPECT_TRUE(takeMessage().starts_with("The book ICD-10-CM is not at hand."));
    click(editor, "btnCancel");
  });
  frmEditDiagnosis().showModal();

  bringBook();
  script.in("frmEditDiagnosis", [&](QWidget& editor) {
    const std::pair<const char*, const char*> cases[] = {
        {"Q0111", "F4 searches ICD-10-CM."},
        {"Q01", "A heading of ICD-10-CM: not billable. F4 searches it."},
        {"Z99", "Not in ICD-10-CM. F4 searches it."}};
    for (const auto& [typed, words] : cases) {
      type(line(editor, "TxtRealCode"), typed);
      press(line(editor, "TxtRealCode"), Qt::Key_Tab);
      EXPECT_EQ(label(editor, "LblRealCode"), words) << typed;
    }
    click(editor, "btnOk");
  });
  frmEditDiagnosis().showModal();
  EXPECT_EQ(stored(), "|Z99");
  script.in("frmEditDiagnosis", [&](QWidget& editor) {
    EXPECT_EQ(label(editor, "LblRealCode"), "Not in ICD-10-CM. F4 searches it.")
        << "of a stored record, too";
    click(editor, "btnCancel");
  });
  frmEditDiagnosis().showModal();
}

}  // namespace
}  // namespace bw
