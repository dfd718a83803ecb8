#pragma once

#include <QPrintDialog>

namespace bw {

// The system's print dialog, whose field for several ranges ("2-3,5") the toolkit refuses whatever
// is typed: it leaves the ranges to the print server, and then misses them. Here they stand in the
// printer once the dialog is accepted, as a single range does.
class PrintDialog : public QPrintDialog {
  Q_OBJECT

 public:
  using QPrintDialog::QPrintDialog;

  void accept() override;
};

}  // namespace bw
