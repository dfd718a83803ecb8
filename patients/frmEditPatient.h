#pragma once

#include <cstdint>
#include <string>

#include "controls/Dialog.h"

namespace bw {

// The patient editor. Works on CurrentPatientId, 0 for a new patient.
class EditPatientForm : public Form {
 public:
  using Form::Form;

  std::int16_t LastSicknessTypeCode = 0;  // the sickness type last used; 0 at first
  std::string PickResult;                 // answer of frmPickHistory
};

EditPatientForm& frmEditPatient();

}  // namespace bw
