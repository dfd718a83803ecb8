#include "charges/FilterPanels.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>

#include "controls/Dialog.h"
#include "controls/Icons.h"
#include "controls/QtText.h"

namespace bw {

struct FilterPanels::PanelRow {
  const char* frame;
  const char* caption;
  const char* labelName;
  const char* label;
  const char* all;
  const char* selected;
  const char* selectedText;
  const char* box = "";     // a text box
  const char* button = "";  // Go, or a search button
  const char* tip = "";
};

FilterPanels::FilterPanels(QWidget* parent, Events events) : events_(std::move(events)) {
  // The last three panels bear one caption; their labels tell them apart.
  // clang-format off
  const std::array<PanelRow, 5> rows{{
      {"frmFiltroFechas", "Date filter", "Label1", "&Dates", "optAllDates", "optSelectedDates", "Between", "", "btnGo", ""},
      {"frmFiltroPaciente", "Patient filter", "Label3", "&Patients", "optAllPatients", "optSelectedPatients", "Selected", "TxtPatient", "btnSearchPatient", "Select the patient"},
      {"frmFiltroSeguro", "Insurance filter", "Label4", "&Insurances", "optAllInsurances", "optSelectedInsurances", "Selected", "TxtInsurance", "btnSearchInsurance", "Select the insurance"},
      {"frmFiltroDoctor", "Insurance filter", "Label5", "D&octors", "optAllDoctors", "optSelectedDoctors", "Selected", "TxtDoctor", "btnSearchDoctor", "Select the doctor"},
      {"frmFiltroLote", "Insurance filter", "Label6", "&Lot Number", "optAllLots", "optSelectedLot", "Selected", "TxtLotNumber", "btnGo2", ""},
  }};
  // clang-format on
  for (const PanelKind kind : kPanelKinds)
    build(kind, rows[static_cast<std::size_t>(kind)], parent);
}

void FilterPanels::build(PanelKind kind, const PanelRow& row, QWidget* parent) {
  Panel& panel = panels_[static_cast<std::size_t>(kind)];
  panel.frame = named(new QFrame(parent), row.frame, row.caption);
  auto* line = new QHBoxLayout(panel.frame);
  line->setContentsMargins(6, 2, 6, 2);
  const QString caption = withoutMnemonic(row.label);
  panel.label = named(makeLabel(row.label, panel.frame), row.labelName, caption);
  panel.label->setMinimumWidth(panel.label->fontMetrics().horizontalAdvance("Lot Number") + 8);
  line->addWidget(panel.label);
  const QString name = caption + ": ";
  panel.all = named(new OptionButton("All", panel.frame), row.all, name + "All");
  panel.selected =
      named(new OptionButton(row.selectedText, panel.frame), row.selected, name + row.selectedText);
  line->addWidget(panel.all);
  line->addWidget(panel.selected);
  if (kind == PanelKind::dates) {
    buildDates(panel, line);
  } else {
    panel.box = named(new QLineEdit(panel.frame), row.box, caption);
    if (kind != PanelKind::lot) makeReadOnly(panel.box);
    line->addWidget(panel.box, 1);
  }
  const bool searches = *row.tip != '\0';
  panel.button = makeButton(row.button, searches ? "" : "Go", panel.frame, [this, kind, searches] {
    searches ? events_.search(kind) : events_.go();
  });
  panel.button->setAccessibleName(searches ? row.tip : name + "Go");
  panel.button->setToolTip(row.tip);
  if (searches) panel.button->setIcon(icon("Search"));
  panel.button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  line->addWidget(panel.button);
  if (kind == PanelKind::lot)
    onEvent(panel.box, &QLineEdit::returnPressed, panel.box, [this] { events_.go(); });
  panel.all->onClick = [this, kind] {
    enable(kind, false);
    events_.chosen(kind, true);
  };
  panel.selected->onClick = [this, kind] {
    enable(kind, true);
    events_.chosen(kind, false);
  };
}

void FilterPanels::buildDates(Panel& panel, QHBoxLayout* line) {
  DTPicker1 = named(new DatePicker(panel.frame), "DTPicker1", "Dates from");
  DTPicker2 = named(new DatePicker(panel.frame), "DTPicker2", "Dates to");
  DTPicker1->onEnter = DTPicker2->onEnter = [this] { events_.go(); };
  line->addWidget(DTPicker1);
  line->addWidget(named(new QLabel("and", panel.frame), "Label2", "and"));
  line->addWidget(DTPicker2);
  line->addStretch(1);
}

// Go stays: a change of dates or lot takes effect only through it. The label's letter leads to the
// option that is on.
void FilterPanels::enable(PanelKind kind, bool selected) {
  const Panel& changed = panel(kind);
  changed.label->setBuddy(selected ? changed.selected : changed.all);
  if (kind == PanelKind::dates) {
    DTPicker1->setEnabled(selected);
    DTPicker2->setEnabled(selected);
    return;
  }
  changed.box->setEnabled(selected);
  if (kind != PanelKind::lot) changed.button->setEnabled(selected);
}

void FilterPanels::putBack(PanelKind kind, bool all) {
  OptionButton* const on = all ? panel(kind).all : panel(kind).selected;
  const auto handler = std::exchange(on->onClick, nullptr);
  on->setChecked(true);
  on->onClick = handler;
  enable(kind, !all);
}

bool FilterPanels::settleDates() {
  if (isAll(PanelKind::dates)) return true;
  const bool first = DTPicker1->settle();
  return DTPicker2->settle() && first;
}

std::string FilterPanels::text(PanelKind kind) const { return fromQt(panel(kind).box->text()); }

void FilterPanels::setText(PanelKind kind, const std::string& text) {
  panel(kind).box->setText(toQt(text));
}

void FilterPanels::setHint(PanelKind kind, const std::string& hint) {
  panel(kind).box->setPlaceholderText(toQt(hint));
}

}  // namespace bw
