#include "controls/Dialog.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QScreen>
#include <QShortcut>

#include "controls/Twips.h"
#include "controls/TypedInput.h"
#include "core/Services.h"

namespace bw {
namespace {

// The toolkit presses a button a tenth of a second after its mnemonic. Whoever types on by then
// would type into the wrong window, so these answer at once.
bool isOwnShortcut(QEvent* event) {
  return event->type() == QEvent::Shortcut && !static_cast<QShortcutEvent*>(event)->isAmbiguous();
}

class Button : public QPushButton {
 public:
  using QPushButton::QPushButton;

 protected:
  bool event(QEvent* event) override {
    if (!isOwnShortcut(event)) return QPushButton::event(event);
    setFocus(Qt::ShortcutFocusReason);
    click();
    return true;
  }
};

class FieldLabel : public QLabel {
 public:
  using QLabel::QLabel;

 protected:
  bool event(QEvent* event) override {
    auto* button = qobject_cast<QAbstractButton*>(buddy());
    if (button == nullptr || !isOwnShortcut(event)) return QLabel::event(event);
    button->setFocus(Qt::ShortcutFocusReason);
    button->click();
    return true;
  }
};

// Gives a text box the ground of its window, also when the desktop changes its colours.
class QuietGround : public QObject {
 public:
  explicit QuietGround(QLineEdit* box) : QObject(box), box_(box) {
    box_->installEventFilter(this);
    apply();
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::PaletteChange) apply();
    return false;
  }

 private:
  void apply() {
    QPalette quiet = box_->palette();
    const QColor ground = quiet.color(QPalette::Window);
    if (quiet.color(QPalette::Base) == ground) return;
    quiet.setColor(QPalette::Base, ground);
    box_->setPalette(quiet);
  }

  QLineEdit* box_;
};

}  // namespace

Dialog::Dialog(const char* name, const QString& caption, QWidget* owner) : QDialog(owner) {
  setObjectName(name);
  setWindowTitle(caption);
  openGuideByKey(this);
}

QWidget* Dialog::makeFoot(const Foot& foot, std::function<void()> ok,
                          std::function<void()> cancel) {
  auto* bar = new QWidget(this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, row->spacing(), 0, 0);
  row->addStretch();
  ok_ = makeButton(foot.okName, foot.okText, bar, [this, ok = std::move(ok)] {
    if (settleInputs(*this)) ok();
  });
  cancel_ = makeButton(foot.cancelName, foot.cancelText, bar, std::move(cancel));
  (foot.enterCancels ? cancel_ : ok_)->setDefault(true);
  if (foot.enterCancels) cancel_->setFocus();  // unless a field takes it
  // Shortcuts, for a button with the focus would take the key for itself.
  for (const int key : {Qt::Key_Return, Qt::Key_Enter})
    onEvent(new QShortcut(QKeySequence(Qt::CTRL | key), this), &QShortcut::activated, this,
            [this] { ok_->click(); });
  row->addWidget(ok_);
  row->addWidget(cancel_);
  return bar;
}

void Dialog::setSize(int width, int height) {
  const QSize wanted(scaledPixels(width), height == 0 ? sizeHint().height() : scaledPixels(height));
  constexpr double kShare = 0.9;  // the window manager's frame comes on top
  resize(wanted.boundedTo(screen()->availableSize() * kShare));
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

void openGuideByKey(QWidget* window) {
  onEvent(new QShortcut(QKeySequence(Qt::Key_F1), window), &QShortcut::activated, window,
          [] { services().help(); });
}

// Right behind another window no window is active yet.
QWidget* activeOwner() {
  if (QWidget* active = QApplication::activeWindow()) return active;
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->isVisible() && qobject_cast<QMainWindow*>(window) != nullptr) return window;
  return nullptr;
}

void comeBack(QWidget* owner) {
  if (owner != nullptr && owner->isVisible()) owner->activateWindow();
}

void setTabs(std::initializer_list<QWidget*> controls) {
  QWidget* before = nullptr;
  for (QWidget* control : controls) {
    if (before != nullptr) QWidget::setTabOrder(before, control);
    before = control;
  }
}

void makeReadOnly(QLineEdit* box) {
  box->setReadOnly(true);
  box->setFocusPolicy(Qt::ClickFocus);
  new QuietGround(box);
}

QString withoutMnemonic(const QString& text) {
  QString plain;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == '&' && ++i == text.size()) break;
    plain += text[i];
  }
  return plain;
}

QLabel* makeLabel(const QString& text, QWidget* parent) { return new FieldLabel(text, parent); }

QLabel* addField(QGridLayout* grid, int row, int column, const QString& label, QWidget* field,
                 const char* name) {
  QLabel* caption = makeLabel(label);
  named(field, name, withoutMnemonic(label));
  caption->setBuddy(field);
  caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  grid->addWidget(caption, row, column);
  grid->addWidget(field, row, column + 1);
  return caption;
}

QPushButton* makeButton(const char* name, const QString& text, QWidget* parent,
                        std::function<void()> handler) {
  auto* button = named(new Button(text, parent), name, withoutMnemonic(text));
  button->setAutoDefault(true);
  onEvent(button, &QPushButton::clicked, button, std::move(handler));
  return button;
}

}  // namespace bw
