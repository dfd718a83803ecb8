#pragma once

#include <QRadioButton>
#include <functional>

#include "controls/EventGuard.h"

namespace bw {

// An option button: its handler runs when it comes on, by the user or by code, and not when it was
// on already; the others of its frame go off in silence. Tab stops at the one that is on.
class OptionButton : public QRadioButton {
 public:
  explicit OptionButton(const QString& text, QWidget* parent = nullptr)
      : QRadioButton(text, parent) {
    setFocusPolicy(Qt::ClickFocus);
    onEvent(this, &QRadioButton::toggled, this, [this](bool on) {
      setFocusPolicy(on ? Qt::StrongFocus : Qt::ClickFocus);
      if (on && onClick) onClick();
    });
  }

  std::function<void()> onClick;
};

}  // namespace bw
