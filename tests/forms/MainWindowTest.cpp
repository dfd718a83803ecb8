#include <sys/stat.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QSettings>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>

#include "core/Principal.h"
#include "core/Services.h"
#include "lists/Settings.h"
#include "shell/frmShorcuts.h"
#include "tests/forms/FormsFixture.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

class MainWindowTest : public FormsTest {
 protected:
  QTreeWidget& tree() { return control<QTreeWidget>(frmShorcuts(), "TreeView1"); }
  std::string node() { return tree().currentItem()->text(0).toStdString(); }
  static std::string setting(const char* section, const char* key) {
    return GetSetting(kApplicationTitle, section, key, "none");
  }
  static void store(const char* section, const char* key, const char* text) {
    SaveSetting(kApplicationTitle, section, key, text);
  }
  QTreeWidgetItem* child(const char* parent, const char* text) {
    for (QTreeWidgetItemIterator item(&tree()); *item != nullptr; ++item)
      if ((*item)->text(0) == text && (*item)->parent() != nullptr &&
          (*item)->parent()->text(0) == parent)
        return *item;
    throw std::runtime_error(std::string("no node ") + text);
  }
};

TEST_F(MainWindowTest, PlacementViewAndFilterComeBack) {
  openMainWindow();
  EXPECT_EQ(window().size(), QSize(433, 433));
  EXPECT_EQ(window().VistaActualNumero, 0);
  EXPECT_EQ(window().FiltroActualNumero, 0);
  window().setGeometry(30, 40, 900, 600);
  tree().expandAll();
  frmShorcuts().FuerzaNodeClick(0, 5);
  closeMainWindow();
  EXPECT_EQ(setting("Settings", "MainWidth"), "13500");
  EXPECT_EQ(setting("settings", "ACTIVEFILTER"), "5");
  EXPECT_EQ(setting("Settings", "Shortcut"), "none");

  openMainWindow();
  EXPECT_EQ(window().geometry(), QRect(30, 40, 900, 600));
  EXPECT_EQ(window().FiltroActualNumero, 5);
  EXPECT_EQ(node(), "Posted");

  window().showMinimized();
  window().resize(700, 500);
  frmShorcuts().FuerzaNodeClick(0, 4);
  closeMainWindow();
  EXPECT_EQ(setting("Settings", "MainWidth"), "13500") << "a minimized window stores no placement";
  EXPECT_EQ(setting("Settings", "ActiveFilter"), "4");
}

TEST_F(MainWindowTest, SettingsThatCannotBeStoredKeepNobodyFromClosing) {
  openMainWindow();
  services().settingsFolder = [] { return std::filesystem::path("/dev/null/none"); };
  closeMainWindow();
  const std::vector<std::string> messages = takeMessages();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_TRUE(messages.front().starts_with("The settings cannot be stored in /dev/null/none"))
      << messages.front();
}

TEST_F(MainWindowTest, SettingsAreForTheirOwnerAlone) {
  const mode_t before = umask(0);
  store("Settings", "Shortcut", "1");
  umask(before);
  EXPECT_EQ(std::filesystem::status(services().settingsFolder() / "brantiwell.ini").permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  EXPECT_EQ(setting("Settings", "Shortcut"), "1");
}

TEST_F(MainWindowTest, AStoredTextThatNamesNothingEndsTheLoad) {
  store("Settings", "ActiveFilter", "7");  // no such node
  EXPECT_THROW(openMainWindow(), RuntimeError);
  delete MainWindow;
  store("Settings", "ActiveFilter", "0");
  store("Settings", "MainLeft", "wide");
  EXPECT_THROW(openMainWindow(), RuntimeError);
}

TEST_F(MainWindowTest, PageSetupOpensOnThePaperInForceAndKeepsItUntouched) {
  using Size = std::pair<int, int>;
  openMainWindow();
  ASSERT_EQ(Size(PageWidthInches, PageHeightInches), Size(8, 11));
  const auto setUp = [&](const char* shown, const char* paper, const char* way, bool ok) {
    script.in("frmPageSetup", [=](QWidget& dialog) {
      auto& papers = control<ComboBox>(dialog, "cmbPaper");
      EXPECT_EQ(papers.currentText().toStdString(), shown);
      if (paper != nullptr) choose(papers, paper);
      if (way != nullptr) choose(control<ComboBox>(dialog, "cmbOrientation"), way);
      click(dialog, ok ? "btnOk" : "btnCancel");
    });
    trigger(window(), "mnuFilePageSetup");
    return Size(PageWidthInches, PageHeightInches);
  };
  EXPECT_EQ(setUp("Letter", nullptr, nullptr, true), Size(8, 11));
  EXPECT_EQ(setUp("Letter", "A4", "Landscape", false), Size(8, 11));
  EXPECT_EQ(setUp("Letter", "A4", nullptr, true), Size(8, 12));
  EXPECT_EQ(setUp("A4", nullptr, nullptr, true), Size(8, 12));
  EXPECT_EQ(setUp("A4", "Letter", "Landscape", true), Size(11, 8));
  EXPECT_EQ(setUp("Letter", nullptr, "Portrait", true), Size(8, 11));
}

TEST_F(MainWindowTest, OnlyAChangeOfViewOrFilterReadsTheList) {
  openMainWindow();
  takeStatements();
  const auto press = [&](QTreeWidgetItem* item) {
    tree().scrollToItem(item);
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, tree().visualItemRect(item).center());
  };
  press(child("Brantiwell", "Charges"));
  EXPECT_TRUE(takeStatements().empty()) << "it was on show already";
  tree().expandAll();
  press(child("Charges", "Ready"));
  ASSERT_EQ(takeStatements().size(), 1U);
  trigger(window(), "mnuCurrentViewFilter(13)");
  EXPECT_EQ(node(), "Archived") << "the menu goes through the tree";
  EXPECT_TRUE(control<QAction>(window(), "mnuCurrentViewFilter(13)").isChecked());
  trigger(window(), "mnuCurrentViewFilter(13)");
  EXPECT_TRUE(control<QAction>(window(), "mnuCurrentViewFilter(13)").isChecked());
  EXPECT_EQ(takeStatements().size(), 1U);
  QTest::keyClick(&tree(), Qt::Key_Up);
  EXPECT_EQ(window().FiltroActualNumero, 5) << "a node chosen by the keyboard counts";
}

TEST_F(MainWindowTest, APressThatIsNoClickLeavesMarkAndViewTogether) {
  openMainWindow();
  window().resize(900, 600);
  const auto at = [&](const char* parent, const char* text) {
    return tree().visualItemRect(child(parent, text)).center();
  };
  QWidget* inside = tree().viewport();
  QTest::mouseClick(inside, Qt::RightButton, {}, at("Brantiwell", "Doctors"));
  EXPECT_EQ(node(), "Charges");
  QTest::mousePress(inside, Qt::LeftButton, {}, at("Brantiwell", "Doctors"));
  QTest::mouseRelease(inside, Qt::LeftButton, {}, at("Brantiwell", "Patients"));
  EXPECT_EQ(node(), "Charges");
  EXPECT_EQ(window().VistaActualNumero, 0);
  QTest::mouseClick(inside, Qt::LeftButton, {}, at("Brantiwell", "Patients"));
  QTest::mousePress(inside, Qt::LeftButton, {}, at("Brantiwell", "Doctors"));
  QTest::mouseRelease(inside, Qt::LeftButton, {}, QPoint(5, inside->height() - 5));
  EXPECT_EQ(node(), "Patients");
  EXPECT_EQ(window().VistaActualNumero, 1);
}

// The keys stand in the tips of the tree's nodes.
TEST_F(MainWindowTest, EveryViewAndFilterAndPostingHaveAKey) {
  openMainWindow();
  const auto press = [](const QString& keys) {
    const QKeyCombination key = QKeySequence(keys)[0];
    QTest::keyClick(QApplication::focusWidget(), key.key(), key.keyboardModifiers());
  };
  int filters = 0;
  for (QTreeWidgetItemIterator item(&tree()); *item != nullptr; ++item) {
    const QString tip = (*item)->toolTip(0);
    const QString text = (*item)->text(0);
    ASSERT_TRUE(tip.startsWith(text + " (") && tip.endsWith(')')) << tip.toStdString();
    tree().setFocus();
    press(tip.mid(text.size() + 2).chopped(1));
    EXPECT_EQ(tree().currentItem(), *item) << tip.toStdString();
    const auto& menu = control<QAction>(window(), "mnuCurrentView");
    if (const auto filter = window().FiltroActualNumero; filter != 0) {
      ++filters;
      const auto& entry = control<QAction>(
          window(), QString("mnuCurrentViewFilter(%1)").arg(filter).toLatin1().constData());
      EXPECT_TRUE(menu.isVisible());
      const bool inMenu = window().VistaActualNumero != 7 || filter != 1;
      EXPECT_EQ(entry.isChecked() && entry.isVisible(), inMenu) << tip.toStdString();
    } else {
      EXPECT_FALSE(tree().hasFocus()) << tip.toStdString();
    }
  }
  EXPECT_EQ(filters, 24);
  press("Ctrl+1");
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "ListView1");
  press("Ctrl+T");
  EXPECT_EQ(takeMessages(), std::vector<std::string>{"No charges to post!"});
  press("Ctrl+2");
  press("Ctrl+T");
  press("Ctrl+0");
  press("Alt+2");
  EXPECT_EQ(node(), "Diagnosis Groups") << "has no parts";
  closeConnection();
}

TEST_F(MainWindowTest, TheTreeAndTheGoToMenuStandInForEachOther) {
  openMainWindow();
  window().resize(900, 600);
  auto& view = control<QWidget>(window(), "frmCharges");
  EXPECT_FALSE(control<QAction>(window(), "mnuGoTo0").isVisible());
  const int narrow = view.width();
  trigger(window(), "mnuViewShortcuts");
  EXPECT_TRUE(control<QAction>(window(), "mnuGoTo0").isVisible());
  EXPECT_FALSE(control<QAction>(window(), "mnuViewShortcuts").isChecked());
  EXPECT_EQ(view.width(), window().clientArea()->width());
  trigger(window(), "mnuGoTo(10)");
  EXPECT_EQ(window().VistaActualNumero, 10);
  EXPECT_FALSE(view.isVisible());
  EXPECT_FALSE(control<QAction>(window(), "mnuCurrentView").isVisible());
  trigger(window(), "mnuGoTo(0)");
  trigger(window(), "mnuViewShortcuts");
  EXPECT_EQ(view.width(), narrow);
}

TEST_F(MainWindowTest, ACommandThatTheViewLacksEndsTheProgramOrDoesNothingByItsRoad) {
  openMainWindow();
  frmShorcuts().FuerzaNodeClick(10, 0);
  trigger(window(), "Eliminar");
  trigger(window(), "mnuFilePrint");
  EXPECT_TRUE(takeFatal().empty()) << "toolbar and print pass over it";
  trigger(window(), "mnuActions(2)");
  EXPECT_EQ(takeFatal(),
            std::vector<std::string>{std::string(errorText(ErrorNumber::noSuchOperation))});
  trigger(window(), "mnuViewRefresh");
  EXPECT_TRUE(takeFatal().empty());
}

// The record is stored; then a mark that nobody made is asked.
TEST_F(MainWindowTest, ANewEntryOfTheActionsMenuEndsTheProgramAfterASave) {
  openMainWindow();
  CurrentPatientId = 25000;
  script.in("frmEditCharge", [](QWidget& editor) { click(editor, "btnCancel"); });
  trigger(window(), "mnuNewAction(0)");
  EXPECT_TRUE(takeFatal().empty());
  script.in("frmEditCharge", [](QWidget& editor) { click(editor, "btnOk"); });
  trigger(window(), "mnuNewAction(0)");
  EXPECT_EQ(takeFatal(),
            std::vector<std::string>{std::string(errorText(ErrorNumber::objectRequired))});
  EXPECT_EQ(count("PatientCharges"), "2");
  closeMainWindow();
}

}  // namespace
}  // namespace bw
