#include "lists/RecordView.h"

#include "controls/QtText.h"
#include "core/PassOver.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "lists/Filters.h"
#include "lists/Lists.h"
#include "lists/MainFrame.h"
#include "lists/Settings.h"
#include "text/BrokenOff.h"
#include "text/Conversions.h"
#include "text/Text.h"

namespace bw {
namespace {

void take(std::int16_t& current, const RecordSet& records, const char* key) {
  current = records.code(key);
}
void take(std::int32_t& current, const RecordSet& records, const char* key) {
  current = records.integer(key);
}

}  // namespace

RecordView::RecordView(const RecordViewRow& row, std::span<const ViewFilter> filters,
                       QWidget* parent)
    : View(row.name, row.caption, parent), row_(row), filters_(filters),
      ListView1(new ListView(row.columns, {.selection = ListView::Selection::several}, this)) {
  named(ListView1, "ListView1", row.caption);
  setHome(ListView1);
  ListView1->onOpen = [this] { openSelected(); };
  ListView1->onColumnClick = [this](int column) { columnClick(column); };
  ListView1->onInsertKey = [] { MainWindow->pressButton("Nuevo"); };
  ListView1->onDeleteKey = [] { MainWindow->pressButton("Eliminar"); };
  offer("Refresca", [this] { Refresca(); });
  offer("Insertado", [this] { Insertado(); });
  offer("Eliminar", [this] { Eliminar(); });
  offer("Imprimir", [this] { printList(*ListView1, ViewRecords, row_.report, CurrentFilter); });
  onUnload = [this] { close(); };
  load();
}

void RecordView::load() {
  ColumnLayoutRestore(*ListView1, row_.section);
  CurrentFilter = 0;
  passOver([this] {
    CurrentFilter = toInt16(GetSetting(kApplicationTitle, row_.section, "ActiveFilter", "0"));
  });
  passOver([this] { MainWindow->ActivaFiltro(CurrentFilter); });
}

void RecordView::close() {
  ColumnLayoutSave(*ListView1, row_.section);
  ViewRecords.close();
  if (row_.filterSection == nullptr) return;
  const bool elsewhere = *row_.filterSection != '\0';
  SaveSetting(kApplicationTitle, elsewhere ? row_.filterSection : row_.section, "ActiveFilter",
              concat(CurrentFilter));
}

void RecordView::resizeEvent(QResizeEvent*) { ListView1->setGeometry(rect()); }

// Empty for a filter that the view does not have.
std::string RecordView::statement() const {
  if (CurrentFilter == 0 || row_.filtering == RecordViewRow::Filters::ignored)
    return row_.statement;
  for (const ViewFilter& filter : filters_)
    if (filter.number == CurrentFilter) return concat(row_.statement, " ", filter.clause);
  return {};
}

void RecordView::Refresca() {
  const std::int16_t before = std::exchange(CurrentFilter, MainWindow->FiltroActualNumero);
  const std::string text = statement();
  std::string message;
  // Without a statement the record set is unset, and the sort is error 91.
  const bool isRead =
      orPutBack([&] { return !text.empty() && readAgain(ViewRecords, text, message) == 0; },
                [&] { CurrentFilter = before; });
  if (!isRead) ViewRecords.close();
  if (!message.empty()) return MsgBox(message);
  ListView1->setEmptyText(toQt(emptyList(row_.several, CurrentFilter)));
  ViewRecords->setSort(row_.firstSort);
  ListFill(*ListView1, ViewRecords);
}

void RecordView::columnClick(int column) {
  const std::string& key = ListView1->column(column).key;
  const bool padded = row_.token == RecordViewRow::Token::padded;
  sortByColumn(ViewRecords, *ListView1, padded ? " " + key + " " : key);
}

void RecordView::takeKey(int row) {
  moveToRow(ViewRecords, *ListView1, row);
  std::visit([this](auto* current) { take(*current, *ViewRecords, row_.key); }, row_.current);
}

void RecordView::openSelected() {
  const auto selected = ListView1->selectedItem();
  if (!selected) return;
  takeKey(*selected);
  row_.editor().showModal();
  if (RecordSaved) Insertado();
}

// Does not look at the filter: a record that does not meet it stays on show until the next
// Refresca.
void RecordView::Insertado() {
  const std::string criterion =
      std::visit([this](auto* current) { return concat(row_.key, "=", *current); }, row_.current);
  ListRefreshRecord(ViewRecords, concat(row_.statement, " WHERE "), criterion, *ListView1);
}

void RecordView::Eliminar() {
  if (!services().confirm(row_.deleteQuestion)) return;
  deleteSelected(ViewRecords, *ListView1, [this](int row, std::string& message) {
    takeKey(row);
    return row_.remove(message);
  });
  update();
}

}  // namespace bw
