#include "patients/frmEditPatient.h"

namespace bw {

EditPatientForm& frmEditPatient() {
  static EditPatientForm form([](QWidget*) {});
  return form;
}

}  // namespace bw
