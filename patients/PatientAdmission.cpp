#include "patients/PatientAdmission.h"

#include <QLineEdit>

#include "controls/QtText.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLPatients.h"

namespace bw {

bool takeAdmission(QLineEdit* names) {
  RecordSetRef patient = PatientGet(CurrentPatientId);
  if (!patient || patient->RecordCount() == 0)
    return MsgBox("Record not found.  Please report this error!"), false;
  names->setText(toQt(patient->textOrEmpty("Names")));
  CurrentFacilityCode = patient->code("InFacilityCode");
  CurrentWardCode = patient->code("InWardCode");
  CurrentDoctorCode = patient->code("InDoctorCode");
  patient.close();
  return true;
}

}  // namespace bw
