#pragma once

class QWidget;

namespace bw {

// Sets PageWidthInches and PageHeightInches from the paper chosen in Page Setup, else from that of
// the default printer: whole inches, halves to even. Without either they are 8 and 11.
void readPageSize();

// Shows Page Setup with the paper in force and reads the size again when another was confirmed.
// Lasts until the program ends.
void choosePageSize(QWidget* owner);

}  // namespace bw
