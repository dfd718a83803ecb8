#include "patients/frmPatients.h"

#include <QPointer>
#include <QResizeEvent>
#include <algorithm>
#include <array>

#include "controls/QtText.h"
#include "core/PassOver.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLPatients.h"
#include "lists/Filters.h"
#include "lists/Lists.h"
#include "lists/MainFrame.h"
#include "lists/Settings.h"
#include "patients/PatientColumns.h"
#include "patients/frmAdmitPatient.h"
#include "patients/frmDischargePatient.h"
#include "patients/frmEditPatient.h"
#include "patients/frmMergePatients.h"
#include "printing/ListReports.h"
#include "text/BrokenOff.h"
#include "text/Conversions.h"
#include "text/Formats.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr const char* kSection = "Patients";

struct FilterRow {
  std::int16_t number;
  const char* statement;
  const char* sort;
};

constexpr std::array kFilters{
    FilterRow{filter::all, "SELECT * FROM PatientsDescriptive", "Names"},
    FilterRow{filter::incomplete, "SELECT * FROM PatientsDescriptiveInconsistent", "Names"},
    FilterRow{filter::admitted, "SELECT * FROM PatientsDescriptiveAdmitted", "Names"},
    FilterRow{filter::notAdmitted, "SELECT * FROM PatientsDescriptiveNotAdmitted", "Names"},
    FilterRow{filter::sameBirthday, "SELECT * FROM PatientsDescriptiveDupDOB", "DateOfBirth"},
    FilterRow{filter::sameNames, "SELECT * FROM PatientsDescriptiveDupName", "Names"},
    FilterRow{filter::sameBirthdayAndNames, "SELECT * FROM PatientsDescriptiveDupDOBName",
              "DateOfBirth,Names"},
    FilterRow{filter::sameAccount, "SELECT * FROM PatientsDescriptiveDupAccount", "AccountNumber"},
};

constexpr FilterWord kWords[] = {{filter::all, "All"},
                                 {filter::incomplete, "Incomplete"},
                                 {filter::admitted, "Admitted"},
                                 {filter::notAdmitted, "Not admitted"}};
constexpr ListReport kReport{"Patients (", "PatientView.myv", kWords};

}  // namespace

PatientsView::PatientsView(QWidget* parent)
    : View("frmPatients", "Patients", parent),
      ListView1(new ListView(patientColumns(), {.selection = ListView::Selection::several}, this)) {
  named(ListView1, "ListView1", "Patients");
  setHome(ListView1);
  ListView1->onChosen = [this] { rowChosen(); };
  ListView1->onOpen = [this] { openSelected(); };
  ListView1->onColumnClick = [this](int column) {
    sortByColumn(RsPatients, *ListView1, ListView1->column(column).key);
  };
  ListView1->onInsertKey = [] { MainWindow->pressButton("Nuevo"); };
  ListView1->onDeleteKey = [] { MainWindow->pressButton("Eliminar"); };
  offer("Refresca", [this] { Refresca(); });
  offer("Insertado", [this] { Insertado(); });
  offer("Eliminar", [this] { Eliminar(); });
  offer("Admit", [this] { Admit(); });
  offer("Discharge", [this] { Discharge(); });
  offer("Merge", [this] { Merge(); });
  offer("Imprimir", [this] { printList(*ListView1, RsPatients, kReport, ActiveFilter); });
  onUnload = [this] { close(); };
  load();
}

void PatientsView::load() {
  ColumnLayoutRestore(*ListView1, kSection);
  passOver([this] {
    ActiveFilter = toInt16(GetSetting(kApplicationTitle, kSection, "ActiveFilter", "0"));
  });
  MainWindow->ActivaFiltro(ActiveFilter);
}

void PatientsView::close() {
  ColumnLayoutSave(*ListView1, kSection);
  RsPatients.close();
  SaveSetting(kApplicationTitle, kSection, "ActiveFilter", concat(ActiveFilter));
}

void PatientsView::resizeEvent(QResizeEvent*) { ListView1->setGeometry(rect()); }

void PatientsView::Refresca() {
  const std::int16_t before = std::exchange(ActiveFilter, MainWindow->FiltroActualNumero);
  const auto filter = std::find_if(kFilters.begin(), kFilters.end(),
                                   [&](const auto& row) { return row.number == ActiveFilter; });
  std::string message;
  const bool isRead = orPutBack(
      [&] {
        return filter != kFilters.end() && readAgain(RsPatients, filter->statement, message) == 0;
      },
      [&] { ActiveFilter = before; });
  if (!isRead) RsPatients.close();
  if (!message.empty()) return MsgBox(message);
  if (isRead) {
    RsPatients->setSort(filter->sort);
    ListView1->setEmptyText(toQt(emptyList("patients", ActiveFilter)));
  }
  ListFill(*ListView1, RsPatients);  // raises 91 for a filter of another view
}

// Read through the unfiltered query: a patient who no longer fits the filter stays in the list
// until the next Refresca.
void PatientsView::Insertado() {
  ListRefreshRecord(RsPatients, "SELECT * FROM PatientsDescriptive WHERE ",
                    concat("PatientId=", CurrentPatientId), *ListView1);
}

void PatientsView::takeKey(int row) {
  moveToRow(RsPatients, *ListView1, row);
  CurrentPatientId = RsPatients->code("PatientId");
}

void PatientsView::rowChosen() {
  if (const auto selected = ListView1->selectedItem()) takeKey(*selected);
}

void PatientsView::openSelected() {
  const auto selected = ListView1->selectedItem();
  if (!selected) return;
  takeKey(*selected);
  frmEditPatient().showModal();
  if (RecordSaved) Insertado();
}

void PatientsView::Eliminar() {
  if (!services().confirm("Are You sure you want to delete the selected Patients?")) return;
  deleteSelected(RsPatients, *ListView1, [this](int row, std::string& message) {
    takeKey(row);
    return PatientDelete(CurrentPatientId, message);
  });
}

// Goes by what is selected at the moment the walk comes to a row. Insertado leaves one row
// selected, so that in effect the lowest of several selected rows gets its dialog and the walk
// ends, unless the refreshed row has moved up, past the walk.
void PatientsView::showForSelected(const Form& dialog) {
  int walk = ListView1->count();
  while (true) {
    const std::vector<int> selected = ListView1->selectedFromLast();
    const auto next =
        std::find_if(selected.begin(), selected.end(), [&](int row) { return row < walk; });
    if (next == selected.end()) return;
    walk = *next;
    takeKey(walk);
    dialog.showModal();
    Insertado();
  }
}

void PatientsView::Admit() { showForSelected(frmAdmitPatient()); }
void PatientsView::Discharge() { showForSelected(frmDischargePatient()); }

void PatientsView::Merge() {
  MergeSelection.clear();
  for (const int row : ListView1->selectedFromLast()) {
    moveToRow(RsPatients, *ListView1, row);
    MergeSelection += zeroFilled(RsPatients->integer("PatientId"), 10);
  }
  if (length(MergeSelection) < 11) return MsgBox("You have to select at least 2 patients!");
  frmMergePatients().showModal();
  if (RecordSaved) Refresca();
}

PatientsView& frmPatients() {
  static QPointer<PatientsView> form;
  if (!form) form = new PatientsView(MainWindow->clientArea());
  return *form;
}

}  // namespace bw
