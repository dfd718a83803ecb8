#pragma once

class QWidget;

namespace bw {

// A control that keeps what is typed into it until it is read as a whole: a date, the search of a
// list of choices. Ok, Go and their like ask every such control of their window before they act.
class TypedInput {
 public:
  virtual ~TypedInput() = default;

  // Takes over what was typed. False when it is nothing that the control can hold: its value stays
  // as it was, what was typed stays on the screen, and the control's hint says why.
  virtual bool settle() = 0;
};

// Settles all visible, enabled controls in `area`. False when one refused: the first of those, in
// the order of the Tab key, has the focus then.
bool settleInputs(QWidget& area);

}  // namespace bw
