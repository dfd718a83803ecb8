#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QToolBar>
#include <array>

#include "viewer/Icons.h"
#include "viewer/PageView.h"
#include "viewer/ViewerWindow.h"

namespace bw {

namespace {

enum Trait : unsigned {
  plain = 0,
  needsPages = 1,  // disabled while there is nothing to show
  checkable = 2,
  onToolbar = 4,
  groupBefore = 8,  // a line in front, in the menu and on the toolbar
};

}  // namespace

struct Command {
  const char* name;  // objectName of the action
  const char* menu;
  const char* text;
  const char* keys;  // several are separated by ";"
  const char* icon;
  unsigned traits;
  void (*run)(ViewerWindow&);
};

struct ViewerWindow::Commands {
  // clang-format off
  static constexpr std::array kTable = {
    Command{"open", "&File", "&Open...", "Ctrl+O", "document-open", onToolbar,
            [](ViewerWindow& w) { w.open(); }},
    Command{"reload", "&File", "&Reload", "F5; Ctrl+R", "view-refresh", needsPages,
            [](ViewerWindow& w) { w.reload(); }},
    Command{"savePdf", "&File", "Save as P&DF...", "Ctrl+S", "document-save-as",
            needsPages | onToolbar | groupBefore, [](ViewerWindow& w) { w.savePdf(); }},
    Command{"exportCsv", "&File", "&Export table (CSV)...", "Ctrl+E", "document-export",
            needsPages | onToolbar, [](ViewerWindow& w) { w.exportTable(); }},
    Command{"print", "&File", "&Print...", "Ctrl+P", "document-print",
            needsPages | onToolbar | groupBefore, [](ViewerWindow& w) { w.print(); }},
    Command{"close", "&File", "&Close", "Ctrl+W; Ctrl+Q", "", groupBefore,
            [](ViewerWindow& w) { w.close(); }},
    Command{"copy", "&Edit", "&Copy", "Ctrl+C", "edit-copy", plain,
            [](ViewerWindow& w) { w.copy(); }},
    Command{"selectPage", "&Edit", "Select &page", "Ctrl+A", "", needsPages,
            [](ViewerWindow& w) { w.selectPage(); }},
    Command{"find", "&Edit", "&Find...", "Ctrl+F", "edit-find",
            needsPages | onToolbar | groupBefore, [](ViewerWindow& w) { w.openFind(); }},
    Command{"findNext", "&Edit", "Find &next", "F3; Ctrl+G", "", needsPages,
            [](ViewerWindow& w) { w.findAgain(Finder::Direction::forward); }},
    Command{"findPrevious", "&Edit", "Find pre&vious", "Shift+F3; Ctrl+Shift+G", "", needsPages,
            [](ViewerWindow& w) { w.findAgain(Finder::Direction::backward); }},
    Command{"zoomOut", "&View", "Zoom &out", "Ctrl+-", "zoom-out",
            needsPages | onToolbar | groupBefore, [](ViewerWindow& w) { w.view_->zoomOut(); }},
    Command{"zoomIn", "&View", "Zoom &in", "Ctrl++; Ctrl+=", "zoom-in", needsPages | onToolbar,
            [](ViewerWindow& w) { w.view_->zoomIn(); }},
    Command{"naturalSize", "&View", "&Natural size", "Ctrl+0", "", needsPages,
            [](ViewerWindow& w) { w.view_->setZoom(1); }},
    Command{"fitWidth", "&View", "Fit &width", "Ctrl+1", "zoom-fit-width",
            needsPages | checkable | onToolbar,
            [](ViewerWindow& w) { w.view_->setFit(PageView::Fit::width); }},
    Command{"fitPage", "&View", "Fit &page", "Ctrl+2", "zoom-fit-best",
            needsPages | checkable | onToolbar,
            [](ViewerWindow& w) { w.view_->setFit(PageView::Fit::page); }},
    Command{"fullWidth", "&View", "&Columns at full width", "Ctrl+3", "", needsPages | checkable,
            [](ViewerWindow& w) { w.toggleFullWidth(); }},
    Command{"thumbnailPane", "&View", "Page pi&ctures", "F9", "view-sidebar",
            checkable | onToolbar | groupBefore, [](ViewerWindow& w) { w.toggleThumbnails(); }},
    Command{"nextPage", "&Go", "&Next page", "Ctrl+PgDown; Alt+Right", "go-down", needsPages,
            [](ViewerWindow& w) { w.step(1); }},
    Command{"previousPage", "&Go", "&Previous page", "Ctrl+PgUp; Alt+Left", "go-up", needsPages,
            [](ViewerWindow& w) { w.step(-1); }},
    Command{"typePage", "&Go", "Go to p&age...", "Ctrl+L", "", needsPages,
            [](ViewerWindow& w) { w.typePage(); }},
    Command{"backToPages", "&Go", "&Back to the pages", "Esc", "", groupBefore,
            [](ViewerWindow& w) { w.backToPages(); }},
  };
  // clang-format on
};

namespace {

QMenu* menuNamed(QMenuBar& bar, const QString& title) {
  for (QAction* action : bar.actions()) {
    if (action->text() == title) return action->menu();
  }
  return bar.addMenu(title);
}

}  // namespace

void ViewerWindow::addCommands() {
  QToolBar* bar = addToolBar(tr("Commands"));
  bar->setObjectName("toolbar");
  bar->setMovable(false);
  for (const Command& command : Commands::kTable) {
    auto* action = new QAction(tr(command.text), this);
    action->setObjectName(command.name);
    action->setShortcuts(QKeySequence::listFromString(command.keys));
    if (*command.icon != '\0') action->setIcon(actionIcon(command.icon));
    action->setCheckable((command.traits & checkable) != 0);
    action->setProperty("needsPages", (command.traits & needsPages) != 0);
    connect(action, &QAction::triggered, this, [this, run = command.run] { run(*this); });
    QMenu* menu = menuNamed(*menuBar(), tr(command.menu));
    const bool group = (command.traits & groupBefore) != 0;
    if (group) menu->addSeparator();
    menu->addAction(action);
    if ((command.traits & onToolbar) == 0) continue;
    if (group) bar->addSeparator();
    bar->addAction(action);
  }
}

void ViewerWindow::updateCommands() {
  const bool pages = document_ != nullptr && document_->pageCount() > 0;
  for (QAction* action : findChildren<QAction*>()) {
    const QVariant needs = action->property("needsPages");
    if (needs.isValid() && needs.toBool()) action->setEnabled(pages);
  }
  const auto mark = [this](const char* name, bool checked) {
    findChild<QAction*>(name)->setChecked(checked);
  };
  mark("fitWidth", view_->fit() == PageView::Fit::width);
  mark("fitPage", view_->fit() == PageView::Fit::page);
  mark("fullWidth", view_->isNatural());
  findChild<QAction*>("fullWidth")->setEnabled(!fitting_->text().isEmpty());
  findChild<QAction*>("copy")->setEnabled(view_->hasSelection());
}

}  // namespace bw
