#include "patients/frmDischargePatient.h"

#include <QLineEdit>
#include <QVBoxLayout>

#include "controls/QtText.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLDoctors.h"
#include "data/BWSQLFacilities.h"
#include "data/BWSQLPatients.h"
#include "data/BWSQLWards.h"
#include "patients/PatientAdmission.h"

namespace bw {
namespace {

class DischargePatient : public Dialog {
 public:
  explicit DischargePatient(QWidget* owner);
  void load();

 private:
  void showPlacement();
  void discharge();

  QLineEdit* TxtPatient;
  QLineEdit* TxtStatus;
  QLineEdit* TxtFacility;
  QLineEdit* TxtWard;
  QLineEdit* TxtDoctor;
};

DischargePatient::DischargePatient(QWidget* owner)
    : Dialog("frmDischargePatient", "Discharge patient", owner), TxtPatient(new QLineEdit(this)),
      TxtStatus(new QLineEdit(this)), TxtFacility(new QLineEdit(this)),
      TxtWard(new QLineEdit(this)), TxtDoctor(new QLineEdit(this)) {
  struct Row {
    QLineEdit* box;
    const char* name;
    const char* label;
  };
  auto* column = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  int line = 0;
  for (const Row& row :
       {Row{TxtPatient, "TxtPatient", "Patient:"}, Row{TxtStatus, "TxtStatus", "Status:"},
        Row{TxtFacility, "TxtFacility", "Facility:"}, Row{TxtWard, "TxtWard", "Ward:"},
        Row{TxtDoctor, "TxtDoctor", "Attending:"}}) {
    addField(grid, line++, 0, row.label, row.box, row.name);
    makeReadOnly(row.box);
  }
  grid->setColumnStretch(1, 1);
  column->addLayout(grid);
  column->addStretch(1);
  column->addWidget(makeFoot(
      {.okName = "OKButton",
       .okText = "&Discharge",
       .cancelName = "CancelButton",
       .enterCancels = true},
      [this] { discharge(); }, [this] { unload(); }));
  setSize(440);
}

void DischargePatient::load() {
  NotLoaded = true;
  if (!takeAdmission(TxtPatient)) return;
  const bool admitted = CurrentFacilityCode != 0;
  TxtStatus->setText(admitted ? "Admitted" : "Not admitted");
  okButton()->setEnabled(admitted);
  if (admitted) showPlacement();
  NotLoaded = false;
}

// Puts the description of the record in the box; false when the record has gone.
bool showDescription(QLineEdit* box, RecordSetRef record) {
  if (!record || record->RecordCount() == 0) return false;
  box->setText(toQt(record->textOrEmpty("Description")));
  record.close();
  return true;
}

// A facility that has gone leaves the ward empty too, also one that is still there.
void DischargePatient::showPlacement() {
  if (showDescription(TxtFacility, FacilityGet(CurrentFacilityCode)))
    showDescription(TxtWard, WardGet(CurrentWardCode));
  showDescription(TxtDoctor, DoctorGet(CurrentDoctorCode));
}

void DischargePatient::discharge() {
  std::string message;
  if (PatientSetAdmission(CurrentPatientId, 0, 0, 0, message) > 0) return MsgBox(message);
  unload();
}

}  // namespace

const Form& frmDischargePatient() { return formOf<DischargePatient>(); }

}  // namespace bw
