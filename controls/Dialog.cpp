#include "controls/Dialog.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

namespace bw {

Dialog::Dialog(const char* name, const QString& caption, QWidget* owner) : QDialog(owner) {
  setObjectName(name);
  setWindowTitle(caption);
}

QWidget* Dialog::makeFoot(const Foot& foot, std::function<void()> ok,
                          std::function<void()> cancel) {
  auto* bar = new QWidget(this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addStretch();
  ok_ = makeButton(foot.okName, foot.okText, bar, std::move(ok));
  cancel_ = makeButton(foot.cancelName, foot.cancelText, bar, std::move(cancel));
  ok_->setDefault(true);
  row->addWidget(ok_);
  row->addWidget(cancel_);
  return bar;
}

void Dialog::closeEvent(QCloseEvent* event) {
  event->accept();
  done(0);
}

void Dialog::reject() {
  if (cancel_ != nullptr && isVisible())
    cancel_->click();
  else
    done(0);
}

void Dialog::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && event->modifiers().testFlag(Qt::ControlModifier) && ok_ != nullptr)
    return ok_->click();
  QDialog::keyPressEvent(event);
}

QWidget* activeOwner() { return QApplication::activeWindow(); }

void makeReadOnly(QLineEdit* box) {
  box->setReadOnly(true);
  QPalette quiet = box->palette();
  quiet.setColor(QPalette::Base, quiet.color(QPalette::Window));
  box->setPalette(quiet);
  box->setFocusPolicy(Qt::ClickFocus);
}

QString withoutMnemonic(const QString& text) {
  QString plain;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == '&' && ++i == text.size()) break;
    plain += text[i];
  }
  return plain;
}

QLabel* addField(QGridLayout* grid, int row, int column, const QString& label, QWidget* field,
                 const char* name) {
  auto* caption = new QLabel(label);
  named(field, name, withoutMnemonic(label));
  caption->setBuddy(field);
  caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  grid->addWidget(caption, row, column);
  grid->addWidget(field, row, column + 1);
  return caption;
}

QPushButton* makeButton(const char* name, const QString& text, QWidget* parent,
                        std::function<void()> handler) {
  auto* button = named(new QPushButton(text, parent), name, withoutMnemonic(text));
  button->setAutoDefault(true);
  onEvent(button, &QPushButton::clicked, button, std::move(handler));
  return button;
}

}  // namespace bw
