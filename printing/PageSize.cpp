#include "printing/PageSize.h"

#include <QPageSetupDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <memory>

#include "core/Principal.h"
#include "platform/Conversions.h"

namespace bw {
namespace {

// Made when the page dialog is first shown; from then on it says what the page is.
std::unique_ptr<QPrinter>& chosenPrinter() {
  static std::unique_ptr<QPrinter> printer;
  return printer;
}

void setPageSize(const QSizeF& inches) {
  if (inches.isEmpty()) return;
  PageWidthInches = toInt32(inches.width());
  PageHeightInches = toInt32(inches.height());
}

}  // namespace

void readPageSize() {
  PageWidthInches = 8;
  PageHeightInches = 11;
  if (chosenPrinter())
    return setPageSize(chosenPrinter()->pageLayout().fullRect(QPageLayout::Inch).size());
  const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
  if (!printer.isNull()) setPageSize(printer.defaultPageSize().size(QPageSize::Inch));
}

void choosePageSize(QWidget* owner) {
  if (!chosenPrinter()) chosenPrinter() = std::make_unique<QPrinter>();
  QPageSetupDialog dialog(chosenPrinter().get(), owner);
  dialog.setWindowTitle("Page Setup");
  if (dialog.exec() == QDialog::Accepted) readPageSize();
}

}  // namespace bw
