#include "core/Principal.h"

namespace bw {

// clang-format off
Connection DatabaseConnection;
bool DatabaseConnected = false;
std::string DatabasePath;
MainFrame* MainWindow = nullptr;
bool RecordSaved = false;
std::int16_t CurrentPatientId = 0;
Date CurrentChargeDate;
TimeOfDay CurrentChargeTime;
std::int16_t CurrentDoctorCode = 0;
std::int16_t CurrentFacilityCode = 0;
std::int16_t CurrentWardCode = 0;
std::int16_t CurrentInsuranceCode = 0;
std::int16_t CurrentProcedureCode = 0;
std::int16_t CurrentDiagnosisCode = 0;
std::int32_t CurrentEMCode = 0;
std::int16_t CurrentSicknessCode = 0;
std::int16_t CurrentDiagnosisFamilyCode = 0;
std::int16_t PickedPatientId = 0;
std::int16_t PickedInsuranceCode = 0;
std::int16_t PickedDoctorCode = 0;
std::string PickedDoctorNames;
std::int16_t PickedAttentionTypeCode = 0;
std::int16_t PickedFrequency = 0;
std::string PickedAttentionTypeDescription;
std::string PickedFrequencyDescription;
std::int16_t EditChargeTypeCode = 0;
std::int16_t PickFacilityCode = 0;
std::int32_t EditEMCode = 0;
std::string MergeSelection;
std::string PrintDialogCaption;
std::string PrintDialogItems;
std::int16_t PrintDialogChoice = 0;
std::string ReportHeaderLine;
std::int32_t PageWidthInches = 8;
std::int32_t PageHeightInches = 11;
// clang-format on

void resetShared() {
  DatabaseConnection = Connection();
  DatabaseConnected = false;
  DatabasePath.clear();
  MainWindow = nullptr;
  RecordSaved = false;
  CurrentPatientId = CurrentDoctorCode = CurrentFacilityCode = CurrentWardCode = 0;
  CurrentInsuranceCode = CurrentProcedureCode = CurrentDiagnosisCode = 0;
  CurrentSicknessCode = CurrentDiagnosisFamilyCode = 0;
  CurrentEMCode = EditEMCode = 0;
  CurrentChargeDate = {};
  CurrentChargeTime = {};
  PickedPatientId = PickedInsuranceCode = PickedDoctorCode = 0;
  PickedAttentionTypeCode = PickedFrequency = 0;
  EditChargeTypeCode = PickFacilityCode = PrintDialogChoice = 0;
  for (std::string* text :
       {&PickedDoctorNames, &PickedAttentionTypeDescription, &PickedFrequencyDescription,
        &MergeSelection, &PrintDialogCaption, &PrintDialogItems, &ReportHeaderLine})
    text->clear();
  PageWidthInches = 8;
  PageHeightInches = 11;
}

}  // namespace bw
