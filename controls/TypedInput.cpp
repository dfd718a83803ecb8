#include "controls/TypedInput.h"

#include <QWidget>

namespace bw {

bool settleInputs(QWidget& area) {
  QWidget* refused = nullptr;
  QWidget* const first = area.window();
  for (QWidget* widget = first->nextInFocusChain(); widget != first;
       widget = widget->nextInFocusChain()) {
    auto* input = dynamic_cast<TypedInput*>(widget);
    if (input == nullptr || !widget->isEnabled() || !widget->isVisible()) continue;
    if (!area.isAncestorOf(widget) || input->settle() || refused != nullptr) continue;
    refused = widget;
  }
  if (refused != nullptr) refused->setFocus(Qt::OtherFocusReason);
  return refused == nullptr;
}

}  // namespace bw
