#include <sys/stat.h>

#include <QAction>
#include <QToolBar>
#include <QTreeWidget>
#include <map>

#include "lists/Filters.h"
#include "tests/forms/FormsFixture.h"

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
  QPoint at(const char* node) {
    const auto nodes = tree().findItems(node, Qt::MatchExactly | Qt::MatchRecursive);
    if (nodes.isEmpty()) throw std::runtime_error(concat("no node ", node));
    tree().scrollToItem(nodes.front());
    return tree().visualItemRect(nodes.front()).center();
  }
  void clickNode(const char* node, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(tree().viewport(), button, {}, at(node));
  }
  QAction& action(const std::string& name) { return control<QAction>(window(), name.c_str()); }
  QAction& entry(const char* menu, int index) { return action(concat(menu, "(", index, ")")); }
};

TEST_F(MainWindowTest, PlacementViewAndFilterComeBack) {
  openMainWindow();
  EXPECT_EQ(window().size(), QSize(433, 433));
  window().setGeometry(30, 40, 900, 600);
  frmShorcuts().FuerzaNodeClick(0, 5);
  closeMainWindow();
  EXPECT_EQ(setting("Settings", "MainWidth"), "13500");
  EXPECT_EQ(setting("settings", "ACTIVEFILTER"), "5");

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

// A window of the system that is there before its place gets that without a frame, and climbs by
// its title bar from start to start.
TEST_F(MainWindowTest, PreparedItHasNoWindowOfTheSystemYet) {
  frmMain prepared;
  prepared.prepare();
  EXPECT_EQ(prepared.windowHandle(), nullptr);
}

TEST_F(MainWindowTest, SettingsThatCannotBeStoredKeepNobodyFromClosing) {
  openMainWindow();
  services().settingsFolder = [] { return std::filesystem::path("/dev/null/none"); };
  closeMainWindow();
  EXPECT_TRUE(takeMessage().starts_with("The settings cannot be stored in /dev/null/none"));
}

TEST_F(MainWindowTest, SettingsAreForTheirOwnerAlone) {
  const mode_t before = umask(0);
  store("Settings", "Shortcut", "1");
  umask(before);
  EXPECT_EQ(std::filesystem::status(services().settingsFolder() / "brantiwell.ini").permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  EXPECT_EQ(setting("Settings", "Shortcut"), "1");
}

TEST_F(MainWindowTest, F1OpensTheGuideInDialogsToo) {
  int opened = 0;
  services().help = [&opened] { ++opened; };
  openMainWindow();
  QTest::keyClick(&window(), Qt::Key_F1);
  script.in("frmEditInsurance", [](QWidget& editor) {
    QTest::keyClick(&editor, Qt::Key_F1);
    click(editor, "btnCancel");
  });
  trigger(window(), "NewInsurance");
  EXPECT_EQ(opened, 2);
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
  const auto setUp = [&](const char* shown, const char* paper, const char* way, bool ok) {
    script.in("frmPageSetup", [=](QWidget& dialog) {
      EXPECT_EQ(chosen(dialog, "cmbPaper"), shown);
      if (paper != nullptr) choose(dialog, "cmbPaper", paper);
      if (way != nullptr) choose(dialog, "cmbOrientation", way);
      click(dialog, ok ? "btnOk" : "btnCancel");
    });
    trigger(window(), "mnuFilePageSetup");
    return Size(PageWidthInches, PageHeightInches);
  };
  EXPECT_EQ(setUp("Letter", "A4", "Landscape", false), Size(8, 11));
  EXPECT_EQ(setUp("Letter", "A4", nullptr, true), Size(8, 12));
  EXPECT_EQ(setUp("A4", nullptr, nullptr, true), Size(8, 12));
  EXPECT_EQ(setUp("A4", "Letter", "Landscape", true), Size(11, 8));
  EXPECT_EQ(setUp("Letter", nullptr, "Portrait", true), Size(8, 11));
}

TEST_F(MainWindowTest, OnlyAChangeOfViewOrFilterReadsTheList) {
  openMainWindow();
  takeStatements();
  clickNode("Charges");
  EXPECT_TRUE(takeStatements().empty()) << "it was on show already";
  tree().expandAll();
  clickNode("Ready");
  ASSERT_EQ(takeStatements().size(), 1U);
  for (int i = 0; i < 2; ++i) {
    trigger(window(), "mnuCurrentViewFilter(13)");
    EXPECT_EQ(node(), "Archived") << "the menu goes through the tree";
    EXPECT_TRUE(entry("mnuCurrentViewFilter", 13).isChecked());
  }
  EXPECT_EQ(takeStatements().size(), 1U);
  QTest::keyClick(&window(), Qt::Key_F5);
  EXPECT_EQ(takeStatements().size(), 1U);
  QTest::keyClick(&tree(), Qt::Key_Up);
  EXPECT_EQ(window().FiltroActualNumero, 5) << "a node chosen by the keyboard counts";
}

TEST_F(MainWindowTest, APressThatIsNoClickLeavesMarkAndViewTogether) {
  openMainWindow();
  window().resize(900, 600);
  QWidget* inside = tree().viewport();
  const auto pressAt = [&](const char* pressed, QPoint released) {
    QTest::mousePress(inside, Qt::LeftButton, {}, at(pressed));
    QTest::mouseRelease(inside, Qt::LeftButton, {}, released);
  };
  clickNode("Doctors", Qt::RightButton);
  EXPECT_EQ(node(), "Charges");
  pressAt("Doctors", at("Patients"));
  EXPECT_EQ(node(), "Charges");
  EXPECT_EQ(window().VistaActualNumero, 0);
  clickNode("Patients");
  pressAt("Doctors", QPoint(5, inside->height() - 5));
  EXPECT_EQ(node(), "Patients");
  EXPECT_EQ(window().VistaActualNumero, 1);
}

// The keys stand in the tips of the tree's nodes. In the menus some names are others.
TEST_F(MainWindowTest, EveryNodeHasItsKeyAndItsEntryInAMenu) {
  openMainWindow();
  const auto press = [](const QString& keys) {
    QTest::keySequence(QApplication::focusWidget(), QKeySequence(keys));
  };
  const std::map<QString, QString> inMenu{{"E & M Concepts", "Evaluation & Management Concepts"},
                                          {"Past Medical", "Medical History"},
                                          {"Past Surgical", "Surgical History"},
                                          {"Duplicated Names+DOB", "Duplicated DOB+Names"},
                                          {"Duplicated Accounts", "Duplicated Account"}};
  const auto shownEntries = [this](const char* menu, int count) {
    std::size_t shown = 0;
    for (int i = 0; i < count; ++i)
      if (entry(menu, i).isVisible()) ++shown;
    return shown;
  };
  std::map<int, std::size_t> filters;  // of each view
  for (QTreeWidgetItemIterator item(&tree()); *item != nullptr; ++item) {
    const QString tip = (*item)->toolTip(0);
    const QString text = (*item)->text(0);
    ASSERT_TRUE(tip.startsWith(text + " (") && tip.endsWith(')')) << tip.toStdString();
    tree().setFocus();
    press(tip.mid(text.size() + 2).chopped(1));
    EXPECT_EQ(tree().currentItem(), *item) << tip.toStdString();
    const int view = window().VistaActualNumero;
    const int filter = window().FiltroActualNumero;
    const QAction& line =
        filter == 0 ? entry("mnuGoTo", view) : entry("mnuCurrentViewFilter", filter);
    const QString name = line.text().replace("&&", "&");
    EXPECT_EQ(name, inMenu.contains(text) ? inMenu.at(text) : text);
    EXPECT_TRUE(line.isChecked()) << tip.toStdString();
    const bool onlyInTree = view == 7 && filter == 1;
    EXPECT_NE(line.isVisible(), onlyInTree) << tip.toStdString();
    filters[view] += filter != 0 && !onlyInTree ? 1 : 0;
    EXPECT_EQ(tree().hasFocus(), filter != 0) << tip.toStdString();
  }
  EXPECT_EQ(shownEntries("mnuGoTo", 13), filters.size());
  for (const auto& [view, count] : filters) {
    window().CambiaAVista(static_cast<std::int16_t>(view), 0);
    const bool menu = action("mnuCurrentView").isVisible();
    EXPECT_EQ(menu ? shownEntries("mnuCurrentViewFilter", 19) : 1, count + 1) << view;
  }
  press("Ctrl+1");
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "ListView1");
  press("Ctrl+T");
  EXPECT_EQ(takeMessages(), Strings{"No charges to post!"});
  press("Ctrl+2");
  press("Ctrl+T");
  press("Ctrl+0");
  press("Alt+2");
  EXPECT_EQ(node(), "Diagnosis Groups") << "has no parts";
}

// Some column of a row says what its filter is called; what has no code to bill with is incomplete.
TEST_F(MainWindowTest, AFilterShowsTheRowsThatItsNameTells) {
  seedLife();
  seedCharges();
  for (const char* statement :
       {"UPDATE PatientCharges SET Status=2 WHERE ChargeDate=#06/03/2003#",
        "INSERT INTO Procedures VALUES (41, 'Cast', 'R', 'B', 0)",
        "INSERT INTO Sickness VALUES (3, 'Appendix', 2, 0)",
        "INSERT INTO EvaluationManagement VALUES (3, 'Call', 3, 1, 1, 'B', 'R', 1, 1, 1), "
        "(4, 'Call', 4, 1, 1, 'B', 'R', 1, 1, 1)"})
    run(statement);
  openMainWindow();
  click(frmCharges(), "optAllDates");
  const auto fits = [](const std::string& filter, int row) {
    for (int column = 1; column < list().columns(); ++column) {
      const QString cell = list().model()->index(row, column).data().toString();
      const bool bills = list().column(column).text.starts_with("Billing Code");
      if (filter != "Incomplete" ? cell.contains(toQt(filter.substr(0, 4))) : bills)
        return filter != "Incomplete" || cell.isEmpty();
    }
    return false;
  };
  for (const std::int16_t view : std::initializer_list<std::int16_t>{0, 2, 3, 4, 5, 6, 7, 8}) {
    for (const ViewFilter& filter : recordKind(view).filters) {
      const std::string name(filterCaptions()[static_cast<std::size_t>(filter.number)]);
      frmShorcuts().FuerzaNodeClick(view, 0);
      std::ptrdiff_t fitting = 0;
      for (int row = 0; row < list().count(); ++row) fitting += fits(name, row) ? 1 : 0;
      const bool apart = filter.number == 13;  // archived charges are not in the whole list
      EXPECT_EQ(fitting == 0, apart) << view << name;
      EXPECT_LT(fitting, list().count()) << view << name;
      frmShorcuts().FuerzaNodeClick(view, filter.number);
      EXPECT_EQ(list().count(), apart ? 1 : fitting) << view << name;
      for (int row = 0; row < list().count(); ++row) EXPECT_TRUE(fits(name, row)) << view << name;
    }
  }
}

// An operation that a view lacks is error 438. Discharge stands in the menu of the catalogues
// without being theirs, and ends the program there.
TEST_F(MainWindowTest, ToolbarAndActionsOfferWhatTheViewCanDo) {
  openMainWindow();
  for (std::int16_t view = 0; view <= kWelcomeView; ++view) {
    window().CambiaAVista(view, view < 2 ? recordKind(view).filters[0].number : std::int16_t{0});
    const bool isList = view < kWelcomeView;
    if (isList) {
      list().clearSelected();
      answer(false);
    }
    const auto can = [&](const char* operation) {
      try {
        viewOf(recordKind(view)).call(operation);
      } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::noSuchOperation) << operation;
        return false;
      }
      return true;
    };
    for (const char* button : {"Eliminar", "Post", "Admit", "Discharge", "Merge"})
      EXPECT_EQ(action(button).isVisible(), can(button)) << view << button;
    EXPECT_TRUE(action("Imprimir").isVisible());
    EXPECT_FALSE(action("Back").isVisible());
    for (int line = 0; const char* operation : {"Post", "Admit", "Discharge"}) {
      QAction& inMenu = entry("mnuActions", line);
      const bool endsTheProgram = view > 1 && isList && line == kDischarge;
      EXPECT_EQ(inMenu.isVisible(), can(operation) || endsTheProgram) << view;
      if (endsTheProgram) inMenu.trigger();
      EXPECT_EQ(takeFatal().size(), endsTheProgram ? 1U : 0U);
      ++line;
    }
  }
  takeMessages();
  takeQuestions();
  // The welcome page is on show: toolbar and printing pass over what it lacks.
  for (const char* command : {"Eliminar", "mnuFilePrint", "mnuViewRefresh"})
    trigger(window(), command);
}

TEST_F(MainWindowTest, NewOpensTheWindowOfItsNameByEveryRoadAndCancelReadsNothing) {
  openMainWindow();
  click(frmCharges(), "optAllDates");
  const std::map<QString, QString> called{{"EM concept", "Evaluation & Management code"}};
  for (std::int16_t view = 0; view < kWelcomeView; ++view) {
    const std::string name = recordKind(view).newName;
    auto& listed = action(name);
    auto& inMenu = entry("mnuNewAction", view);
    const QString what = listed.text().mid(4).remove("...");
    EXPECT_EQ(inMenu.text().remove("...").replace("E&&M", "EM").toLower(),
              listed.text().remove("...").toLower());
    frmShorcuts().FuerzaNodeClick(view, 0);
    const std::function<void()> roads[] = {
        [&] { listed.trigger(); }, [&] { inMenu.trigger(); }, [&] { click(window(), "Nuevo"); },
        [&] { QTest::keyClick(&list(), Qt::Key_Return); }};  // opens the first row
    for (const auto& go : roads) {
      script.in(concat("frmEdit", name.substr(3)), [&](QWidget& editor) {
        EXPECT_EQ(editor.windowTitle(), called.contains(what) ? called.at(what) : what);
        takeStatements();
        click(editor, "btnCancel");
      });
      go();
      EXPECT_EQ(takeStatements().size(), 0U) << view;
    }
  }
}

// The mark is the stored filter's until the next switch. Facilities read theirs under another name
// than they write it, history items write none.
TEST_F(MainWindowTest, ColumnsAndTheMarkOfTheFilterComeBack) {
  openMainWindow();
  std::map<std::int16_t, std::int16_t> left;
  for (std::int16_t view = 0; view < kWelcomeView - 1; ++view) {
    left[view] = recordKind(view).filters[0].number;
    frmShorcuts().FuerzaNodeClick(view, left[view]);
    list().setPosition(0, 2);
    list().setWidth(0, 2222);
  }
  left[3] = left[8] = 0;
  closeMainWindow();
  store("Settings", "ActiveView", "10");
  store("Settings", "ActiveFilter", "0");
  openMainWindow();
  for (const auto& [view, filter] : left) {
    frmShorcuts().FuerzaNodeClick(view, 0);
    EXPECT_EQ(list().Position(0), 2) << view;
    EXPECT_EQ(list().Width(0), 2222) << view;
    for (std::int16_t i = 0; i < 19; ++i)
      EXPECT_EQ(entry("mnuCurrentViewFilter", i).isChecked(), i == filter) << view << ' ' << i;
  }
  EXPECT_EQ(setting("Facilities", "ActiveFilter"), "1");
}

TEST_F(MainWindowTest, AStoredFilterThatIsNoNumberCountsAsNone) {
  for (const char* section : {"Charges", "Doctors"}) store(section, "ActiveFilter", "many");
  openMainWindow();
  frmShorcuts().FuerzaNodeClick(2, 0);
  EXPECT_TRUE(entry("mnuCurrentViewFilter", 0).isChecked());
}

TEST_F(MainWindowTest, TheTreeAndTheGoToMenuStandInForEachOther) {
  openMainWindow();
  window().resize(900, 600);
  auto& view = control<QWidget>(window(), "frmCharges");
  EXPECT_FALSE(action("mnuGoTo0").isVisible());
  const int narrow = view.width();
  trigger(window(), "mnuViewShortcuts");
  EXPECT_TRUE(action("mnuGoTo0").isVisible());
  EXPECT_FALSE(action("mnuViewShortcuts").isChecked());
  EXPECT_EQ(view.width(), window().clientArea()->width());
  trigger(window(), "mnuGoTo(10)");
  EXPECT_EQ(window().VistaActualNumero, 10);
  EXPECT_FALSE(view.isVisible());
  trigger(window(), "mnuGoTo(0)");
  trigger(window(), "mnuViewShortcuts");
  EXPECT_EQ(view.width(), narrow);
  const std::pair<const char*, QWidget*> bars[] = {
      {"mnuViewToolbar", window().findChild<QToolBar*>()},
      {"mnuViewStatusBar", &control<QWidget>(window(), "sbStatusBar")}};
  for (const auto& [entry, bar] : bars)
    for (const bool shown : {false, true}) {
      trigger(window(), entry);
      EXPECT_EQ(bar->isVisible(), shown) << entry;
    }
}

// The record is stored; then a mark that nobody made is asked.
TEST_F(MainWindowTest, ANewEntryOfTheActionsMenuEndsTheProgramAfterASave) {
  openMainWindow();
  CurrentPatientId = 25000;
  script.in("frmEditCharge", [](QWidget& editor) { click(editor, "btnOk"); });
  trigger(window(), "mnuNewAction(0)");
  EXPECT_EQ(takeFatal(), Strings{std::string(errorText(ErrorNumber::objectRequired))});
  EXPECT_EQ(count("PatientCharges"), "2");
  closeMainWindow();
}

}  // namespace
}  // namespace bw
