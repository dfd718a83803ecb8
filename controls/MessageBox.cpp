#include "controls/MessageBox.h"

#include <QApplication>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>

#include "controls/QtText.h"
#include "core/Services.h"

namespace bw {
namespace {

// What a box shows at most. A message that begins with a long statement ends with its reason: the
// middle goes, and the whole stands behind the button for details.
constexpr qsizetype kMostCharacters = 1500;

void setText(QMessageBox& box, const QString& text) {
  if (text.size() <= kMostCharacters) return box.setText(text);
  box.setText(text.left(kMostCharacters / 2) + " ... " + text.right(kMostCharacters / 2));
  box.setDetailedText(text);
}

// Right behind another box no window is active yet.
QWidget* owner() {
  if (QWidget* active = QApplication::activeWindow()) return active;
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->isVisible() && qobject_cast<QMainWindow*>(window) != nullptr) return window;
  return nullptr;
}

// Enter is OK, whatever place the desktop's order of buttons gives it. Closing an OK-only box is
// OK; Esc on OK and Cancel is Cancel.
bool show(const std::string& text, QMessageBox::StandardButtons buttons, QMessageBox::Icon icon) {
  QMessageBox box(icon, kApplicationTitle, QString(), buttons, owner());
  box.setObjectName("MsgBox");
  box.setDefaultButton(QMessageBox::Ok);
  box.setTextFormat(Qt::PlainText);
  setText(box, toQt(text));
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  return box.exec() == QMessageBox::Ok;
}

}  // namespace

void installMessageBoxes() {
  services().message = [](const std::string& text) {
    show(text, QMessageBox::Ok, QMessageBox::NoIcon);
  };
  services().confirm = [](const std::string& text) {
    return show(text, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::NoIcon);
  };
}

}  // namespace bw
