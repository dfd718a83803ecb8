#include "review/PageChoices.h"

#include <QGridLayout>
#include <algorithm>

#include "controls/ComboBox.h"
#include "controls/DatePicker.h"
#include "controls/Dialog.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/Literals.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr int kInARow = 3;

}  // namespace

PageChoices::PageChoices(std::span<const PageChoice> choices, QWidget* parent) : QWidget(parent) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  controls_.reserve(choices.size());
  for (const PageChoice& choice : choices) add(choice, static_cast<int>(controls_.size()));
  grid->setColumnStretch(2 * kInARow, 1);
  enableDays();
}

void PageChoices::add(const PageChoice& choice, int place) {
  Control& control = controls_.emplace_back(Control{&choice});
  QWidget* field = nullptr;
  if (choice.kind == PageChoice::Kind::day) {
    field = control.day = new DatePicker;
    addDay(control);
  } else {
    field = control.box = new ComboBox;
    QStringList items;
    for (const char* item : choice.items) items << item;
    control.box->setItems(items);
    if (!items.isEmpty()) control.box->setListIndex(0);
    control.box->onSelected = [this] { changed(); };
  }
  addField(static_cast<QGridLayout*>(layout()), place / kInARow, 2 * (place % kInARow),
           choice.label, field, choice.name);
}

void PageChoices::addDay(Control& control) {
  control.day->setValue(today());
  const auto take = [this, day = control.day] {
    if (day->settle()) changed();
  };
  control.day->onEnter = take;
  onEvent(control.day, &QLineEdit::editingFinished, this, take);
}

void PageChoices::readCatalogues() {
  for (Control& control : controls_) {
    if (control.choice->kind != PageChoice::Kind::catalogue) continue;
    const int index = control.box->ListIndex();
    const std::int64_t code = index > 0 ? control.codes[static_cast<std::size_t>(index)] : 0;
    const RecordSetRef rows = DatabaseConnection.Read(control.choice->statement);
    rows->setSort("Description, Code");
    QStringList items{"All"};
    control.codes = {0};
    for (; !rows->EOF_(); rows->MoveNext()) {
      items << toQt(rows->textOrEmpty("Description"));
      control.codes.push_back(rows->integer("Code"));
    }
    control.box->setItems(items);
    const auto again = std::find(control.codes.begin(), control.codes.end(), code);
    control.box->setCurrentIndex(
        again == control.codes.end() ? 0 : static_cast<int>(again - control.codes.begin()));
  }
}

// A choice that is made once more is none.
void PageChoices::changed() {
  enableDays();
  Chosen now = chosen();
  if (now == before_) return;
  before_ = std::move(now);
  if (onChange) onChange();
}

void PageChoices::enableDays() {
  const Control* before = nullptr;
  for (Control& control : controls_) {
    if (control.day == nullptr)
      before = &control;
    else if (before != nullptr)
      control.day->setEnabled(before->box->currentIndex() == before->box->count() - 1);
  }
}

Chosen PageChoices::chosen() const {
  Chosen chosen;
  for (const Control& control : controls_) {
    if (control.day != nullptr)
      chosen.push_back(control.day->value().day);
    else if (control.codes.empty())
      chosen.push_back(control.box->currentIndex());
    else
      chosen.push_back(
          control.codes[static_cast<std::size_t>(std::max(0, control.box->currentIndex()))]);
  }
  return chosen;
}

std::string PageChoices::words() const {
  std::string words;
  for (const Control& control : controls_) {
    if (control.day != nullptr && !control.day->isEnabled()) continue;
    words += concat(fromQt(withoutMnemonic(control.choice->label)), " ",
                    control.day != nullptr ? monthFirst(control.day->value())
                                           : fromQt(control.box->currentText()),
                    "; ");
  }
  return words;
}

}  // namespace bw
