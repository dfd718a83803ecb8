#include <QAccessible>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QWheelEvent>
#include <algorithm>
#include <map>

#include "tests/forms/Dialogs.h"

namespace bw {
namespace {

using Stops = std::vector<QWidget*>;

// Parts that hold or decorate others, and that nobody reaches by themselves.
constexpr QAccessible::Role kFrames[] = {QAccessible::Client,    QAccessible::Border,
                                         QAccessible::Pane,      QAccessible::LayeredPane,
                                         QAccessible::ScrollBar, QAccessible::Separator,
                                         QAccessible::StatusBar, QAccessible::Grip,
                                         QAccessible::ToolBar,   QAccessible::MenuBar};

std::string nameOf(const QObject* object) {
  return std::string(object->metaObject()->className()) + " " + fromQt(object->objectName());
}

// What an assistive tool reads of the controls on show. Rows of lists are not walked: their names
// are the office's data.
void checkNames(QAccessibleInterface* node, Strings& faults) {
  for (int i = 0; i < node->childCount(); ++i) {
    QAccessibleInterface* child = node->child(i);
    if (child == nullptr || child->object() == nullptr || child->state().invisible) continue;
    if (child->role() == QAccessible::NoRole)
      faults.push_back(nameOf(child->object()) + ": no role");
    if (std::ranges::count(kFrames, child->role()) == 0 &&
        child->text(QAccessible::Name).trimmed().isEmpty())
      faults.push_back(nameOf(child->object()) + ": no name");
    if (!child->object()->inherits("QAbstractItemView") &&
        !child->object()->inherits("QComboBox") && !child->object()->inherits("QAbstractSpinBox"))
      checkNames(child, faults);
  }
}

void checkClashes(const QStringList& texts, const std::string& where, Strings& faults) {
  std::map<QString, int> letters;
  for (const QString& text : texts) {
    const QString key = QKeySequence::mnemonic(text).toString();
    if (!key.isEmpty() && ++letters[key] == 2)
      faults.push_back(where + ": " + fromQt(key) + " stands twice");
  }
}

void checkMnemonics(const QWidget& window, Strings& faults) {
  QStringList texts;
  for (const auto* button : window.findChildren<QAbstractButton*>())
    if (button->isVisible()) texts << button->text();
  for (const auto* box : window.findChildren<QGroupBox*>())
    if (box->isVisible()) texts << box->title();
  for (const auto* label : window.findChildren<QLabel*>())
    if (label->isVisible() && label->buddy() != nullptr) texts << label->text();
  for (const auto* bar : window.findChildren<QMenuBar*>())
    for (const QAction* entry : bar->actions()) texts << entry->text();  // hidden ones clash
  checkClashes(texts, "window", faults);
  for (const QMenu* menu : window.findChildren<QMenu*>()) {
    QStringList entries;
    for (const QAction* entry : menu->actions())
      if (entry->isVisible()) entries << entry->text();
    checkClashes(entries, "menu " + fromQt(menu->objectName()), faults);
  }
}

// The part of `ancestor` that holds the control, and where it stands in it.
QRect partOf(const QWidget* ancestor, const QWidget* control) {
  while (control->parentWidget() != ancestor) control = control->parentWidget();
  return control->geometry();
}

// Down a column, then the next column from its top.
bool readsBackwards(const QWidget* from, const QWidget* to) {
  const QWidget* common = from->parentWidget();
  while (!common->isAncestorOf(to)) common = common->parentWidget();
  const QRect before = partOf(common, from);
  const QRect after = partOf(common, to);
  if (after.bottom() <= before.top()) return after.left() <= before.right();
  const bool sameLine = after.top() < before.bottom() && before.top() < after.bottom();
  return sameLine && after.left() < before.left();
}

// Where real presses of the key lead until they come round, from what stands at the top, and there
// at the left.
Stops stopsOf(QWidget& window, Qt::Key key) {
  constexpr std::size_t kMost = 60;
  Stops stops;
  for (std::size_t presses = 0; presses < kMost; ++presses) {
    QWidget* before = window.focusWidget();
    QTest::keyClick(before == nullptr ? &window : before, key);
    QWidget* now = window.focusWidget();
    if (now == nullptr || now == before) continue;
    if (!stops.empty() && now == stops.front()) break;
    stops.push_back(now);
  }
  const auto place = [&window](const QWidget* stop) {
    const QPoint corner = stop->mapTo(&window, QPoint());
    return std::pair(corner.y(), corner.x());
  };
  std::rotate(stops.begin(), std::ranges::min_element(stops, {}, place), stops.end());
  return stops;
}

void checkTabOrder(QWidget& window, Strings& faults) {
  const Stops stops = stopsOf(window, Qt::Key_Tab);
  if (stops.empty()) return faults.push_back("no control takes the focus");
  for (const auto* widget : window.findChildren<QWidget*>())
    if ((widget->focusPolicy() & Qt::TabFocus) && widget->isEnabled() && widget->isVisible() &&
        widget->focusProxy() == nullptr && std::count(stops.begin(), stops.end(), widget) != 1)
      faults.push_back(nameOf(widget) + ": not reached once");
  for (std::size_t i = 1; i < stops.size(); ++i)
    if (readsBackwards(stops[i - 1], stops[i]))
      faults.push_back(nameOf(stops[i - 1]) + " goes back to " + nameOf(stops[i]));
  Stops back = stopsOf(window, Qt::Key_Backtab);
  if (!back.empty()) std::reverse(back.begin() + 1, back.end());
  if (back != stops) faults.push_back("Shift+Tab goes another way");
}

void checkEmptyLists(const QWidget& window, Strings& faults) {
  for (const auto* list : window.findChildren<ListView*>())
    if (list->count() == 0 && list->accessibleDescription().isEmpty())
      faults.push_back(nameOf(list) + ": does not say why it is empty");
}

// The wheel over a box that has not the focus.
void checkWheel(const QWidget& window, Strings& faults) {
  for (auto* box : window.findChildren<QComboBox*>()) {
    const int before = box->currentIndex();
    QWheelEvent event({5, 5}, box->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    if (!box->hasFocus()) QApplication::sendEvent(box, &event);
    if (box->currentIndex() != before) faults.push_back(nameOf(box) + ": turned by the wheel");
  }
}

Strings faultsOf(QWidget& window) {
  Strings faults;
  QAccessibleInterface* root = QAccessible::queryAccessibleInterface(&window);
  if (root->text(QAccessible::Name).isEmpty()) faults.push_back("no caption");
  checkNames(root, faults);
  checkMnemonics(window, faults);
  checkTabOrder(window, faults);
  checkEmptyLists(window, faults);
  checkWheel(window, faults);
  return faults;
}

class DialogAccessibilityTest : public FormsTest, public testing::WithParamInterface<DialogRow> {};

// Left by Esc; by Enter as well where Ok does what has no way back.
TEST_P(DialogAccessibilityTest, IsNamedReachedInOrderAndLeftWithoutAnAct) {
  const DialogRow& row = GetParam();
  takeRecordsOfSmallOffice();
  openMainWindow();
  script.in(row.name, [&](QWidget& dialog) {
    EXPECT_EQ(faultsOf(dialog), Strings{});
    EXPECT_NE(control<QPushButton>(dialog, row.ok).isDefault(), row.enterCancels);
    takeStatements();
    QTest::keyClick(dialog.focusWidget(), row.enterCancels ? Qt::Key_Return : Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(takeStatements(), Strings{});
  });
  row.open();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window())) << "the window below takes over";
}

INSTANTIATE_TEST_SUITE_P(Forms, DialogAccessibilityTest, testing::ValuesIn(kDialogs),
                         [](const auto& each) { return std::string(each.param.name); });

class EmptyOfficeTest : public FormsTest {};

TEST_F(EmptyOfficeTest, AChoiceOfNothingSaysWhatToDoAndEscLeavesNoAnswer) {
  openMainWindow();
  PickedPatientId = PickedDoctorCode = PickedInsuranceCode = 7;
  chargeOpener().PickResult = patientOpener().PickResult = "before";
  for (const char* table : {"PatientHistory", "PatientCharges", "Sickness", "Diagnosis",
                            "Procedures", "DoctorCoveringDoctors", "PatientDoctors", "Patient",
                            "Insurance", "EvaluationManagement", "Doctors"})
    run(std::string("DELETE FROM ") + table);
  for (const DialogRow& row : kDialogs) {
    if (!QByteArrayView(row.name).startsWith("frmPick")) continue;
    script.in(row.name, [&](QWidget& dialog) {
      EXPECT_EQ(listIn(dialog).count(), 0) << row.name;
      EXPECT_EQ(faultsOf(dialog), Strings{}) << row.name;
      QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    row.open();
  }
  EXPECT_EQ(PickedPatientId + PickedDoctorCode + PickedInsuranceCode, 0);
  EXPECT_EQ(chargeOpener().PickResult + patientOpener().PickResult, "");
}

class ViewAccessibilityTest : public FormsTest, public testing::WithParamInterface<int> {};

TEST_P(ViewAccessibilityTest, IsNamedAndReachedInOrder) {
  openMainWindow();
  window().resize(1200, 700);
  window().CambiaAVista(static_cast<std::int16_t>(GetParam()), 0);
  QApplication::processEvents();
  EXPECT_EQ(faultsOf(window()), Strings{});
}

INSTANTIATE_TEST_SUITE_P(Views, ViewAccessibilityTest, testing::Range(0, 11));

}  // namespace
}  // namespace bw
