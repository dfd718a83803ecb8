#include <QApplication>
#include <QMessageBox>
#include <QTest>

#include "charges/frmCharges.h"
#include "controls/MessageBox.h"
#include "controls/ProgressWindow.h"
#include "core/Principal.h"
#include "lists/Settings.h"
#include "shell/SessionEnd.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

// What happens to a charge under the clerk's hands when the database cannot take it.
class FaultsTest : public FormsTest {
 protected:
  FaultsTest() { CurrentPatientId = 25000; }

  // Opens a new charge, lets Ok fail once with that error, and again without.
  void okFailsThenWorks(std::string_view statement, const std::string& text) {
    openMainWindow();
    script.in("frmEditCharge", [&, statement, text](QWidget& editor) {
      choose(control<ComboBox>(editor, "CBRefDoctors"), "Cole");
      onStatement = [=](std::string_view issued) {
        if (issued.starts_with(statement)) throw RuntimeError(ErrorNumber::database, text);
      };
      click(editor, "btnOk");
      onStatement = nullptr;
      EXPECT_EQ(takeMessages(), Strings{text});
      EXPECT_TRUE(editor.isVisible());
      EXPECT_FALSE(inTransaction());
      EXPECT_EQ(count("PatientCharges"), "1") << "as it was before";
      EXPECT_EQ(control<ComboBox>(editor, "CBRefDoctors").currentText(), "Cole");
      click(editor, "btnOk");
    });
    QTest::mouseClick(&control<QWidget>(window(), "Nuevo"), Qt::LeftButton);
    EXPECT_EQ(count("PatientCharges"), "2") << "a second Ok tries again";
    closeMainWindow();
  }
};

TEST_F(FaultsTest, ALockedDatabaseLeavesTheDialogAsItWas) {
  okFailsThenWorks("INSERT", "The database is locked by another station.");
}

TEST_F(FaultsTest, ADiskThatFillsUpAtTheCommitLeavesTheDialogAsItWas) {
  okFailsThenWorks("COMMIT", "The disk is full. Nothing was stored.");
}

TEST_F(FaultsTest, ASecondChargeWithinTheSameSecondIsRefusedAndStoredLater) {
  openMainWindow();
  now = {kSeedDate, kSeedTime};
  script.in("frmEditCharge", [&](QWidget& editor) {
    click(editor, "btnOk");
    EXPECT_EQ(takeMessages(),
              Strings{withAdvice(
                  kDuplicateKey,
                  "Another charge of this patient was entered in this second. Press Ok again.")});
    now.time.second += 1;
    click(editor, "btnOk");
  });
  QTest::mouseClick(&control<QWidget>(window(), "Nuevo"), Qt::LeftButton);
  EXPECT_EQ(count("PatientCharges"), "2");
  closeMainWindow();
}

TEST_F(FaultsTest, ALongMessageShowsItsEndsAndHasTheWholeBehindAButton) {
  openMainWindow();
  installMessageBoxes();
  const std::string text = "SELECT " + std::string(5000, 'x') + " is locked.";
  script.in("MsgBox", [&](QWidget& window) {
    const auto& box = dynamic_cast<QMessageBox&>(window);
    EXPECT_LT(box.text().size(), 1600);
    EXPECT_TRUE(box.text().startsWith("SELECT x") && box.text().endsWith("x is locked."));
    EXPECT_EQ(box.detailedText().toStdString(), text);
    QTest::keyClick(&window, Qt::Key_Return);
  });
  MsgBox(text);
}

class SessionEndTest : public FaultsTest {
 protected:
  SessionEndTest() { openMainWindow(); }
  void expectEnded() {
    ASSERT_TRUE(QTest::qWaitFor([&] { return window().isHidden(); }));
    EXPECT_EQ(GetSetting(kApplicationTitle, "Settings", "ActiveView", "none"), "0");
    EXPECT_EQ(GetSetting(kApplicationTitle, "Charges", "ActiveFilter", "none"), "0");
  }
};

TEST_F(SessionEndTest, AnOpenDialogAndWhatItOpenedGoUnstoredAndTheSettingsAreStored) {
  script.in("frmEditCharge", [](QWidget& editor) { click(editor, "Command1"); });
  script.in("frmPickDiagnosis", [](QWidget& pick) {
    tick(control<ListView>(pick, "ListView1"), "d1");
    endSession();
  });
  QTest::mouseClick(&control<QWidget>(window(), "Nuevo"), Qt::LeftButton);
  EXPECT_EQ(count("PatientCharges"), "1");
  expectEnded();
}

TEST_F(SessionEndTest, PostingRunsToItsEndAndItsReportIsNotAskedFor) {
  run("INSERT INTO PatientCharges SELECT PatientId, ChargeDate, #08:30:01#, ChargeRealDate, "
      "FacilityCode, EMCode, DoctorCode, ReferDoctorCode, 0, NULL FROM PatientCharges");
  click(frmCharges(), "optAllDates");
  services().patience = {};
  installProgressWindow();
  onStatement = [&](std::string_view statement) {
    if (!statement.starts_with("UPDATE")) return;
    onStatement = nullptr;
    endSession();
  };
  script.in("frmPostCharges", [](QWidget& dialog) { click(dialog, "OKButton"); });
  trigger(window(), "Post");
  EXPECT_EQ(rows("SELECT Status FROM PatientCharges"), "1 1");
  expectEnded();
}

}  // namespace
}  // namespace bw
