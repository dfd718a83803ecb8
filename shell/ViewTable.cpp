#include "shell/ViewTable.h"

#include "charges/frmCharges.h"
#include "lists/RecordView.h"
#include "patients/frmPatients.h"
#include "platform/Text.h"
#include "shell/RecordViewTable.h"
#include "shell/frmBrowser.h"
#include "shell/frmGeneralInfo.h"

namespace bw {
namespace {

// The records views have no Discharge, and yet offer it: choosing it ends in error 438.
constexpr std::string_view kDischarge = ",2,";
constexpr std::string_view kIncomplete = ",1,";

template <auto form>
View& as() {
  return form();
}

// clang-format off
const std::array<ViewRow, kViewCount> kViews{{
    {"Charges", as<frmCharges>, ",4,5,13,", ToolbarGroup::charges, ",0,"},
    {"Patients", as<frmPatients>, ",1,2,3,15,16,17,18,", ToolbarGroup::patients, ",1,2,"},
    {"Doctors", as<frmDoctors>, kIncomplete, ToolbarGroup::records, kDischarge},
    {"Facilities", as<frmFacilities>, kIncomplete, ToolbarGroup::records, kDischarge},
    {"Diagnosis", as<frmDiagnosis>, kIncomplete, ToolbarGroup::records, kDischarge},
    {"Procedures", as<frmProcedures>, kIncomplete, ToolbarGroup::records, kDischarge},
    {"Insurances", as<frmInsurances>, kIncomplete, ToolbarGroup::records, kDischarge},
    {"Evaluation && Management Concepts", as<frmEMCodes>, ",6,7,8,9,14,", ToolbarGroup::records, kDischarge},
    {"History Items", as<frmSickness>, ",10,11,12,", ToolbarGroup::records, kDischarge},
    {"Diagnosis Groups", as<frmDiagnosisFamilies>, kIncomplete, ToolbarGroup::records, kDischarge},
    {"Brantiwell", as<frmGeneralInfo>, kIncomplete, ToolbarGroup::none, ""},
    {"Halvorne on the Web", sponsorOnTheWeb, kIncomplete, ToolbarGroup::browser, ""},
    {"Fenmoor Systems on the Web", makerOnTheWeb, kIncomplete, ToolbarGroup::browser, ""},
}};
// clang-format on

}  // namespace

const std::array<std::string_view, kFilterCount> kFilterCaptions{"All",
                                                                 "Incomplete",
                                                                 "Admitted",
                                                                 "Not Admitted",
                                                                 "Ready",
                                                                 "Posted",
                                                                 "Hospitals",
                                                                 "Board & Care",
                                                                 "Extended Care Facilities",
                                                                 "Home",
                                                                 "Allergies",
                                                                 "Medical History",
                                                                 "Surgical History",
                                                                 "Archived",
                                                                 "Office",
                                                                 "Duplicated DOB",
                                                                 "Duplicated Names",
                                                                 "Duplicated DOB+Names",
                                                                 "Duplicated Account"};

const ViewRow& viewRow(std::int16_t view) {
  const bool known = view >= 0 && view < kViewCount;
  return kViews[static_cast<std::size_t>(known ? view : kWelcomeView)];
}

bool names(std::string_view list, int number) {
  return list.find(concat(",", number, ",")) != std::string_view::npos;
}

}  // namespace bw
