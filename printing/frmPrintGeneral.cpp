#include "printing/frmPrintGeneral.h"

#include <QListWidget>
#include <QVBoxLayout>

#include "controls/QtText.h"
#include "core/AsisRutinasApoyo.h"
#include "core/Principal.h"

namespace bw {
namespace {

class PrintGeneralDialog : public Dialog {
 public:
  explicit PrintGeneralDialog(QWidget* owner)
      : Dialog("frmPrintGeneral", toQt(PrintDialogCaption), owner),
        List1(named(new QListWidget, "List1", "Reports")) {
    auto* column = new QVBoxLayout(this);
    column->addWidget(List1);
    column->addWidget(makeFoot(
        {"OKButton", "Print", "CancelButton", "Cancel"}, [this] { print(); },
        [this] { cancel(); }));
    onEvent(List1, &QListWidget::itemDoubleClicked, this, [this] { print(); });
    List1->setFocus();
    setSize(380, 240);
  }

  void load() {
    PrintDialogChoice = 0;
    std::string items = PrintDialogItems;
    for (std::string item = TakeTokenSemicolon(items); !item.empty();
         item = TakeTokenSemicolon(items))
      List1->addItem(toQt(item));
    List1->setCurrentRow(0);
  }

 private:
  void print() {
    PrintDialogChoice = static_cast<std::int16_t>(List1->currentRow() + 1);
    unload();
  }

  void cancel() {
    PrintDialogChoice = 0;
    unload();
  }

  QListWidget* List1;
};

}  // namespace

const Form& frmPrintGeneral() { return formOf<PrintGeneralDialog>(); }

}  // namespace bw
