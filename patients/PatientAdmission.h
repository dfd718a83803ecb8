#pragma once

class QLineEdit;

namespace bw {

// Where CurrentPatientId lies, for the dialogs that change it: shows the patient's names and sets
// CurrentFacilityCode, CurrentWardCode and CurrentDoctorCode, each 0 when there is none. False,
// after a message, when there is no such patient.
bool takeAdmission(QLineEdit* names);

}  // namespace bw
