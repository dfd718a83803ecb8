#include "charges/frmPostCharges.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <optional>

#include "charges/frmCharges.h"
#include "controls/Explanation.h"
#include "controls/QtText.h"
#include "core/Services.h"
#include "text/Conversions.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

// The whole number that a text stands for; nothing when it is none, or one beyond 32 bits.
std::optional<std::int32_t> lotOf(const std::string& text) {
  try {
    return toInt32(text);
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

// A negative number leaves the lots of the charges as they are.
QString whatIsStored(const std::optional<std::int32_t>& lot) {
  if (!lot) return "no lot number";
  return *lot < 0 ? QString("no lot number, status only") : QString("lot %1").arg(*lot);
}

class PostDialog : public Dialog {
 public:
  explicit PostDialog(QWidget* owner);
  void load();

 private:
  void showStored();
  void post();

  QLineEdit* TxtNumCharges = new QLineEdit;
  QLineEdit* TxtLotNumber = new QLineEdit;
  QLabel* stored_ = new QLabel;  // what the text of TxtLotNumber comes to
  QCheckBox* chkPrint = new QCheckBox;
};

PostDialog::PostDialog(QWidget* owner) : Dialog("frmPostCharges", "Post Charges", owner) {
  constexpr const char* kExplanation =
      "With this option the previously selected charges will be marked as posted to the insurance "
      "company. The lot number is assigned to each posted charge to group it for batch printing.";
  QGridLayout* fields = explainedFields(this, "Label2", kExplanation);
  addField(fields, 0, 0, "Number of charges:", TxtNumCharges, "TxtNumCharges");
  addField(fields, 1, 0, "Lot number:", TxtLotNumber, "TxtLotNumber");
  addField(fields, 2, 0, "Print after post:", chkPrint, "chkPrint");
  fields->addWidget(named(stored_, "LblStored", "What is stored"), 1, 2);
  stored_->setMinimumWidth(stored_->fontMetrics().horizontalAdvance(whatIsStored(-1)));
  onEvent(TxtLotNumber, &QLineEdit::textChanged, this, [this] { showStored(); });
  makeReadOnly(TxtNumCharges);
  layout()->addWidget(makeFoot(
      {"OKButton", "Post", "CancelButton", "Cancel"}, [this] { post(); }, [this] { unload(); }));
  TxtLotNumber->setFocus();
}

void PostDialog::load() {
  ChargesView& view = frmCharges();
  chkPrint->setChecked(true);
  TxtLotNumber->setText(QString::number(view.PostLotNumber));
  TxtNumCharges->setText(QString::number(view.PostChargeCount));
  view.PostChargeCount = 0;
}

void PostDialog::showStored() {
  stored_->setText(whatIsStored(lotOf(fromQt(TxtLotNumber->text()))));
  TxtLotNumber->setAccessibleDescription(stored_->text());
}

void PostDialog::post() {
  const std::optional<std::int32_t> lot = lotOf(fromQt(TxtLotNumber->text()));
  if (!lot) {
    MsgBox("The lot number must be a whole number of at most 2147483647. Please correct it.");
    TxtLotNumber->setFocus();
    TxtLotNumber->selectAll();
    return;
  }
  ChargesView& view = frmCharges();
  view.PostLotNumber = *lot;
  view.PostChargeCount = toInt16(fromQt(TxtNumCharges->text()));
  view.PostPrint = chkPrint->isChecked() ? 1 : 0;
  unload();
}

}  // namespace

const Form& frmPostCharges() { return formOf<PostDialog>(); }

}  // namespace bw
