#include "viewer/PrintDialog.h"

#include <QLineEdit>
#include <QPageRanges>
#include <QPrinter>
#include <QRadioButton>

namespace bw {

void PrintDialog::accept() {
  const auto* several = findChild<QRadioButton*>("pagesRadioButton");
  const auto* text = findChild<QLineEdit*>("pagesLineEdit");
  auto* all = findChild<QRadioButton*>("printAll");
  const bool chosen = several != nullptr && several->isChecked() && text != nullptr;
  const QPageRanges ranges = chosen ? QPageRanges::fromString(text->text()) : QPageRanges();
  // What is no range is left to the toolkit, which says so.
  if (ranges.isEmpty() || all == nullptr) return QPrintDialog::accept();
  all->setChecked(true);
  QPrintDialog::accept();
  printer()->setPrintRange(QPrinter::PageRange);
  printer()->setPageRanges(ranges);
}

}  // namespace bw
