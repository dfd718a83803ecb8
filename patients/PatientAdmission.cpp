#include "patients/PatientAdmission.h"

#include <QLineEdit>

#include "controls/QtText.h"
#include "core/Principal.h"
#include "data/BWSQLPatients.h"
#include "lists/EditedRecord.h"

namespace bw {

bool takeAdmission(QLineEdit* names) {
  RecordSetRef patient = PatientGet(CurrentPatientId);
  if (!foundRecord(patient)) return false;
  names->setText(toQt(patient->textOrEmpty("Names")));
  CurrentFacilityCode = patient->code("InFacilityCode");
  CurrentWardCode = patient->code("InWardCode");
  CurrentDoctorCode = patient->code("InDoctorCode");
  patient.close();
  return true;
}

}  // namespace bw
