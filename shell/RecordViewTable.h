#pragma once

namespace bw {

class RecordView;

// The eight views of records.
RecordView& frmDoctors();
RecordView& frmFacilities();
RecordView& frmDiagnosis();
RecordView& frmProcedures();
RecordView& frmInsurances();
RecordView& frmEMCodes();
RecordView& frmSickness();
RecordView& frmDiagnosisFamilies();

}  // namespace bw
