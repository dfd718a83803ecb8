#include "shell/MainMenus.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <algorithm>

#include "controls/EventGuard.h"
#include "controls/QtText.h"
#include "core/PassOver.h"
#include "shell/frmMain.h"

namespace bw {
namespace {

enum class Kind { menu, hiddenMenu, item, checkable, separator, hiddenItem, hiddenSeparator };

struct MenuRow {
  Kind kind = Kind::item;
  const char* name = "";
  const char* text = "";
  const char* shortcut = "";
  void (*run)(frmMain&) = nullptr;
};

void refresh(frmMain& window) { window.callView("Refresca"); }
void print(frmMain& window) {
  passOver([&] { window.callView("Imprimir"); });
}

QToolBar* toolbarOf(frmMain& window) { return window.findChild<QToolBar*>("tbToolBar"); }
void toggleToolbar(frmMain& window) {
  toolbarOf(window)->setVisible(window.findChild<QAction*>("mnuViewToolbar")->isChecked());
}
void toggleStatusBar(frmMain& window) {
  window.statusBar()->setVisible(window.findChild<QAction*>("mnuViewStatusBar")->isChecked());
}

// Entries that are hidden here are never shown. The menus CurrentView, GoTo and Actions are filled
// from their own tables.
// clang-format off
constexpr MenuRow kRows[] = {
    {Kind::menu, "mnuFile", "&File"},
    {Kind::hiddenItem, "mnuFileNew", "Ne&w", "Ctrl+N"},
    {Kind::hiddenItem, "mnuFileOpen", "&Open...", "Ctrl+O"},
    {Kind::hiddenItem, "mnuFileClose", "&Close"},
    {Kind::hiddenSeparator, "mnuFileBar0"},
    {Kind::hiddenItem, "mnuFileProperties", "&Properties"},
    {Kind::hiddenSeparator, "mnuFileBar1"},
    {Kind::item, "mnuFilePageSetup", "Page set&up", "", [](frmMain& window) { window.pageSetup(); }},
    {Kind::hiddenItem, "mnuFilePrintPreview", "Print Pre&view"},
    {Kind::item, "mnuFilePrint", "P&rint...", "Ctrl+P", print},
    {Kind::separator, "mnuFileBar2"},
    {Kind::item, "mnuFileExit", "Ex&it", "Ctrl+Q", [](frmMain& window) { window.close(); }},
    // Hidden: the text fields bring these commands themselves.
    {Kind::hiddenMenu, "mnuEdit", "&Edit"},
    {Kind::hiddenItem, "mnuEditUndo", "&Undo"},
    {Kind::hiddenSeparator, "mnuEditBar0"},
    {Kind::hiddenItem, "mnuEditCut", "Cu&t", "Ctrl+X"},
    {Kind::hiddenItem, "mnuEditCopy", "&Copy", "Ctrl+C"},
    {Kind::hiddenItem, "mnuEditPaste", "&Paste", "Ctrl+V"},
    {Kind::menu, "mnuView", "&View"},
    {Kind::checkable, "mnuViewToolbar", "&Toolbar", "", toggleToolbar},
    {Kind::checkable, "mnuViewStatusBar", "&Status Bar", "", toggleStatusBar},
    {Kind::checkable, "mnuViewShortcuts", "S&hortcuts", "", [](frmMain& window) { window.toggleShortcuts(); }},
    {Kind::separator, "mnuViewBar0"},
    {Kind::item, "mnuViewRefresh", "&Refresh", "", refresh},
    {Kind::menu, "mnuTools", "&Tools"},
    {Kind::item, "mnuToolsArchive", "&Archive Charges...", "", [](frmMain& window) { window.archiveCharges(); }},
    {Kind::menu, "mnuActions0", "&Actions"},
    {Kind::menu, "mnuHelp", "H&elp"},
    {Kind::hiddenItem, "mnuHelpContents", "&Content"},
    {Kind::hiddenItem, "mnuHelpSearchForHelpOn", "&Search for Help about..."},
    {Kind::hiddenSeparator, "mnuHelpBar0"},
    {Kind::item, "mnuHelpAbout", "&About Brantiwell PC", "", [](frmMain& window) { window.about(); }},
};

struct ActionRow {
  const char* text;
  const char* operation;
  const char* toolbarKey = "";  // told only: the toolbar's button hears it
};
// By Action.
constexpr ActionRow kActions[] = {{"Post...", "Post", "Ctrl+T"}, {"&Admit", "Admit"}, {"&Discharge", "Discharge"}};
// clang-format on

QAction* addEntry(QMenu* menu, const MenuRow& row, frmMain& window) {
  QAction* action = menu->addAction(row.text);
  action->setObjectName(row.name);
  action->setSeparator(row.kind == Kind::separator || row.kind == Kind::hiddenSeparator);
  action->setVisible(row.kind != Kind::hiddenItem && row.kind != Kind::hiddenSeparator);
  if (*row.shortcut != '\0') action->setShortcut(QKeySequence(row.shortcut));
  if (row.kind == Kind::checkable) {
    action->setCheckable(true);
    action->setChecked(true);
  }
  if (row.run != nullptr)
    onEvent(action, &QAction::triggered, &window, [run = row.run, &window] { run(window); });
  return action;
}

}  // namespace

void MainMenus::build(frmMain& window) {
  QMenuBar* bar = window.menuBar();
  QMenu* menu = nullptr;
  for (const MenuRow& row : kRows) {
    if (row.kind != Kind::menu && row.kind != Kind::hiddenMenu) {
      addEntry(menu, row, window);
      continue;
    }
    menu = new QMenu(row.text, bar);
    menu->setObjectName(row.name);
    // The bar gives a mnemonic to what it hides as well, and two of a letter open neither.
    if (row.kind == Kind::menu) bar->addMenu(menu);
  }
  auto* view = bar->findChild<QMenu*>("mnuView");
  auto* currentView = new QMenu("Current View", view);
  auto* goTo = new QMenu("Go To", view);
  QAction* before = view->actions().front();
  currentViewMenu_ = view->insertMenu(before, currentView);
  currentViewMenu_->setObjectName("mnuCurrentView");
  goToMenu_ = view->insertMenu(before, goTo);
  goToMenu_->setObjectName("mnuGoTo0");
  shortcuts_ = window.findChild<QAction*>("mnuViewShortcuts");
  refresh_ = window.findChild<QAction*>("mnuViewRefresh");
  buildArrays(window, currentView, goTo, bar->findChild<QMenu*>("mnuActions0"));
}

void MainMenus::buildArrays(frmMain& window, QMenu* currentView, QMenu* goTo, QMenu* actions) {
  const auto add = [&](QMenu* menu, const QString& text, const char* name, int index,
                       auto handler) {
    QAction* action = menu->addAction(text);
    action->setObjectName(QString("%1(%2)").arg(name).arg(index));
    onEvent(action, &QAction::triggered, &window, [action, handler] {
      // The check mark follows what is on show, not the click.
      if (action->isCheckable()) action->setChecked(!action->isChecked());
      handler();
    });
    return action;
  };
  for (const std::string_view caption : filterCaptions()) {
    const auto i = static_cast<std::int16_t>(filters_.size());
    // The captions name what they show; an "&" in one is a letter, not a mnemonic.
    filters_.push_back(add(currentView, toQt(caption).replace("&", "&&"), "mnuCurrentViewFilter", i,
                           [&window, i] { window.chooseFilter(i); }));
    filters_.back()->setCheckable(true);
  }
  treeFilter_ = new QAction(&window);
  window.addAction(treeFilter_);
  onEvent(treeFilter_, &QAction::triggered, &window, [this, &window] {
    window.chooseFilter(static_cast<std::int16_t>(treeFilter_->data().toInt()));
  });
  for (const RecordKind& kind : recordKinds()) {
    const auto i = static_cast<std::int16_t>(goTo_.size());
    goTo_.push_back(add(goTo, kind.caption, "mnuGoTo", i, [&window, i] { window.chooseView(i); }));
    goTo_.back()->setCheckable(true);
    goTo_.back()->setVisible(kind.reachable);
    goTo_.back()->setShortcut(QKeySequence(kind.shortcut));
    window.addAction(goTo_.back());  // for its keys: the menu is hidden while the tree is on show
  }
  for (std::size_t i = 0; i < std::size(kActions); ++i) {
    actions_[i] = add(actions, kActions[i].text, "mnuActions", static_cast<int>(i),
                      [&window, operation = kActions[i].operation] { window.callView(operation); });
    actions_[i]->setShortcut(QKeySequence(kActions[i].toolbarKey));
    actions_[i]->setShortcutContext(Qt::WidgetShortcut);
  }
  actions->addSeparator()->setObjectName("mnuActionsDummy");
  int index = 0;
  for (const RecordKind& kind : recordKinds()) {
    const int i = index++;
    if (kind.newName == nullptr) continue;
    const char* text = kind.newEntry != nullptr ? kind.newEntry : kind.newButton;
    add(actions, QString(text).replace("&", "&&"), "mnuNewAction", i,
        [&window, i] { window.newFromMenu(i); });
  }
}

namespace {

void checkOnly(const std::vector<QAction*>& entries, std::int16_t checked) {
  for (std::size_t i = 0; i < entries.size(); ++i)
    entries[i]->setChecked(static_cast<std::int16_t>(i) == checked);
}

}  // namespace

void MainMenus::checkView(std::int16_t view) { checkOnly(goTo_, view); }

void MainMenus::checkFilter(std::int16_t filter) { checkOnly(filters_, filter); }

std::int16_t MainMenus::checkedFilter() const {
  const auto checked = std::ranges::find_if(filters_, &QAction::isChecked);
  return static_cast<std::int16_t>(checked == filters_.end() ? -1 : checked - filters_.begin());
}

void MainMenus::showFilters(const RecordKind& kind) {
  for (std::size_t i = 1; i < filters_.size(); ++i) filters_[i]->setVisible(false);
  treeFilter_->setShortcut({});
  for (const ViewFilter& filter : kind.filters) {
    const bool inMenu = filter.in != ViewFilter::In::tree;
    filters_[static_cast<std::size_t>(filter.number)]->setVisible(inMenu);
    if (inMenu) continue;
    treeFilter_->setData(filter.number);
    treeFilter_->setShortcut(toQt(filterKeys(kind, filter.number)));
  }
  for (std::size_t i = 0; i < filters_.size(); ++i)
    filters_[i]->setShortcut(filters_[i]->isVisible()
                                 ? toQt(filterKeys(kind, static_cast<std::int16_t>(i)))
                                 : QString());
}

void MainMenus::showActions(const RecordKind& kind) {
  for (QAction* action : actions_) action->setVisible(false);
  for (const Action action : kind.actions) actions_[action]->setVisible(true);
}

}  // namespace bw
