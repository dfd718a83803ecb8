#include <QVBoxLayout>
#include <unordered_map>
#include <vector>

#include "controls/ComboBox.h"
#include "controls/ElidedLine.h"
#include "controls/ListView.h"
#include "controls/QtText.h"
#include "core/AsisRutinasRecordsets.h"
#include "core/Services.h"
#include "data/BWSQLDiagnosis.h"
#include "data/BWSQLSickness.h"
#include "lists/Lists.h"
#include "picks/PickDialogs.h"
#include "records/RowMark.h"
#include "text/Formats.h"
#include "text/Text.h"

namespace bw {
namespace {

// The combo box that shows one group of the catalogue at a time.
struct GroupRow {
  const char* name;
  const char* label;
  RecordSetRef (*read)();
  const char* shown;
  const char* code;
};

struct TickRow {
  const char* name;
  const char* caption;
  const char* statement;
  std::vector<const char*> codes;  // five digits each in a record
  std::string& (*answer)();
  const char* empty;               // what an empty list says
  std::vector<std::string> marks;  // fields that tell rows of one description apart
  const GroupRow* groups = nullptr;
};

constexpr GroupRow kFamilies{"CBDiagnosisFamilies", "&Group:", DiagnosisFamilyList,
                             "DiagnosisFamilyDescription", "DiagnosisFamilyCode"};
constexpr GroupRow kSicknessTypes{"CBSicknessType", "&Type:", SicknessTypeList, "Description",
                                  "SicknessTypeCode"};

std::string& chargeAnswer() { return chargeOpener().PickResult; }
std::string& patientAnswer() { return patientOpener().PickResult; }

const TickRow kDiagnosis{
    "frmPickDiagnosis",
    "Diagnosis selection",
    "SELECT * FROM Diagnosis ORDER BY Description",
    {"DiagnosisCode"},
    chargeAnswer,
    "No diagnosis in this group. Choose another one, or type: all groups are searched.",
    {"RealDiagnosisCode", "BillingDiagnosisCode"},
    &kFamilies};
const TickRow kProcedures{"frmPickProcedures",
                          "Procedures selection",
                          "SELECT * FROM Procedures",
                          {"ProcedureCode"},
                          chargeAnswer,
                          "No procedures yet. Make them under Procedures first.",
                          {"RealProcedureCode", "BillingProcedureCode"}};
const TickRow kHistory{"frmPickHistory",
                       "History selection",
                       "SELECT * FROM Sickness",
                       {"SicknessCode", "SicknessTypeCode"},
                       patientAnswer,
                       "Nothing of this type. Choose another one, or type: all types are searched.",
                       {"SicknessCode"},
                       &kSicknessTypes};

class TickDialog : public Dialog {
 public:
  TickDialog(const TickRow& row, QWidget* owner);
  ~TickDialog() override;
  void load();

 private:
  void clearTicks();
  void loadGroups();
  void groupSelected();
  std::vector<ListGroups::Row> rowsOfOtherGroups();
  void itemChecked(int item, bool checked);
  template <class F>
  void forAllRows(F f);
  void tellTicked();
  void ok();
  void cancel();

  const TickRow& row_;
  RecordSetRef RsPickList;
  RecordSetRef RsPickGroups;
  ComboBox* groups_ = nullptr;
  ListView* ListView1;
  ElidedLine* ticked_;
};

TickDialog::TickDialog(const TickRow& row, QWidget* owner)
    : Dialog(row.name, row.caption, owner), row_(row),
      ListView1(new ListView({{"Description", "Description", 3500}}, {.checkBoxes = true}, this)),
      ticked_(new ElidedLine(this)) {
  auto* column = new QVBoxLayout(this);
  if (row_.groups != nullptr) {
    auto* grid = new QGridLayout;
    groups_ = new ComboBox(this);
    groups_->onSelected = [this] { groupSelected(); };
    ListView1->setGroups({.shown = [this] { return groups_->ListIndex(); },
                          .show = [this](int group) { groups_->setListIndex(group); },
                          .name = [this](int group) { return groups_->itemText(group); },
                          .others = [this] { return rowsOfOtherGroups(); }});
    addField(grid, 0, 0, row_.groups->label, groups_, row_.groups->name);
    grid->setColumnStretch(1, 1);
    column->addLayout(grid);
  }
  named(ListView1, "ListView1", row_.caption);
  ListView1->stretchLastColumn();
  ListView1->onItemCheck = [this](int item, bool checked) { itemChecked(item, checked); };
  ListView1->onOpen = [this] { ok(); };
  ListView1->setMarks(row_.marks);
  ListView1->setEmptyText(row_.empty);
  column->addWidget(ListView1);
  ticked_->setObjectName("LblTicked");
  column->addWidget(ticked_);
  column->addWidget(makeFoot(
      {}, [this] { ok(); }, [this] { cancel(); }));
  if (groups_ != nullptr) setTabs({groups_, ListView1});
  ListView1->setFocus();
  setSize(460, 480);
}

TickDialog::~TickDialog() {
  RsPickList.close();
  RsPickGroups.close();
}

void TickDialog::load() {
  std::string message;
  if (openForList(RsPickList, row_.statement, message) != 0) return MsgBox(message);
  if (row_.groups == nullptr) ListFill(*ListView1, RsPickList);
  clearTicks();
  if (row_.groups != nullptr) loadGroups();
  tellTicked();
}

// No tick survives from the database.
void TickDialog::clearTicks() {
  for (std::ptrdiff_t position = 1; position <= RsPickList->RecordCount(); ++position) {
    RsPickList->setAbsolutePosition(position);
    if (!RsPickList->isNull("checked") && RsPickList->integer("checked") == 0) continue;
    RsPickList->set("checked", 0);
    RsPickList->Update();
  }
}

void TickDialog::loadGroups() {
  RsPickGroups = row_.groups->read();
  groups_->Clear();
  if (!RsPickGroups || RsPickGroups->RecordCount() == 0) return;
  groups_->fillFrom(RsPickGroups, row_.groups->shown, {row_.groups->code});
  // The sickness type last used decides for the diagnoses' groups too: a number of another
  // catalogue.
  groups_->selectFound(RsPickGroups,
                       concat(row_.groups->code, "=", patientOpener().LastSicknessTypeCode));
}

void TickDialog::groupSelected() {
  groups_->moveToSelected(RsPickGroups);
  RsPickList->setFilter(concat(row_.groups->code, "=", RsPickGroups->integer(row_.groups->code)));
  ListFill(*ListView1, RsPickList);
  // Nothing is to look chosen but the ticks.
  if (const auto selected = ListView1->selectedItem()) ListView1->setSelected(*selected, false);
}

// Of all groups. The list shows what the filter lets through, which stays as it is.
template <class F>
void TickDialog::forAllRows(F f) {
  const std::string filter = RsPickList->Filter();
  RsPickList->setFilter("");
  for (const std::uint32_t row : RsPickList->view()) f(row);
  RsPickList->setFilter(filter);
}

// In the order of the groups, from the one behind that on show round to the one before it.
std::vector<ListGroups::Row> TickDialog::rowsOfOtherGroups() {
  const std::ptrdiff_t count = RsPickGroups->RecordCount();
  const int shown = groups_->ListIndex();
  std::unordered_map<std::int64_t, int> places;
  for (std::ptrdiff_t position = 1; position <= count; ++position) {
    RsPickGroups->setAbsolutePosition(position);
    places[RsPickGroups->integer(row_.groups->code)] = static_cast<int>(position) - 1;
  }
  groups_->moveToSelected(RsPickGroups);

  const RowStore& store = *RsPickList->rows();
  const Column& group = store.columns[store.indexOf(row_.groups->code)];
  std::vector<std::vector<ListGroups::Row>> rows(static_cast<std::size_t>(count));
  forAllRows([&](std::uint32_t row) {
    if (const auto place = places.find(group.raw(row)); place != places.end())
      rows[static_cast<std::size_t>(place->second)].push_back({row, place->second});
  });
  std::vector<ListGroups::Row> others;
  for (std::size_t i = 1; i < rows.size(); ++i) {
    const auto& of = rows[(static_cast<std::size_t>(shown) + i) % rows.size()];
    others.insert(others.end(), of.begin(), of.end());
  }
  return others;
}

void TickDialog::itemChecked(int item, bool checked) {
  moveToRow(RsPickList, *ListView1, item);
  RsPickList->set("checked", checked ? 1 : 0);
  RsPickList->Update();
  tellTicked();
}

void TickDialog::tellTicked() {
  const RowStore& store = *RsPickList->rows();
  const Column& ticks = store.columns[store.indexOf("checked")];
  const Column& names = store.columns[store.indexOf("Description")];
  std::vector<std::uint32_t> rows;
  std::unordered_map<std::int64_t, int> namesakes;
  forAllRows([&](std::uint32_t row) {
    ++namesakes[names.raw(row)];
    if (ticks.raw(row) == 1) rows.push_back(row);
  });
  QStringList ticked;
  for (const std::uint32_t row : rows) {
    ticked << toQt(textOf(names.value(row)));
    if (namesakes[names.raw(row)] > 1)
      ticked.back() += toQt(concat(" (", markOf(store, row, row_.marks), ")"));
  }
  ticked_->setText(ticked.isEmpty()
                       ? "Nothing ticked"
                       : QString("%1 ticked: %2").arg(ticked.size()).arg(ticked.join(", ")));
}

void TickDialog::ok() {
  std::string answer;
  if (RsPickList) {
    RsPickList->setFilter("checked=1");  // the ticks of all groups
    for (; !RsPickList->EOF_(); RsPickList->MoveNext()) {
      for (const char* code : row_.codes) answer += fixedCode(RsPickList->integer(code), 5);
      answer += fixedText(RsPickList->textOrEmpty("Description"), 40);
    }
  }
  row_.answer() = answer;
  unload();
}

void TickDialog::cancel() {
  row_.answer().clear();
  unload();
}

}  // namespace

ChargeOpener& chargeOpener() {
  static ChargeOpener opener;
  return opener;
}

PatientOpener& patientOpener() {
  static PatientOpener opener;
  return opener;
}

const Form& frmPickDiagnosis() { return formOf<TickDialog, kDiagnosis>(); }
const Form& frmPickProcedures() { return formOf<TickDialog, kProcedures>(); }
const Form& frmPickHistory() { return formOf<TickDialog, kHistory>(); }

}  // namespace bw
