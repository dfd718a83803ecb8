#pragma once

#include <cstdint>
#include <string>

#include "engine/Connection.h"
#include "text/Moment.h"

// The program's shared variables. Whoever has a value writes it, whoever needs it reads it: forms
// hand work to each other through these, not through arguments. One thread, no guard.

namespace bw {

class MainFrame;

extern Connection DatabaseConnection;  // lives from start to the end of the process
extern bool DatabaseConnected;         // written and read by ConnectDatabase only
extern std::string DatabasePath;
extern MainFrame* MainWindow;

// Set by the Ok of an edit dialog, cleared by its Cancel and by nothing else: a dialog that fails
// to load leaves the value of the dialog before.
extern bool RecordSaved;

// The key of the record that the next dialog works on; 0 means a new record.
extern std::int16_t CurrentPatientId;
extern Date CurrentChargeDate;  // kNewCharge means a new charge
extern TimeOfDay CurrentChargeTime;
extern std::int16_t CurrentDoctorCode;
extern std::int16_t CurrentFacilityCode;
extern std::int16_t CurrentWardCode;
extern std::int16_t CurrentInsuranceCode;
extern std::int16_t CurrentProcedureCode;
extern std::int16_t CurrentDiagnosisCode;
extern std::int32_t CurrentEMCode;
extern std::int16_t CurrentSicknessCode;
extern std::int16_t CurrentDiagnosisFamilyCode;

// Answers of the pick dialogs. On the way in a Picked... code names the row to preselect; Cancel
// leaves 0. A dialog closed by its close box leaves the answer before.
extern std::int16_t PickedPatientId;
extern std::int16_t PickedInsuranceCode;
extern std::int16_t PickedDoctorCode;
extern std::string PickedDoctorNames;
extern std::int16_t PickedAttentionTypeCode;
extern std::int16_t PickedFrequency;
extern std::string PickedAttentionTypeDescription;
extern std::string PickedFrequencyDescription;

// Which patients the patient pick offers: of type 1 those of the facility, else the not admitted.
extern std::int16_t EditChargeTypeCode;
extern std::int16_t PickFacilityCode;

// Concept that the charge editor preselects; 0 for none.
extern std::int32_t EditEMCode;

// Patients chosen for a merge, ten digits each.
extern std::string MergeSelection;

// The print selection dialog: its caption, its entries each closed by ";", the entry chosen
// (1 for the first, 0 for Cancel).
extern std::string PrintDialogCaption;
extern std::string PrintDialogItems;
extern std::int16_t PrintDialogChoice;

extern std::string ReportHeaderLine;  // set empty at start; nothing changes it
// Size of the printed page in whole inches, halves rounded to even.
extern std::int32_t PageWidthInches;
extern std::int32_t PageHeightInches;

// 1900-01-01, the mark of a new charge.
inline constexpr Date kNewCharge{2};

// Everything as at the start of the process; the connection is closed.
void resetShared();

}  // namespace bw
