#include <QRadioButton>
#include <QTimer>
#include <QTreeWidget>

#include "controls/EscapeKey.h"
#include "tests/forms/FormsFixture.h"
#include "text/BrokenOff.h"

namespace bw {
namespace {

// A reading that the user breaks off, by every road that leads to one.
class BrokenOffTest : public FormsTest {
 protected:
  BrokenOffTest() {
    seedCharges();
    openView(0);
    CurrentPatientId = 25000;
    click(frmCharges(), "optAllDates");
    click(frmCharges(), "optSelectedPatients");
    clickHead(list(), list().columnOf("Doctor"));
    control<QWidget>(frmCharges(), "optSelectedPatients").setFocus();
  }

  // Without the focus that a click brings.
  static void press(const char* button) { control<QAbstractButton>(frmCharges(), button).click(); }

  // All that a reading could have changed, a line each.
  std::string onShow() {
    QApplication::processEvents();
    QStringList lines{QString("view %1, filter %2, patient %3, sorted %4")
                          .arg(window().VistaActualNumero)
                          .arg(window().FiltroActualNumero)
                          .arg(CurrentPatientId)
                          .arg(list().sorted())};
    for (const QAction* action : window().findChildren<QAction*>())
      if (!action->text().isEmpty())
        lines << action->text() + (action->isChecked() ? " checked" : "") +
                     (action->isVisible() ? " visible " : " ") + action->shortcut().toString();
    lines << control<QTreeWidget>(window(), "TreeView1").currentItem()->text(0);
    lines << QApplication::focusWidget()->objectName();
    for (const View* view : window().findChildren<View*>())
      if (view->isVisible()) lines << view->objectName();
    for (const auto* option : frmCharges().findChildren<QRadioButton*>())
      if (option->isChecked()) lines << option->objectName();
    for (const auto* box : frmCharges().findChildren<QLineEdit*>())
      lines << box->objectName() + box->text() + (box->isEnabled() ? " enabled" : "");
    for (int column = 0; column < list().columns(); ++column)
      lines << QString::number(list().Width(column));
    for (const std::string& doctor : shownTexts(list(), 3)) lines << toQt(doctor);
    return fromQt(lines.join('\n'));
  }
};

TEST_F(BrokenOffTest, EverythingIsAsItWasOnEveryRoad) {
  struct Road {
    const char* name;
    std::function<void()> go;
    const char* table = "ChargesDescriptive";
  };
  QWidget& tree = control<QTreeWidget>(window(), "TreeView1");
  const Road roads[] = {
      {"refresh", [&] { trigger(window(), "mnuViewRefresh"); }},
      {"an option", [&] { press("optSelectedDates"); }},
      {"an option that hides a column", [&] { press("optSelectedInsurances"); }},
      {"an option that shows one", [&] { press("optAllPatients"); }},
      {"go", [&] { press("btnGo2"); }},
      {"a search",
       [&] {
         script.in("frmPickPatient", picks("Jones, Bob"));
         press("btnSearchPatient");
       }},
      {"a key in the tree, to a view that is new", [&] { QTest::keyClick(&tree, Qt::Key_Down); },
       "PatientsDescriptive"},
      {"a filter of the menu", [&] { trigger(window(), "mnuCurrentViewFilter(5)"); }},
      {"a catalogue", [&] { trigger(window(), "mnuGoTo(2)"); }, "Doctors"},
  };
  for (const Road& road : roads) {
    const std::string before = onShow();
    int broken = 0;
    onStatement = [&](std::string_view statement) {
      if (!statement.starts_with(concat("SELECT * FROM ", road.table))) return;
      ++broken;
      throw BrokenOff();
    };
    road.go();
    onStatement = nullptr;
    EXPECT_EQ(broken, 1) << road.name;
    EXPECT_EQ(onShow(), before) << road.name;
  }
  clickHead(list(), list().columnOf("ChargeRealDate"));  // the records are there
  closeMainWindow();
  EXPECT_EQ(GetSetting(kApplicationTitle, "Charges", "ActiveFilter", ""), "0");
}

TEST_F(BrokenOffTest, EscEndsALongReadingAndNoEventRunsMeanwhile) {
  run("INSERT INTO PatientCharges WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n "
      "WHERE i < 86399) SELECT 25000, '2001-01-01', time(i, 'unixepoch'), '2001-01-01', 1, 1, 1, "
      "2, 0, NULL FROM n");
  bool isPressed = true;
  int asked = 0;
  const auto usual = std::exchange(watchEscape(), [&] {
    return [&] {
      ++asked;
      EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
      return isPressed;
    };
  });
  bool hasRung = false;
  QTimer::singleShot(0, &window(), [&hasRung] { hasRung = true; });  // not behind the test
  trigger(window(), "mnuViewRefresh");
  EXPECT_EQ(asked, 1);
  EXPECT_FALSE(hasRung);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(list().count(), 1);
  isPressed = false;
  trigger(window(), "mnuViewRefresh");
  EXPECT_GT(asked, 1);
  EXPECT_EQ(list().count(), 86401);
  watchEscape() = usual;
}

}  // namespace
}  // namespace bw
