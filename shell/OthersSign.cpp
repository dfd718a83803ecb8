#include "shell/OthersSign.h"

#include <QAccessible>
#include <QEvent>
#include <QTimer>
#include <QToolBar>
#include <algorithm>
#include <chrono>
#include <utility>

#include "controls/Dialog.h"
#include "controls/EventGuard.h"
#include "controls/Icons.h"
#include "core/Principal.h"

namespace bw {
namespace {

constexpr std::chrono::seconds kBetweenLooks{3};

}  // namespace

OthersSign::OthersSign(QToolBar* bar, std::function<void()> readAnew)
    : QToolButton(bar), bar_(bar) {
  named(this, "othersSign", "Changed by another station");
  setText("Changed");
  setIcon(bw::icon("Refresh"));
  setIconSize(bar->iconSize());
  setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  setAutoRaise(true);
  setFocusPolicy(Qt::NoFocus);
  setToolTip(
      "Another station has stored something since this list was read. Press F5 to read it anew.");
  setAccessibleDescription(toolTip());
  hide();
  bar->installEventFilter(this);
  onEvent(this, &QToolButton::clicked, this, std::move(readAnew));
  auto* timer = new QTimer(this);
  onEvent(timer, &QTimer::timeout, this, [this] { look(); });
  timer->start(kBetweenLooks);
}

std::function<void()> OthersSign::watch(std::set<std::string> tables) {
  const bool isOn = !isHidden() || counts(DatabaseConnection.changesOfOthers());
  const std::set<std::string> before = std::exchange(tables_, std::move(tables));
  hide();
  place();
  return [this, isOn, before] {
    tables_ = before;
    if (isOn) tell();
  };
}

void OthersSign::look() {
  if (!tables_.empty() && isHidden() && counts(DatabaseConnection.changesOfOthers())) tell();
}

bool OthersSign::counts(const ChangesOfOthers& changes) const {
  return changes.any && !tables_.empty() &&
         (changes.tables.empty() ||
          std::ranges::any_of(changes.tables, [this](const std::string& table) {
            return tables_.contains(table);
          }));
}

void OthersSign::tell() {
  show();
  place();
  QAccessibleEvent told(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
}

// The buttons end in front of it.
void OthersSign::place() {
  const int width = isHidden() ? 0 : sizeHint().width();
  bar_->setContentsMargins(0, 0, width, 0);
  const int height = std::min(sizeHint().height(), bar_->height());
  setGeometry(bar_->width() - width, (bar_->height() - height) / 2, width, height);
}

bool OthersSign::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize || event->type() == QEvent::FontChange) place();
  return QToolButton::eventFilter(watched, event);
}

}  // namespace bw
