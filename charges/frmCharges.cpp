#include "charges/frmCharges.h"

#include <QPointer>
#include <QResizeEvent>
#include <QScrollArea>
#include <QScrollBar>

#include "charges/frmEditCharge.h"
#include "controls/Dialog.h"
#include "controls/QtText.h"
#include "controls/TypedInput.h"
#include "core/AsisRutinasRecordsets.h"
#include "core/PassOver.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLCharges.h"
#include "data/BWSQLDoctors.h"
#include "data/BWSQLInsurances.h"
#include "data/BWSQLPatients.h"
#include "data/Literals.h"
#include "lists/Filters.h"
#include "lists/Lists.h"
#include "lists/MainFrame.h"
#include "lists/Settings.h"
#include "picks/PickDialogs.h"
#include "text/BrokenOff.h"
#include "text/Conversions.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr const char* kSection = "Charges";

// What a panel's search picks, and the column that says the same in every row while it filters.
struct SearchRow {
  PanelKind kind;
  const char* column;
  const char* clause;
  const Form& (*pick)();
  std::int16_t& picked;
  std::int16_t& current;
  RecordSetRef (*get)(std::int16_t);
  const char* shown;
  const char* filtered;  // in the sentences of an empty list
  const char* missing;
};

const SearchRow kSearches[] = {
    {PanelKind::patient, "Names", "PatientId= ", frmPickPatient, PickedPatientId, CurrentPatientId,
     PatientGet, "Names", " for the selected patient", "patient"},
    {PanelKind::insurance, "Insurance", "InsuranceCode= ", frmPickInsurance, PickedInsuranceCode,
     CurrentInsuranceCode, InsuranceGet, "Description", " with the selected insurance",
     "insurance"},
    {PanelKind::doctor, "Doctor", "DoctorCode= ", frmPickDoctor, PickedDoctorCode,
     CurrentDoctorCode, DoctorGet, "Description", " by the selected doctor", "doctor"},
};

const SearchRow* searchOf(PanelKind kind) {
  for (const SearchRow& row : kSearches)
    if (row.kind == kind) return &row;
  return nullptr;
}

// Status 3, which the archive run sets, is in the first and in none of the others.
std::string baseStatement(std::int16_t number) {
  constexpr const char* base = "SELECT * FROM ChargesDescriptive Where [status]";
  switch (number) {
    case filter::all:
      return concat(base, "<>2");
    case filter::ready:
      return concat(base, "=0");
    case filter::posted:
      return concat(base, "=1");
    case filter::archived:
      return concat(base, "=2");
    default:
      return {};
  }
}

QScrollArea* makePanelArea(QWidget* parent) {
  auto* area = new QScrollArea(parent);
  area->setFrameShape(QFrame::NoFrame);
  area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidget(named(new QWidget, "panels", "Filters"));
  return named(area, "panelArea", "Filters");
}

}  // namespace

ChargesView::ChargesView(QWidget* parent)
    : View("frmCharges", "Charges", parent), panelArea_(makePanelArea(this)),
      panels_(panelArea_->widget(),
              {.chosen = [this](PanelKind kind, bool all) { choose(kind, all); },
               .search = [this](PanelKind kind) { search(kind); },
               .go =
                   [this] {
                     if (settleInputs(*this)) Refresca();
                   }}),
      ListView1(new ListView({{"ChargeRealDate", "Date", 1440},
                              {"Names", "Patient", 2880},
                              {"EMDescription", "E & M Concept", 2880},
                              {"Doctor", "Doctor", 2880},
                              {"Facility", "Facility", 2880},
                              {"Insurance", "Insurance", 2880},
                              {"StatusDescription", "Status", 1440}},
                             {.selection = ListView::Selection::several}, this)) {
  named(ListView1, "ListView1", "Charges");
  setHome(ListView1);
  ListView1->raise();
  ListView1->onOpen = [this] { openSelected(); };
  ListView1->onColumnClick = [this](int column) {
    sortByColumn(RsCharges, *ListView1, ListView1->column(column).key);
  };
  ListView1->onInsertKey = [] { MainWindow->pressButton("Nuevo"); };
  ListView1->onDeleteKey = [] { MainWindow->pressButton("Eliminar"); };
  offer("Refresca", [this] { Refresca(); });
  offer("Insertado", [this] { Insertado(); });
  offer("Eliminar", [this] { Eliminar(); });
  offer("Post", [this] { Post(); });
  offer("Imprimir", [this] { Imprimir(); });
  onUnload = [this] { close(); };
  load();
}

void ChargesView::load() {
  ColumnLayoutRestore(*ListView1, kSection);
  panels_.first()->setValue(today());
  panels_.last()->setValue(today());
  for (const SearchRow& row : kSearches)
    widths_[static_cast<std::size_t>(row.kind)] = ListView1->Width(ListView1->columnOf(row.column));
  FormReady = false;
  panels_.chooseSelected(PanelKind::dates);
  for (const PanelKind kind :
       {PanelKind::patient, PanelKind::insurance, PanelKind::doctor, PanelKind::lot})
    panels_.chooseAll(kind);
  FormReady = true;
  passOver([this] {
    ActiveFilter = toInt16(GetSetting(kApplicationTitle, kSection, "ActiveFilter", "0"));
  });
  MainWindow->ActivaFiltro(ActiveFilter);
}

void ChargesView::close() {
  // A column that a filter hides is not to be stored with width 0.
  for (const SearchRow& row : kSearches) showColumn(row.kind, true);
  ColumnLayoutSave(*ListView1, kSection);
  RsCharges.close();
  SaveSetting(kApplicationTitle, kSection, "ActiveFilter", concat(ActiveFilter));
}

void ChargesView::resizeEvent(QResizeEvent*) {
  int wide = width();
  for (const PanelKind kind : kPanelKinds)
    wide = std::max(wide, panels_.frame(kind)->minimumSizeHint().width());
  int top = 0;
  for (const PanelKind kind : kPanelKinds) {
    QWidget* frame = panels_.frame(kind);
    const int height = frame->sizeHint().height();
    frame->setGeometry(0, top, wide, height);
    top += height;
  }
  panelArea_->widget()->resize(wide, top);
  // In a window too narrow for them the panels keep their width and can be scrolled.
  if (wide > width()) top += panelArea_->horizontalScrollBar()->sizeHint().height();
  panelArea_->setGeometry(0, 0, width(), top);
  ListView1->setGeometry(0, top, width(), std::max(0, height() - top));
}

// A column that says the same in every row is hidden while its filter holds.
void ChargesView::showColumn(PanelKind kind, bool shown) {
  const SearchRow* row = searchOf(kind);
  if (row == nullptr) return;
  float& kept = widths_[static_cast<std::size_t>(kind)];
  const int column = ListView1->columnOf(row->column);
  if (shown) return ListView1->setWidth(column, kept);
  kept = ListView1->Width(column);
  ListView1->setWidth(column, 0);
}

void ChargesView::choose(PanelKind kind, bool all) {
  orPutBack(
      [&] {
        showColumn(kind, all);
        Refresca();
      },
      [&] {
        showColumn(kind, !all);
        panels_.putBack(kind, !all);
      });
}

std::string ChargesView::statement() const {
  std::string text = baseStatement(ActiveFilter);
  const auto add = [&](const std::string& clause) { text += " and " + clause; };
  if (!panels_.isAll(PanelKind::dates))
    add(concat("ChargeRealDate >= #", monthFirst(panels_.first()->value()),
               "# and ChargeRealDate <= #", monthFirst(panels_.last()->value()), "#"));
  for (const SearchRow& row : kSearches)
    if (!panels_.isAll(row.kind)) add(concat(row.clause, row.current));
  if (!panels_.isAll(PanelKind::lot))
    add("PrintLot = " + textOf(Val(panels_.text(PanelKind::lot))));
  return text;
}

// What the list says when nothing is let through.
std::string ChargesView::whyEmpty() const {
  std::string filters;
  if (!panels_.isAll(PanelKind::dates))
    filters += concat(" from ", monthFirst(panels_.first()->value()), " to ",
                      monthFirst(panels_.last()->value()));
  for (const SearchRow& row : kSearches) {
    if (panels_.isAll(row.kind)) continue;
    if (row.current == 0)
      return concat("No ", row.missing, " is selected yet. Tab and Space choose one.");
    filters += row.filtered;
  }
  if (!panels_.isAll(PanelKind::lot))
    filters += " in lot " + textOf(Val(panels_.text(PanelKind::lot)));
  if (filters.empty()) return emptyList("charges", ActiveFilter);
  const std::string status =
      ActiveFilter == 0 ? ""
                        : concat(filterCaptions()[static_cast<std::size_t>(ActiveFilter)], " ");
  return concat("No ", status, "charges", filters, ". Choose All to see the others.");
}

void ChargesView::Refresca() {
  // What no date stands for is no filter: the list stays what it was.
  if (!FormReady || !panels_.settleDates()) return;
  const std::int16_t before = std::exchange(ActiveFilter, MainWindow->FiltroActualNumero);
  const std::string text = statement();
  std::string message;
  const int failed = orPutBack([&] { return readAgain(RsCharges, text, message); },
                               [&] { ActiveFilter = before; });
  if (failed != 0) return MsgBox(message);
  ListView1->setEmptyText(toQt(whyEmpty()));
  RsCharges->setSort("ChargeRealDate");
  ListFill(*ListView1, RsCharges);
  tellWhoFilters();
}

// Whom "Selected" takes may have been chosen elsewhere, and his column is hidden.
void ChargesView::tellWhoFilters() {
  for (const SearchRow& row : kSearches) {
    const bool isTold = !panels_.isAll(row.kind) && RsCharges->RecordCount() > 0;
    const RowStore& rows = *RsCharges->rows();
    panels_.setHint(row.kind, isTold ? textOrEmpty(rows.columns[rows.indexOf(row.column)].value(
                                           RsCharges->view().front()))
                                     : "");
  }
}

void ChargesView::search(PanelKind kind) {
  const SearchRow& row = *searchOf(kind);
  row.picked = 0;
  row.pick().showModal();
  if (row.picked == 0 || row.picked == row.current) return;
  RecordSetRef found = row.get(row.picked);
  if (!found) return;
  const std::string text = panels_.text(kind);
  const std::int16_t current = row.current;
  if (found->RecordCount() > 0) {
    panels_.setText(kind, found->textOrEmpty(row.shown));
    row.current = row.picked;
  }
  found.close();
  orPutBack([&] { Refresca(); },
            [&] {
              panels_.setText(kind, text);
              row.current = current;
            });
}

void ChargesView::takeKey(int row) {
  moveToRow(RsCharges, *ListView1, row);
  CurrentPatientId = RsCharges->code("PatientId");
  CurrentChargeDate = RsCharges->date("ChargeDate");
  CurrentChargeTime = RsCharges->time("ChargeTime");
}

void ChargesView::openSelected() {
  const auto selected = ListView1->selectedItem();
  if (!selected) return;
  takeKey(*selected);
  frmEditCharge().showModal();
  if (RecordSaved) Insertado();
}

void ChargesView::Insertado() {
  const std::string date = monthFirst(CurrentChargeDate);
  const std::string time = clock24(CurrentChargeTime);
  RecordSetRef fresh;
  std::string message;
  if (OpenRecordset(fresh,
                    concat("SELECT * FROM ChargesDescriptive WHERE PatientId=", CurrentPatientId,
                           " and ChargeDate=#", date, "# and ChargeTime=#", time, "#"),
                    message) != 0)
    return MsgBox(message);
  if (fresh->RecordCount() == 0) return;
  if (RsCharges->RecordCount() > 0) {
    // Three searches, each from where the last one stopped. They are no search for the key: a
    // charge that is not in the list can meet another patient's of the same time of day.
    RsCharges->MoveFirst();
    RsCharges->Find(concat("PatientId=", CurrentPatientId));
    RsCharges->Find(concat("ChargeDate=#", date, "#"));
    RsCharges->Find(concat("ChargeTime=#", time, "#"));
  }
  mergeRecord(RsCharges, fresh, *ListView1);
  fresh.close();
}

void ChargesView::Eliminar() {
  if (!services().confirm("Are you sure you want to delete the selected Charges?")) return;
  deleteSelected(RsCharges, *ListView1, [this](int row, std::string& message) {
    takeKey(row);
    return ChargeDelete(CurrentPatientId, CurrentChargeDate, CurrentChargeTime, message);
  });
  update();
}

ChargesView& frmCharges() {
  static QPointer<ChargesView> form;
  if (!form) form = new ChargesView(MainWindow->clientArea());
  return *form;
}

}  // namespace bw
