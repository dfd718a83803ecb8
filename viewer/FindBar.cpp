#include "viewer/FindBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include "viewer/Icons.h"

namespace bw {

namespace {

QToolButton* addButton(QHBoxLayout& layout, const char* name, const QString& text,
                       const char* icon) {
  auto* button = new QToolButton;
  button->setObjectName(name);
  button->setIcon(actionIcon(icon));
  button->setToolTip(text);
  button->setAccessibleName(text);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  layout.addWidget(button);
  return button;
}

}  // namespace

FindBar::FindBar(QWidget* parent) : QWidget(parent), edit_(new QLineEdit), note_(new QLabel) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(6, 3, 6, 3);
  auto* label = new QLabel(tr("&Find:"));
  label->setBuddy(edit_);
  edit_->setObjectName("findText");
  edit_->setAccessibleName(tr("Text to find"));
  edit_->setClearButtonEnabled(true);
  edit_->setMaximumWidth(320);
  note_->setObjectName("findNote");
  layout->addWidget(label);
  layout->addWidget(edit_, 2);
  auto* previous = addButton(*layout, "findPrevious", tr("Previous match (Shift+F3)"), "go-up");
  auto* next = addButton(*layout, "findNext", tr("Next match (F3)"), "go-down");
  layout->addWidget(note_, 1);
  layout->addStretch(1);
  auto* close = addButton(*layout, "findClose", tr("Close (Esc)"), "window-close");
  connect(edit_, &QLineEdit::textChanged, this, &FindBar::textChanged);
  connect(previous, &QToolButton::clicked, this, &FindBar::previousWanted);
  connect(next, &QToolButton::clicked, this, &FindBar::nextWanted);
  connect(close, &QToolButton::clicked, this, &FindBar::closed);
}

QString FindBar::text() const { return edit_->text(); }

void FindBar::open() {
  show();
  edit_->setFocus(Qt::ShortcutFocusReason);
  edit_->selectAll();
}

void FindBar::setNote(const QString& note) { note_->setText(note); }

void FindBar::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (event->modifiers().testFlag(Qt::ShiftModifier)) {
        emit previousWanted();
      } else {
        emit nextWanted();
      }
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace bw
