#include "shell/RecordViewTable.h"

#include <QPointer>

#include "catalogues/Editors.h"
#include "core/Principal.h"
#include "data/BWSQLDiagnosis.h"
#include "data/BWSQLDiagnosisFamilies.h"
#include "data/BWSQLDoctors.h"
#include "data/BWSQLEMCodes.h"
#include "data/BWSQLFacilities.h"
#include "data/BWSQLInsurances.h"
#include "data/BWSQLProcedures.h"
#include "data/BWSQLSickness.h"
#include "lists/MainFrame.h"
#include "lists/RecordView.h"

// The eight views of records, and all that tells them apart.

namespace bw {
namespace {

template <auto routine, auto& current>
int removeCurrent(std::string& message) {
  return routine(current, message);
}

const RecordViewRow kDoctors{
    .name = "frmDoctors",
    .caption = "Doctors",
    .statement = "SELECT * FROM Doctors",
    .filters = {{1, "where BillingDoctorCode=''"}},
    .firstSort = "Description",
    .token = RecordViewRow::Token::bare,
    .key = "DoctorCode",
    .current = &CurrentDoctorCode,
    .deleteQuestion = "Are you sure you want to delete the selected Doctors?",
    .remove = removeCurrent<DoctorDelete, CurrentDoctorCode>,
    .editor = frmEditDoctor,
    .layoutSection = "Doctors",
    .filterReadSection = "Doctors",
    .filterWriteSection = "Doctors",
    .columns = {{"Description", "Description", 2880}, {"BillingDoctorCode", "Billing Code", 1440}},
};

// Layout and filter are read under the name "Facilites", the filter is written under "Facilities":
// it is always read back as 0, which is wanted. The question's spelling is wanted too.
const RecordViewRow kFacilities{
    .name = "frmFacilities",
    .caption = "Facilities",
    .statement = "SELECT * FROM FacilitiesDescriptive",
    .filters = {{1, "where BillingFacilityCode=''"}},
    .firstSort = " Description ",
    .token = RecordViewRow::Token::padded,
    .key = "FacilityCode",
    .current = &CurrentFacilityCode,
    .deleteQuestion = "Are you sure you want to delete the selected Facilites?",
    .remove = removeCurrent<FacilityDelete, CurrentFacilityCode>,
    .editor = []() -> const Form& { return frmEditFacility(); },
    .layoutSection = "Facilites",
    .filterReadSection = "Facilites",
    .filterWriteSection = "Facilities",
    .columns = {{"Description", "Description", 2880},
                {"TypeDescription", "Type", 2880},
                {"BillingFacilityCode", "Billing Code In", 1440},
                {"BillingFacilityCodeOut", "Billing Code Out", 1440}},
};

const RecordViewRow kDiagnosis{
    .name = "frmDiagnosis",
    .caption = "Diagnosis",
    .statement = "SELECT * FROM DiagnosisDescriptive",
    .filters = {{1, "where BillingDiagnosisCode=''"}},
    .firstSort = "Description",
    .token = RecordViewRow::Token::bare,
    .key = "DiagnosisCode",
    .current = &CurrentDiagnosisCode,
    .deleteQuestion = "Are you sure you want to delete the selected Diagnosis?",
    .remove = removeCurrent<DiagnosisDelete, CurrentDiagnosisCode>,
    .editor = frmEditDiagnosis,
    .layoutSection = "Diagnosis",
    .filterReadSection = "Diagnosis",
    .filterWriteSection = "Diagnosis",
    .columns = {{"Description", "Description", 2880},
                {"BillingDiagnosisCode", "Billing Code", 1440},
                {"RealDiagnosisCode", "Real Code", 1440},
                {"FamilyDesc", "Family", 2880}},
};

const RecordViewRow kProcedures{
    .name = "frmProcedures",
    .caption = "Procedures",
    .statement = "SELECT * FROM Procedures",
    .filters = {{1, "where BillingProcedureCode=''"}},
    .firstSort = " Description ",
    .token = RecordViewRow::Token::padded,
    .key = "ProcedureCode",
    .current = &CurrentProcedureCode,
    .deleteQuestion = "Are you sure you want to delete the selected Procedures?",
    .remove = removeCurrent<ProcedureDelete, CurrentProcedureCode>,
    .editor = frmEditProcedure,
    .layoutSection = "Procedures",
    .filterReadSection = "Procedures",
    .filterWriteSection = "Procedures",
    .columns = {{"Description", "Description", 2880},
                {"BillingProcedureCode", "Billing Code", 1440},
                {"RealProcedureCode", "Real Code", 1440}},
};

const RecordViewRow kInsurances{
    .name = "frmInsurances",
    .caption = "Insurances",
    .statement = "SELECT * FROM Insurance",
    .filters = {{1, "where BillingInsuranceCode=''"}},
    .firstSort = " Description ",
    .token = RecordViewRow::Token::padded,
    .key = "InsuranceCode",
    .current = &CurrentInsuranceCode,
    .deleteQuestion = "Are you sure you want to delete the selected Insurances?",
    .remove = removeCurrent<InsuranceDelete, CurrentInsuranceCode>,
    .editor = frmEditInsurance,
    .layoutSection = "Insurances",
    .filterReadSection = "Insurances",
    .filterWriteSection = "Insurances",
    .columns = {{"Description", "Description", 2880},
                {"BillingInsuranceCode", "Billing Code", 1440}},
};

const RecordViewRow kEMCodes{
    .name = "frmEMCodes",
    .caption = "Evaluation & Management codes",
    .statement = "SELECT * FROM EMCodesDescriptive",
    .filters = {{1, "where BillingEMCode=''"},
                {6, "where FacilityTypeCode=1"},
                {7, "where FacilityTypeCode=4"},
                {8, "where FacilityTypeCode=2"},
                {9, "where FacilityTypeCode=3"},
                {14, "where FacilityTypeCode=5"}},
    .firstSort = " Description ",
    .token = RecordViewRow::Token::padded,
    .key = "EMCode",
    .current = &CurrentEMCode,
    .deleteQuestion = "Are you sure you want to delete the selected EMCodes?",
    .remove = removeCurrent<EMCodeDelete, CurrentEMCode>,
    .editor = frmEditEMCode,
    .layoutSection = "EMCodes",
    .filterReadSection = "EMCodes",
    .filterWriteSection = "EMCodes",
    .columns = {{"Description", "Description", 2880},
                {"FacilityTypeDescription", "Applies to", 2880},
                {"BillingEMCode", "Billing Code", 1440},
                {"RealEMCode", "Real Code", 1440},
                {"ChargeTypeDescription", "Charge Type", 2880},
                {"AttentionTypeDescription", "AttentionType", 1440}},
};

const RecordViewRow kSickness{
    .name = "frmSickness",
    .caption = "History items",
    .statement = "SELECT * FROM SicknessDescriptive",
    .filters = {{10, "where SicknessTypeCode=0"},
                {11, "where SicknessTypeCode=1"},
                {12, "where SicknessTypeCode=2"}},
    .firstSort = " Description ",
    .token = RecordViewRow::Token::padded,
    .key = "SicknessCode",
    .current = &CurrentSicknessCode,
    .deleteQuestion = "Are you sure you want to delete the selected Sickness?",
    .remove = removeCurrent<SicknessDelete, CurrentSicknessCode>,
    .editor = frmEditSickness,
    .layoutSection = "Sickness",
    .filterReadSection = "Sickness",
    .filterWriteSection = nullptr,
    .columns = {{"Description", "Description", 2880}, {"SicknessTypeDescription", "Type", 2880}},
};

const RecordViewRow kDiagnosisFamilies{
    .name = "frmDiagnosisFamilies",
    .caption = "Diagnosis Groups",
    .statement = "SELECT * FROM DiagnosisFamily",
    .filters = {},
    .filtering = RecordViewRow::Filters::ignored,
    .firstSort = "DiagnosisFamilyDescription",
    .token = RecordViewRow::Token::bare,
    .key = "DiagnosisFamilyCode",
    .current = &CurrentDiagnosisFamilyCode,
    .deleteQuestion = "Are you sure you want to delete the selected DiagnosisFamilies?",
    .remove = removeCurrent<DiagnosisFamilyDelete, CurrentDiagnosisFamilyCode>,
    .editor = frmEditDiagnosisFamily,
    .layoutSection = "DiagnosisFamilies",
    .filterReadSection = "DiagnosisFamilies",
    .filterWriteSection = "DiagnosisFamilies",
    .columns = {{"DiagnosisFamilyDescription", "Description", 2880}},
};

template <const RecordViewRow& row>
RecordView& viewOf() {
  static QPointer<RecordView> form;
  if (!form) form = new RecordView(row, MainWindow->clientArea());
  return *form;
}

}  // namespace

RecordView& frmDoctors() { return viewOf<kDoctors>(); }
RecordView& frmFacilities() { return viewOf<kFacilities>(); }
RecordView& frmDiagnosis() { return viewOf<kDiagnosis>(); }
RecordView& frmProcedures() { return viewOf<kProcedures>(); }
RecordView& frmInsurances() { return viewOf<kInsurances>(); }
RecordView& frmEMCodes() { return viewOf<kEMCodes>(); }
RecordView& frmSickness() { return viewOf<kSickness>(); }
RecordView& frmDiagnosisFamilies() { return viewOf<kDiagnosisFamilies>(); }

}  // namespace bw
