#pragma once

#include "catalogues/CodeSearch.h"
#include "catalogues/Editors.h"
#include "charges/frmArchiveCharges.h"
#include "charges/frmEditCharge.h"
#include "charges/frmPostCharges.h"
#include "patients/frmAdmitPatient.h"
#include "patients/frmDischargePatient.h"
#include "patients/frmEditPatient.h"
#include "patients/frmMergePatients.h"
#include "picks/PickDialogs.h"
#include "printing/PageSize.h"
#include "printing/frmPrintGeneral.h"
#include "shell/frmAbout.h"
#include "tests/forms/FormsFixture.h"

namespace bw {

// Every dialog of the program.
struct DialogRow {
  const char* name;
  void (*open)();
  const char* ok = "btnOk";
  bool enterCancels = false;
};

template <auto form>
void openDialog() {
  form().showModal();
}

// clang-format off
inline const DialogRow kDialogs[] = {
    {"frmEditCharge", openDialog<frmEditCharge>},
    {"frmPickDiagnosis", openDialog<frmPickDiagnosis>},
    {"frmPickProcedures", openDialog<frmPickProcedures>},
    {"frmPickHistory", openDialog<frmPickHistory>},
    {"frmPickPatient", openDialog<frmPickPatient>},
    {"frmPickDoctor", openDialog<frmPickDoctor>},
    {"frmPickInsurance", openDialog<frmPickInsurance>},
    {"frmPostCharges", openDialog<frmPostCharges>, "OKButton"},
    {"frmArchiveCharges", openDialog<frmArchiveCharges>, "OKButton", true},
    {"frmEditPatient", openDialog<frmEditPatient>},
    {"frmAdmitPatient", openDialog<frmAdmitPatient>, "OKButton"},
    {"frmAdmitPatientDoctors", openDialog<frmAdmitPatientDoctors>, "OKButton"},
    {"frmDischargePatient", openDialog<frmDischargePatient>, "OKButton", true},
    {"frmMergePatients", openDialog<frmMergePatients>, "btnOk", true},
    {"frmPickCode", openDialog<frmPickCode>},
    {"frmEditInsurance", openDialog<frmEditInsurance>},
    {"frmEditProcedure", openDialog<frmEditProcedure>},
    {"frmEditDiagnosis", openDialog<frmEditDiagnosis>},
    {"frmEditDiagnosisFamily", openDialog<frmEditDiagnosisFamily>},
    {"frmEditSickness", openDialog<frmEditSickness>},
    {"frmEditEMCode", openDialog<frmEditEMCode>},
    {"frmEditDoctor", openDialog<frmEditDoctor>},
    {"frmEditFacility", openDialog<frmEditFacility>},
    {"frmEditWard", openDialog<frmEditWard>},
    {"frmPrintGeneral", openDialog<frmPrintGeneral>, "OKButton"},
    {"frmPageSetup", [] { choosePageSize(QApplication::activeWindow()); }},
    {"frmAbout", openDialog<frmAbout>, "cmdOK"},
};
// clang-format on

// What they take for their record where they have one: those of the small office, where patient
// 25000 is admitted and the codes are 1.
inline void takeRecordsOfSmallOffice() {
  CurrentChargeDate = kNewCharge;
  CurrentPatientId = 25000;
  CurrentDoctorCode = CurrentFacilityCode = CurrentWardCode = CurrentInsuranceCode = 1;
  CurrentProcedureCode = CurrentDiagnosisCode = CurrentSicknessCode = 1;
  CurrentEMCode = CurrentDiagnosisFamilyCode = 1;
  MergeSelection = "00000250000000025001";
  PrintDialogCaption = "Reports";
  PrintDialogItems = "List;Detail;";
}

}  // namespace bw
