#pragma once

#include <string>

#include "controls/Dialog.h"

namespace bw {

// The editors of the catalogues. Each works on the record of its Current... code, 0 for a new one.
// After an Ok that code is the stored record's and RecordSaved is true; Cancel clears RecordSaved.

const Form& frmEditInsurance();
const Form& frmEditProcedure();
const Form& frmEditDiagnosis();
const Form& frmEditDiagnosisFamily();
const Form& frmEditSickness();

const Form& frmEditEMCode();
const Form& frmEditDoctor();  // with the doctors it covers

// With the facility's wards.
class EditFacilityForm : public Form {
 public:
  using Form::Form;

  std::string WardDescription;  // a ward's text, to frmEditWard and back
};

EditFacilityForm& frmEditFacility();

// The text of one ward, in and out by WardDescription of frmEditFacility; "" after Cancel.
const Form& frmEditWard();

}  // namespace bw
