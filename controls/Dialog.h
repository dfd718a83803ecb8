#pragma once

#include <QDialog>
#include <QGridLayout>
#include <QPointer>
#include <QPushButton>
#include <initializer_list>

#include "controls/EventGuard.h"

class QLabel;
class QLineEdit;

namespace bw {

// A modal form. It is made when it is shown and gone when the call returns; what has to outlive it
// stands beside it, in the form that its name function returns.
//
// load() runs to its end before anything is seen, messages included. A load that ends with
// NotLoaded set unloads the form at once: the user sees the message and no dialog.
// Esc is Cancel. The close box unloads without running Ok or Cancel. Ctrl+Enter is Ok, as is Enter
// where no other button has the focus, unless the foot says that it is Cancel there.
class Dialog : public QDialog {
 public:
  Dialog(const char* name, const QString& caption, QWidget* owner);

  bool NotLoaded = false;

  void unload() { done(0); }

 protected:
  // The row of Ok and Cancel at the foot; the handlers run guarded. Ok runs only when every control
  // has taken what was typed into it (see TypedInput).
  struct Foot {
    const char* okName = "btnOk";
    const char* okText = "Ok";
    const char* cancelName = "btnCancel";
    const char* cancelText = "Cancel";
    bool enterCancels = false;  // what Ok does has no way back
  };
  QWidget* makeFoot(const Foot& foot, std::function<void()> ok, std::function<void()> cancel);
  QPushButton* okButton() const { return ok_; }
  // Pixels at the standard font; more for a larger one, as far as the screen goes. Without a height
  // what the content needs.
  void setSize(int width, int height = 0);

  void closeEvent(QCloseEvent* event) override;
  void reject() override;

 private:
  QPushButton* ok_ = nullptr;
  QPushButton* cancel_ = nullptr;
};

// F1 opens the guide while the window is the active one.
void openGuideByKey(QWidget* window);

// The window that a dialog or message opened now belongs to.
QWidget* activeOwner();

// Makes the owner of a dialog or message active when that has gone. Window managers do not when
// two windows go at once, such as a message and the dialog behind it.
void comeBack(QWidget* owner);

// Shows a dialog of a class with a load() and returns when it is unloaded; one of a family is made
// from its row of the family's table. An error in load() is one of an event: it ends the process,
// whatever the opener passes over.
template <class DialogClass, const auto&... row>
void showModal(QWidget* owner) {
  const QPointer<QWidget> below = owner;
  {
    DialogClass dialog(row..., owner);
    guarded([&] { dialog.load(); });
    if (!dialog.NotLoaded) dialog.exec();
  }
  comeBack(below);
}

// A form as the rest of the program knows it: by its name function, which returns the one
// instance. Members that outlive the dialog stand in classes derived from this.
class Form {
 public:
  using Show = void (*)(QWidget* owner);
  explicit Form(Show show) : show_(show) {}
  void showModal() const { show_(activeOwner()); }

 private:
  Show show_;
};

// The form of a dialog class.
template <class DialogClass, const auto&... row>
const Form& formOf() {
  static const Form form(showModal<DialogClass, row...>);
  return form;
}

// A label whose mnemonic leads to its buddy and presses it at once when it is a button.
QLabel* makeLabel(const QString& text, QWidget* parent = nullptr);

// Puts "label: field" into a grid, the label's mnemonic leading to the field. `label` may hold an
// "&" in front of the mnemonic's letter. The field's accessible name is the label as it is read.
QLabel* addField(QGridLayout* grid, int row, int column, const QString& label, QWidget* field,
                 const char* name);

// Names a control, for tests and assistive tools.
template <class Widget>
Widget* named(Widget* widget, const char* name, const QString& accessibleName) {
  widget->setObjectName(name);
  widget->setAccessibleName(accessibleName);
  return widget;
}

// Tab goes from one control to the next as they stand here.
void setTabs(std::initializer_list<QWidget*> controls);

// A text box that the user can read and copy from; its ground says that nothing can be typed.
void makeReadOnly(QLineEdit* box);

// A text without its mnemonic signs: "E&&M:" is "E&M:".
QString withoutMnemonic(const QString& text);

// A push button with a handler; Enter presses it only while it has the focus.
QPushButton* makeButton(const char* name, const QString& text, QWidget* parent,
                        std::function<void()> handler);

}  // namespace bw
