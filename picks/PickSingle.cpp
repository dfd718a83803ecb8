#include <QVBoxLayout>
#include <vector>

#include "controls/ElidedLine.h"
#include "controls/ListView.h"
#include "core/AsisRutinasRecordsets.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/ChargeCodes.h"
#include "lists/Lists.h"
#include "picks/PickDialogs.h"
#include "text/Text.h"

namespace bw {
namespace {

struct SingleRow {
  const char* name;
  const char* caption;
  std::string (*statement)();
  std::vector<ListColumn> columns;
  const char* key;
  std::int16_t& picked;
  const char* nothingSelected;
  const char* (*empty)();          // what an empty list says
  std::vector<std::string> marks;  // fields that tell rows of one look apart
  std::string* pickedNames = nullptr;
};

// Of a charge of an inpatient the patients admitted to its facility, otherwise those who are not
// admitted. The charges view does not set the type: its list goes by what the last charge editor
// left there.
std::string patientsOffered() {
  if (EditChargeTypeCode == kInpatient)
    return concat("SELECT * FROM Patient where InFacilityCode=", PickFacilityCode,
                  " ORDER BY [Names]");
  return "SELECT * FROM Patient where InFacilityCode=0  ORDER BY [Names]";
}

const char* noPatients() {
  return EditChargeTypeCode == kInpatient
             ? "No patient is admitted to the facility of the charge. Choose another facility or "
               "patient status there, or admit the patient first."
             : "No patient who is not admitted. Choose Inpatient in the charge, or make the "
               "patient "
               "under Patients first.";
}

const SingleRow kPatient{"frmPickPatient",
                         "Patient selection",
                         patientsOffered,
                         {{"Names", "Names", 2500}, {"DateOfBirth", "DOB", 1440}},
                         "PatientId",
                         PickedPatientId,
                         "Select a Patiente first",
                         noPatients,
                         {"AccountNumber", "PatientId"}};
const SingleRow kDoctor{"frmPickDoctor",
                        "Doctor selection",
                        [] { return std::string("SELECT * FROM Doctors"); },
                        {{"Description", "Description", 3000}},
                        "DoctorCode",
                        PickedDoctorCode,
                        "Select an Doctor first",
                        [] { return "No doctors yet. Make them under Doctors first."; },
                        {"BillingDoctorCode", "DoctorCode"},
                        &PickedDoctorNames};
const SingleRow kInsurance{"frmPickInsurance",
                           "Insurance selection",
                           [] { return std::string("SELECT * FROM Insurance"); },
                           {{"Description", "Description", 3000}},
                           "InsuranceCode",
                           PickedInsuranceCode,
                           "Select an Insurance first",
                           [] { return "No insurances yet. Make them under Insurances first."; },
                           {"BillingInsuranceCode", "InsuranceCode"}};

class SingleDialog : public Dialog {
 public:
  SingleDialog(const SingleRow& row, QWidget* owner);
  ~SingleDialog() override { RsPickList.close(); }
  void load();

 private:
  void ok();
  void cancel();
  void tellSelected();

  const SingleRow& row_;
  RecordSetRef RsPickList;
  ListView* ListView1;
  ElidedLine* taken_;
};

SingleDialog::SingleDialog(const SingleRow& row, QWidget* owner)
    : Dialog(row.name, row.caption, owner), row_(row),
      ListView1(new ListView(row.columns, {}, this)), taken_(new ElidedLine(this)) {
  auto* column = new QVBoxLayout(this);
  named(ListView1, "ListView1", row_.caption);
  ListView1->stretchLastColumn();
  ListView1->onOpen = [this] { ok(); };
  ListView1->setMarks(row_.marks);
  ListView1->setEmptyText(row_.empty());
  onEvent(ListView1->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { tellSelected(); });
  column->addWidget(ListView1);
  taken_->setObjectName("LblTaken");
  column->addWidget(taken_);
  column->addWidget(makeFoot(
      {}, [this] { ok(); }, [this] { cancel(); }));
  ListView1->setFocus();
  setSize(460, 480);
}

void SingleDialog::load() {
  tellSelected();
  std::string message;
  if (openForList(RsPickList, row_.statement(), message) != 0) return MsgBox(message);
  if (RsPickList->RecordCount() == 0) return;
  ListFill(*ListView1, RsPickList);
  RsPickList->MoveFirst();
  RsPickList->Find(concat(row_.key, " = ", row_.picked));
  if (RsPickList->EOF_()) return;
  const int item = ListView1->rowAt(RsPickList->AbsolutePosition());
  ListView1->setSelected(item, true);
  ListView1->ensureVisible(item);
}

void SingleDialog::ok() {
  const auto selected = ListView1->selectedItem();
  if (!selected) return MsgBox(row_.nothingSelected);
  moveToRow(RsPickList, *ListView1, *selected);
  row_.picked = RsPickList->code(row_.key);
  if (row_.pickedNames != nullptr) *row_.pickedNames = RsPickList->textOrEmpty("Description");
  unload();
}

void SingleDialog::tellSelected() {
  const auto selected = ListView1->selectedItem();
  taken_->setText(selected ? "Ok takes: " + ListView1->words(*selected) : "Nothing is selected");
}

void SingleDialog::cancel() {
  row_.picked = 0;
  unload();
}

}  // namespace

const Form& frmPickPatient() { return formOf<SingleDialog, kPatient>(); }
const Form& frmPickDoctor() { return formOf<SingleDialog, kDoctor>(); }
const Form& frmPickInsurance() { return formOf<SingleDialog, kInsurance>(); }

}  // namespace bw
