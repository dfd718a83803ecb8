#include "shell/MainToolbar.h"

#include <QMenu>
#include <QToolBar>
#include <QToolButton>

#include "controls/Dialog.h"
#include "controls/Icons.h"
#include "core/PassOver.h"
#include "shell/OthersSign.h"
#include "shell/frmMain.h"

namespace bw {
namespace {

struct ButtonRow {
  const char* key;
  const char* caption = "";  // none: a separator
  const char* toolTip = "";
  const char* icon = "";
  const char* groups = "";    // c charges, p patients, r records, b browser, * every view
  bool toBrowser = false;     // its key is the argument of Accion
  const char* shortcut = "";  // the menus tell it where they have the command too
};

// "Fordward" is the button's name and caption, and the argument that `Accion` knows.
// clang-format off
constexpr std::array<ButtonRow, kToolbarButtons> kButtons{{
    {"Nuevo", "     New     ", "New", "New", "*"},
    {.key = "SepPrint", .groups = "cpr"},
    {"Imprimir", "Print", "Print", "Print", "*"},
    {.key = "SepDelete", .groups = "cpr"},
    {"Eliminar", "Delete", "Delete", "Delete", "cpr"},
    {.key = "SepApprove", .groups = "c"},
    {"Post", "Post...", "Post Charges", "Post", "c", false, "Ctrl+T"},
    {.key = "SepAdmit", .groups = "p"},
    {"Admit", "Admit...", "Admit Patient", "Admit", "p"},
    {"Discharge", "Discharge", "Discharge Patient", "Discharge", "p"},
    {.key = "SepBrowser", .groups = "b"},
    {"Back", "Back", "", "Back", "b", true, "Alt+Left"},
    {"Fordward", "Fordward", "", "Right", "b", true, "Alt+Right"},
    {"Stop", "Stop", "", "Stop", "b", true},
    {"Refresh", "Refresh", "", "Refresh", "b", true, "F5"},
    {"Home", "Home", "", "Home", "b", true, "Alt+Home"},
    {"Merge", "Merge", "Merge Patient info", "Merge", "p", false, "Ctrl+M"},
}};
// clang-format on

char letterOf(ToolbarGroup group) {
  switch (group) {
    case ToolbarGroup::charges:
      return 'c';
    case ToolbarGroup::patients:
      return 'p';
    case ToolbarGroup::records:
      return 'r';
    case ToolbarGroup::browser:
      return 'b';
    case ToolbarGroup::none:
      break;
  }
  return '-';
}

void run(const ButtonRow& row, frmMain& window) {
  if (row.toBrowser)
    passOver([&] { window.callView("Accion", row.key); });
  else
    window.pressButton(row.key);
}

// New is a button with a list: the list's entries open a dialog and no more.
QAction* addNewButton(QToolBar* bar, const ButtonRow& row, frmMain& window) {
  auto* list = new QMenu(bar);
  for (const RecordKind& kind : recordKinds()) {
    if (kind.newName == nullptr) continue;
    QAction* entry = list->addAction(kind.newButton);
    entry->setObjectName(kind.newName);
    onEvent(entry, &QAction::triggered, &window, [&kind] { openNew(kind); });
  }
  auto* button = named(new QToolButton(bar), row.key, row.toolTip);
  button->setPopupMode(QToolButton::MenuButtonPopup);
  button->setMenu(list);
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  button->setText(row.caption);
  button->setToolTip(row.toolTip);
  button->setIcon(icon(row.icon));
  onEvent(button, &QToolButton::clicked, &window, [&row, &window] { run(row, window); });
  return bar->addWidget(button);
}

}  // namespace

void MainToolbar::build(frmMain& window) {
  auto* bar = window.addToolBar("Toolbar");
  bar->setObjectName("tbToolBar");
  bar->setMovable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  for (std::size_t i = 0; i < kToolbarButtons; ++i) {
    const ButtonRow& row = kButtons[i];
    if (i == 0) {
      buttons_[i] = addNewButton(bar, row, window);
    } else if (*row.caption == '\0') {
      buttons_[i] = bar->addSeparator();
      buttons_[i]->setObjectName(row.key);
    } else {
      buttons_[i] = bar->addAction(icon(row.icon), row.caption);
      buttons_[i]->setObjectName(row.key);
      buttons_[i]->setIconText(row.caption);  // its dots too
      buttons_[i]->setToolTip(*row.toolTip != '\0' ? row.toolTip : row.caption);
      buttons_[i]->setShortcut(QKeySequence(row.shortcut));
      onEvent(buttons_[i], &QAction::triggered, &window, [&row, &window] { run(row, window); });
    }
  }
  sign_ = new OthersSign(bar, [&window] { window.callView("Refresca"); });
}

void MainToolbar::showGroup(ToolbarGroup group) {
  for (std::size_t i = 0; i < kToolbarButtons; ++i) {
    const std::string_view groups = kButtons[i].groups;
    buttons_[i]->setVisible(groups == "*" || groups.find(letterOf(group)) != std::string::npos);
  }
}

}  // namespace bw
