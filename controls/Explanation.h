#pragma once

class QGridLayout;
class QWidget;

namespace bw {

// Begins the layout of a dialog that first says what it does: the text, wrapped, and below it the
// grid for its fields, which is returned. What is added to the dialog's layout afterwards stands
// below both.
QGridLayout* explainedFields(QWidget* dialog, const char* labelName, const char* explanation);

}  // namespace bw
