#include <QMessageBox>

#include "controls/MessageBox.h"
#include "controls/ProgressWindow.h"
#include "shell/SessionEnd.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

class MessageBoxTest : public FormsTest {};

TEST_F(MessageBoxTest, ALongMessageShowsItsEndsAndHasTheWholeBehindAButton) {
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

class SessionEndTest : public FormsTest {
 protected:
  SessionEndTest() {
    seedCharges();
    openMainWindow();
  }
  void expectEnded() {
    ASSERT_TRUE(QTest::qWaitFor([&] { return window().isHidden(); }));
    EXPECT_EQ(GetSetting(kApplicationTitle, "Charges", "ActiveFilter", "none"), "0");
  }
};

TEST_F(SessionEndTest, AnOpenDialogAndWhatItOpenedGoUnstoredAndTheSettingsAreStored) {
  CurrentPatientId = 25000;
  script.in("frmEditCharge", [](QWidget& editor) { click(editor, "Command1"); });
  script.in("frmPickDiagnosis", [](QWidget& pick) {
    tick(listIn(pick), "d1");
    endSession();
  });
  click(window(), "Nuevo");
  EXPECT_EQ(count("PatientCharges"), "4");
  expectEnded();
}

TEST_F(SessionEndTest, PostingRunsToItsEndAndItsReportIsNotAskedFor) {
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
  EXPECT_EQ(rows("SELECT Status FROM PatientCharges"), "1 1 1 3");
  expectEnded();
}

}  // namespace
}  // namespace bw
