#include "controls/MessageBox.h"

#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include "controls/Dialog.h"
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

// Enter is OK, whatever place the desktop's order of buttons gives it. Closing an OK-only box is
// OK; Esc on OK and Cancel is Cancel.
bool show(const std::string& text, QMessageBox::StandardButtons buttons, QMessageBox::Icon icon) {
  const QPointer<QWidget> owner = activeOwner();
  QMessageBox box(icon, kApplicationTitle, QString(), buttons, owner);
  box.setObjectName("MsgBox");
  box.setDefaultButton(QMessageBox::Ok);
  box.setTextFormat(Qt::PlainText);
  setText(box, toQt(text));
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  const bool ok = box.exec() == QMessageBox::Ok;
  comeBack(owner);
  return ok;
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
