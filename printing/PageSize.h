#pragma once

class QWidget;

namespace bw {

// Sets PageWidthInches and PageHeightInches from the printer in use: whole inches, halves to even.
// Without a printer they are 8 and 11.
void readPageSize();

// Shows the printer's page dialog, and reads the size again when it was confirmed.
void choosePageSize(QWidget* owner);

}  // namespace bw
