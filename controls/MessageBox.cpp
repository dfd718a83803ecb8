#include "controls/MessageBox.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include "controls/QtText.h"
#include "core/Services.h"

namespace bw {
namespace {

// Closing an OK-only box is OK; Esc on OK and Cancel is Cancel.
bool show(const std::string& text, QMessageBox::StandardButtons buttons, QMessageBox::Icon icon) {
  QMessageBox box(icon, kApplicationTitle, toQt(text), buttons, QApplication::activeWindow());
  box.setObjectName("MsgBox");
  box.setTextFormat(Qt::PlainText);
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
