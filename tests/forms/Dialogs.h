#pragma once

#include <QApplication>
#include <ostream>

#include "catalogues/CodeSearch.h"
#include "catalogues/Editors.h"
#include "charges/frmArchiveCharges.h"
#include "charges/frmCharges.h"
#include "charges/frmEditCharge.h"
#include "charges/frmPostCharges.h"
#include "core/Principal.h"
#include "patients/frmAdmitPatient.h"
#include "patients/frmDischargePatient.h"
#include "patients/frmEditPatient.h"
#include "patients/frmMergePatients.h"
#include "picks/PickDialogs.h"
#include "printing/PageSize.h"
#include "printing/frmPrintGeneral.h"
#include "shell/frmAbout.h"

namespace bw {

// Every dialog of the program, on the small office.
struct DialogRow {
  const char* name;
  const char* ok;
  const char* cancel;
  void (*open)();
  bool enterCancels = false;
};
inline void PrintTo(const DialogRow& row, std::ostream* out) { *out << row.name; }

template <auto form>
void openDialog() {
  form().showModal();
}

// Patient 25000 is admitted, and the codes are 1: what the small office has.
inline const DialogRow kDialogs[] = {
    {"frmEditCharge", "btnOk", "btnCancel",
     [] {
       CurrentChargeDate = kNewCharge;
       frmEditCharge().showModal();
     }},
    {"frmPickDiagnosis", "btnOk", "btnCancel", openDialog<frmPickDiagnosis>},
    {"frmPickProcedures", "btnOk", "btnCancel", openDialog<frmPickProcedures>},
    {"frmPickHistory", "btnOk", "btnCancel", openDialog<frmPickHistory>},
    {"frmPickPatient", "btnOk", "btnCancel", openDialog<frmPickPatient>},
    {"frmPickDoctor", "btnOk", "btnCancel", openDialog<frmPickDoctor>},
    {"frmPickInsurance", "btnOk", "btnCancel", openDialog<frmPickInsurance>},
    {"frmPostCharges", "OKButton", "CancelButton", openDialog<frmPostCharges>},
    {"frmArchiveCharges", "OKButton", "CancelButton", openDialog<frmArchiveCharges>, true},
    {"frmEditPatient", "btnOk", "btnCancel", openDialog<frmEditPatient>},
    {"frmAdmitPatient", "OKButton", "CancelButton", openDialog<frmAdmitPatient>},
    {"frmAdmitPatientDoctors", "OKButton", "CancelButton", openDialog<frmAdmitPatientDoctors>},
    {"frmDischargePatient", "OKButton", "CancelButton", openDialog<frmDischargePatient>, true},
    {"frmMergePatients", "btnOk", "btnCancel",
     [] {
       MergeSelection = "00000250000000025001";
       frmMergePatients().showModal();
     },
     true},
    {"frmPickCode", "btnOk", "btnCancel", openDialog<frmPickCode>},
    {"frmEditInsurance", "btnOk", "btnCancel", openDialog<frmEditInsurance>},
    {"frmEditProcedure", "btnOk", "btnCancel", openDialog<frmEditProcedure>},
    {"frmEditDiagnosis", "btnOk", "btnCancel", openDialog<frmEditDiagnosis>},
    {"frmEditDiagnosisFamily", "btnOk", "btnCancel", openDialog<frmEditDiagnosisFamily>},
    {"frmEditSickness", "btnOk", "btnCancel", openDialog<frmEditSickness>},
    {"frmEditEMCode", "btnOk", "btnCancel", openDialog<frmEditEMCode>},
    {"frmEditDoctor", "btnOk", "btnCancel", openDialog<frmEditDoctor>},
    {"frmEditFacility", "btnOk", "btnCancel", openDialog<frmEditFacility>},
    {"frmEditWard", "btnOk", "btnCancel", openDialog<frmEditWard>},
    {"frmPrintGeneral", "OKButton", "CancelButton",
     [] {
       PrintDialogCaption = "Reports";
       PrintDialogItems = "List;Detail;";
       frmPrintGeneral().showModal();
     }},
    {"frmPageSetup", "btnOk", "btnCancel", [] { choosePageSize(QApplication::activeWindow()); }},
    {"frmAbout", "cmdOK", "", openDialog<frmAbout>},
};

// What they take for their record where they have one.
inline void takeRecordsOfSmallOffice() {
  CurrentPatientId = 25000;
  CurrentDoctorCode = CurrentFacilityCode = CurrentWardCode = CurrentInsuranceCode = 1;
  CurrentProcedureCode = CurrentDiagnosisCode = CurrentSicknessCode = 1;
  CurrentEMCode = CurrentDiagnosisFamilyCode = 1;
}

}  // namespace bw
