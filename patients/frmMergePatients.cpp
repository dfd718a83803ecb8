#include "patients/frmMergePatients.h"

#include <QLabel>
#include <QVBoxLayout>

#include "controls/ListView.h"
#include "core/AsisRutinasRecordsets.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLPatients.h"
#include "lists/Lists.h"
#include "patients/PatientColumns.h"
#include "text/Conversions.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr std::ptrdiff_t kDigits = 10;  // of a patient in MergeSelection

// Read by one statement. An engine takes some thousand conditions in one, and no more.
constexpr std::ptrdiff_t kMostPatients = 500;

// The numbers bear the leading blank of Str.
std::string statementOf(const std::string& selection) {
  std::string statement = "SELECT * FROM PatientsDescriptive";
  const auto digits = static_cast<std::ptrdiff_t>(length(selection));
  for (std::ptrdiff_t at = 1; at <= digits; at += kDigits) {
    statement += at == 1 ? " Where " : " or ";
    statement += "PatientId = " + Str(toInt32(Mid(selection, at, kDigits)));
  }
  return statement;
}

// The patients of a selection, in the order of their numbers; 0, or 1 with the reason.
int openPatients(RecordSetRef& patients, const std::string& selection, std::string& message) {
  constexpr std::ptrdiff_t kPiece = kMostPatients * kDigits;
  if (OpenRecordset(patients, statementOf(Left(selection, kPiece)), message) != 0) return 1;
  const auto digits = static_cast<std::ptrdiff_t>(length(selection));
  if (digits <= kPiece) return 0;
  for (std::ptrdiff_t at = kPiece + 1; at <= digits; at += kPiece) {
    RecordSetRef more;
    if (OpenRecordset(more, statementOf(Mid(selection, at, kPiece)), message) != 0) return 1;
    RecordsetCopyAll(patients, more);
  }
  patients->setSort("PatientId");
  return 0;
}

class MergePatients : public Dialog {
 public:
  explicit MergePatients(QWidget* owner);
  ~MergePatients() override { RsPatients.close(); }
  void load();

 private:
  void merge();
  void transferTo(std::int16_t destination);
  void cancel();

  ListView* ListView1;
  RecordSetRef RsPatients;
};

MergePatients::MergePatients(QWidget* owner)
    : Dialog("frmMergePatients", "Merge Patient Info", owner),
      ListView1(new ListView(patientColumns(), {}, this)) {
  const char* instruction = "Select destination patient and press merge button.";
  auto* column = new QVBoxLayout(this);
  column->addWidget(named(new QLabel(instruction, this), "Label1", instruction));
  named(ListView1, "ListView1", "Destination patient");
  ListView1->stretchLastColumn();
  column->addWidget(ListView1, 1);
  column->addWidget(makeFoot(
      {.okText = "&Merge", .enterCancels = true}, [this] { merge(); }, [this] { cancel(); }));
  ListView1->setFocus();
  setSize(820, 360);
}

void MergePatients::load() {
  RecordSaved = false;
  NotLoaded = true;
  std::string message;
  if (openPatients(RsPatients, MergeSelection, message) != 0) return MsgBox(message);
  if (RsPatients->RecordCount() < 2)
    return MsgBox("At least two patients need to be selected to proceed with this operation!");
  ListFill(*ListView1, RsPatients);
  NotLoaded = false;
}

void MergePatients::merge() {
  if (const auto selected = ListView1->selectedItem()) {
    moveToRow(RsPatients, *ListView1, *selected);
    transferTo(RsPatients->code("patientId"));
  }
  RecordSaved = true;
}

// A patient whose charges cannot be moved keeps them all; the others go on.
void MergePatients::transferTo(std::int16_t destination) {
  for (std::ptrdiff_t position = 1; position <= RsPatients->RecordCount(); ++position) {
    RsPatients->setAbsolutePosition(position);
    const std::int16_t source = RsPatients->code("patientId");
    if (source == destination) continue;
    std::string message;
    if (PatientTransferCharges(destination, source, message) != 0)
      MsgBox(RsPatients->textOrEmpty("Names") + " : " + message);
    if (DatabaseConnection.isLost()) return;
  }
}

void MergePatients::cancel() {
  RecordSaved = false;
  unload();
}

}  // namespace

const Form& frmMergePatients() { return formOf<MergePatients>(); }

}  // namespace bw
