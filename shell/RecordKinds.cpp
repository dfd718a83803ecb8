#include "shell/RecordKinds.h"

#include <QPointer>
#include <algorithm>

#include "catalogues/Editors.h"
#include "charges/frmCharges.h"
#include "charges/frmEditCharge.h"
#include "core/Principal.h"
#include "data/BWSQLDiagnosis.h"
#include "data/BWSQLDiagnosisFamilies.h"
#include "data/BWSQLDoctors.h"
#include "data/BWSQLEMCodes.h"
#include "data/BWSQLFacilities.h"
#include "data/BWSQLInsurances.h"
#include "data/BWSQLProcedures.h"
#include "data/BWSQLSickness.h"
#include "lists/Filters.h"
#include "lists/MainFrame.h"
#include "patients/frmEditPatient.h"
#include "patients/frmPatients.h"
#include "shell/frmBrowser.h"
#include "shell/frmGeneralInfo.h"
#include "text/Text.h"

namespace bw {
namespace {

template <auto form>
View& as() {
  return form();
}

template <auto routine, auto& current>
int removeCurrent(std::string& message) {
  return routine(current, message);
}

constexpr FilterWord kCatalogueWords[] = {{filter::all, "All"}, {filter::incomplete, "Incomplete"}};
constexpr FilterWord kSicknessWords[] = {{filter::all, "All"},
                                         {filter::allergies, "Allergies"},
                                         {filter::medicalHistory, "Medical"},
                                         {filter::surgicalHistory, "Surgical"}};
constexpr FilterWord kEMWords[] = {{filter::all, "All"},
                                   {filter::incomplete, "Incomplete"},
                                   {filter::hospitals, "Hospitals"},
                                   {filter::boardAndCare, "B&C"},
                                   {filter::extendedCare, "ECF"},
                                   {filter::home, "Home"}};

// Stands in the menu of views that hide the menu.
constexpr ViewFilter kHidden{filter::incomplete, "", nullptr, ViewFilter::In::menu};

// The views of records have no Discharge, and yet offer it: choosing it ends in error 438.
// "Evaulation", and the missing blank behind "Diagnosis Families", are the titles as printed.
const std::vector<RecordKind> kKinds{
    {.caption = "Charges",
     .shortcut = "Ctrl+1",
     .view = as<frmCharges>,
     .filters = {{filter::ready}, {filter::posted}, {filter::archived}},
     .group = ToolbarGroup::charges,
     .actions = {kPost},
     .newName = "NewCharge",
     .newButton = "New Charge...",
     .openNew =
         [] {
           CurrentChargeDate = kNewCharge;
           frmEditCharge().showModal();
         }},
    {.caption = "Patients",
     .shortcut = "Ctrl+2",
     .view = as<frmPatients>,
     .filters = {{filter::admitted},
                 {filter::notAdmitted},
                 {filter::incomplete},
                 {filter::sameBirthday},
                 {filter::sameNames},
                 {filter::sameBirthdayAndNames, "", "Duplicated Names+DOB"},
                 {filter::sameAccount, "", "Duplicated Accounts"}},
     .group = ToolbarGroup::patients,
     .actions = {kAdmit, kDischarge},
     .newName = "NewPatient",
     .newButton = "New Patient...",
     .openNew =
         [] {
           CurrentPatientId = 0;
           frmEditPatient().showModal();
         }},
    {.caption = "Doctors",
     .shortcut = "Ctrl+3",
     .filters = {{filter::incomplete, "where BillingDoctorCode=''"}},
     .actions = {kDischarge},
     .newName = "NewDoctor",
     .newButton = "New Doctor...",
     .records =
         RecordViewRow{.name = "frmDoctors",
                       .caption = "Doctors",
                       .several = "doctors",
                       .statement = "SELECT * FROM Doctors",
                       .firstSort = "Description",
                       .token = RecordViewRow::Token::bare,
                       .key = "DoctorCode",
                       .current = &CurrentDoctorCode,
                       .deleteQuestion = "Are you sure you want to delete the selected Doctors?",
                       .remove = removeCurrent<DoctorDelete, CurrentDoctorCode>,
                       .editor = frmEditDoctor,
                       .section = "Doctors",
                       .report = {"Doctors (", "DoctorsView.myv", kCatalogueWords},
                       .columns = {{"Description", "Description", 2880},
                                   {"BillingDoctorCode", "Billing Code", 1440}}}},
    // Layout and filter are read under the name "Facilites", the filter is written under
    // "Facilities": it is always read back as 0. The question's spelling is the users' too.
    {.caption = "Facilities",
     .shortcut = "Ctrl+4",
     .filters = {{filter::incomplete, "where BillingFacilityCode=''"}},
     .actions = {kDischarge},
     .newName = "NewFacility",
     .newButton = "New Facility...",
     .records =
         RecordViewRow{.name = "frmFacilities",
                       .caption = "Facilities",
                       .several = "facilities",
                       .statement = "SELECT * FROM FacilitiesDescriptive",
                       .firstSort = " Description ",
                       .token = RecordViewRow::Token::padded,
                       .key = "FacilityCode",
                       .current = &CurrentFacilityCode,
                       .deleteQuestion = "Are you sure you want to delete the selected Facilites?",
                       .remove = removeCurrent<FacilityDelete, CurrentFacilityCode>,
                       .editor = []() -> const Form& { return frmEditFacility(); },
                       .section = "Facilites",
                       .filterSection = "Facilities",
                       .report = {"Facilities (", "FacilitiesView.myv", kCatalogueWords},
                       .columns = {{"Description", "Description", 2880},
                                   {"TypeDescription", "Type", 2880},
                                   {"BillingFacilityCode", "Billing Code In", 1440},
                                   {"BillingFacilityCodeOut", "Billing Code Out", 1440}}}},
    {.caption = "Diagnosis",
     .shortcut = "Ctrl+5",
     .filters = {{filter::incomplete, "where BillingDiagnosisCode=''"}},
     .actions = {kDischarge},
     .newName = "NewDiagnosis",
     .newButton = "New Diagnosis...",
     .records =
         RecordViewRow{.name = "frmDiagnosis",
                       .caption = "Diagnosis",
                       .several = "diagnoses",
                       .statement = "SELECT * FROM DiagnosisDescriptive",
                       .firstSort = "Description",
                       .token = RecordViewRow::Token::bare,
                       .key = "DiagnosisCode",
                       .current = &CurrentDiagnosisCode,
                       .deleteQuestion = "Are you sure you want to delete the selected Diagnosis?",
                       .remove = removeCurrent<DiagnosisDelete, CurrentDiagnosisCode>,
                       .editor = frmEditDiagnosis,
                       .section = "Diagnosis",
                       .report = {"Diagnosis (", "DiagnosisView.myv", kCatalogueWords},
                       .columns = {{"Description", "Description", 2880},
                                   {"BillingDiagnosisCode", "Billing Code", 1440},
                                   {"RealDiagnosisCode", "Real Code", 1440},
                                   {"FamilyDesc", "Family", 2880}}}},
    {.caption = "Procedures",
     .shortcut = "Ctrl+6",
     .filters = {{filter::incomplete, "where BillingProcedureCode=''"}},
     .actions = {kDischarge},
     .newName = "NewProcedure",
     .newButton = "New Procedure...",
     .records =
         RecordViewRow{.name = "frmProcedures",
                       .caption = "Procedures",
                       .several = "procedures",
                       .statement = "SELECT * FROM Procedures",
                       .firstSort = " Description ",
                       .token = RecordViewRow::Token::padded,
                       .key = "ProcedureCode",
                       .current = &CurrentProcedureCode,
                       .deleteQuestion = "Are you sure you want to delete the selected Procedures?",
                       .remove = removeCurrent<ProcedureDelete, CurrentProcedureCode>,
                       .editor = frmEditProcedure,
                       .section = "Procedures",
                       .report = {"Procedures (", "ProceduresView.myv", kCatalogueWords},
                       .columns = {{"Description", "Description", 2880},
                                   {"BillingProcedureCode", "Billing Code", 1440},
                                   {"RealProcedureCode", "Real Code", 1440}}}},
    {.caption = "Insurances",
     .shortcut = "Ctrl+7",
     .filters = {{filter::incomplete, "where BillingInsuranceCode=''"}},
     .actions = {kDischarge},
     .newName = "NewInsurance",
     .newButton = "New Insurance...",
     .records =
         RecordViewRow{.name = "frmInsurances",
                       .caption = "Insurances",
                       .several = "insurances",
                       .statement = "SELECT * FROM Insurance",
                       .firstSort = " Description ",
                       .token = RecordViewRow::Token::padded,
                       .key = "InsuranceCode",
                       .current = &CurrentInsuranceCode,
                       .deleteQuestion = "Are you sure you want to delete the selected Insurances?",
                       .remove = removeCurrent<InsuranceDelete, CurrentInsuranceCode>,
                       .editor = frmEditInsurance,
                       .section = "Insurances",
                       .report = {"Insurances (", "InsurancesView.myv", kCatalogueWords},
                       .columns = {{"Description", "Description", 2880},
                                   {"BillingInsuranceCode", "Billing Code", 1440}}}},
    {.caption = "Evaluation && Management Concepts",
     .node = "E & M Concepts",
     .shortcut = "Ctrl+8",
     .filters = {{filter::hospitals, "where FacilityTypeCode=1"},
                 {filter::boardAndCare, "where FacilityTypeCode=4"},
                 {filter::extendedCare, "where FacilityTypeCode=2"},
                 {filter::home, "where FacilityTypeCode=3"},
                 {filter::office, "where FacilityTypeCode=5"},
                 {filter::incomplete, "where BillingEMCode=''", nullptr, ViewFilter::In::tree}},
     .actions = {kDischarge},
     .newName = "NewEMCode",
     .newButton = "New EM concept...",
     .newEntry = "New E&M concept...",
     .records =
         RecordViewRow{.name = "frmEMCodes",
                       .caption = "Evaluation & Management codes",
                       .several = "E&M concepts",
                       .statement = "SELECT * FROM EMCodesDescriptive",
                       .firstSort = " Description ",
                       .token = RecordViewRow::Token::padded,
                       .key = "EMCode",
                       .current = &CurrentEMCode,
                       .deleteQuestion = "Are you sure you want to delete the selected EMCodes?",
                       .remove = removeCurrent<EMCodeDelete, CurrentEMCode>,
                       .editor = frmEditEMCode,
                       .section = "EMCodes",
                       .report = {"Evaulation & Management Codes (", "EMCodesView.myv", kEMWords},
                       .columns = {{"Description", "Description", 2880},
                                   {"FacilityTypeDescription", "Applies to", 2880},
                                   {"BillingEMCode", "Billing Code", 1440},
                                   {"RealEMCode", "Real Code", 1440},
                                   {"ChargeTypeDescription", "Charge Type", 2880},
                                   {"AttentionTypeDescription", "AttentionType", 1440}}}},
    {.caption = "History Items",
     .shortcut = "Ctrl+9",
     .filters = {{filter::allergies, "where SicknessTypeCode=0"},
                 {filter::medicalHistory, "where SicknessTypeCode=1", "Past Medical"},
                 {filter::surgicalHistory, "where SicknessTypeCode=2", "Past Surgical"}},
     .actions = {kDischarge},
     .newName = "NewSickness",
     .newButton = "New History Item",
     .newEntry = "New History item...",
     .records =
         RecordViewRow{.name = "frmSickness",
                       .caption = "History items",
                       .several = "history items",
                       .statement = "SELECT * FROM SicknessDescriptive",
                       .firstSort = " Description ",
                       .token = RecordViewRow::Token::padded,
                       .key = "SicknessCode",
                       .current = &CurrentSicknessCode,
                       .deleteQuestion = "Are you sure you want to delete the selected Sickness?",
                       .remove = removeCurrent<SicknessDelete, CurrentSicknessCode>,
                       .editor = frmEditSickness,
                       .section = "Sickness",
                       .filterSection = nullptr,
                       .report = {"History Items (", "HistoryItemsView.myv", kSicknessWords},
                       .columns = {{"Description", "Description", 2880},
                                   {"SicknessTypeDescription", "Type", 2880}}}},
    {.caption = "Diagnosis Groups",
     .shortcut = "Ctrl+0",
     .filters = {kHidden},
     .filterMenu = false,
     .actions = {kDischarge},
     .newName = "NewDiagnosisFamily",
     .newButton = "New Diagnosis Group",
     .newEntry = "New Diagnosis Group...",
     .records =
         RecordViewRow{
             .name = "frmDiagnosisFamilies",
             .caption = "Diagnosis Groups",
             .several = "diagnosis groups",
             .statement = "SELECT * FROM DiagnosisFamily",
             .filtering = RecordViewRow::Filters::ignored,
             .firstSort = "DiagnosisFamilyDescription",
             .token = RecordViewRow::Token::bare,
             .key = "DiagnosisFamilyCode",
             .current = &CurrentDiagnosisFamilyCode,
             .deleteQuestion = "Are you sure you want to delete the selected DiagnosisFamilies?",
             .remove = removeCurrent<DiagnosisFamilyDelete, CurrentDiagnosisFamilyCode>,
             .editor = frmEditDiagnosisFamily,
             .section = "DiagnosisFamilies",
             .report = {"Diagnosis Families(", "DiagnosisFamiliesView.myv", kCatalogueWords},
             .columns = {{"DiagnosisFamilyDescription", "Description", 2880}}}},
    {.caption = "Brantiwell",
     .shortcut = "Ctrl+B",
     .isPage = true,
     .view = frmGeneralInfo,
     .filters = {kHidden},
     .filterMenu = false,
     .group = ToolbarGroup::none},
    {.caption = "Halvorne on the Web",
     .isPage = true,
     .reachable = false,
     .view = sponsorOnTheWeb,
     .filters = {kHidden},
     .filterMenu = false,
     .group = ToolbarGroup::browser},
    {.caption = "Fenmoor Systems on the Web",
     .shortcut = "Ctrl+I",
     .isPage = true,
     .view = makerOnTheWeb,
     .filters = {kHidden},
     .filterMenu = false,
     .group = ToolbarGroup::browser},
};

}  // namespace

std::span<const RecordKind> recordKinds() { return kKinds; }

const RecordKind& recordKind(std::int16_t view) {
  const bool known = view >= 0 && view < std::ssize(kKinds);
  return kKinds[static_cast<std::size_t>(known ? view : kWelcomeView)];
}

std::string filterKeys(const RecordKind& kind, std::int16_t filter) {
  if (!kind.filterMenu) return "";
  std::vector<std::pair<bool, std::int16_t>> lines{{false, 0}};
  for (const ViewFilter& each : kind.filters)
    lines.emplace_back(each.in == ViewFilter::In::tree, each.number);
  std::sort(lines.begin(), lines.end());
  const auto line = std::find_if(lines.begin(), lines.end(),
                                 [&](const auto& each) { return each.second == filter; });
  return line == lines.end() ? "" : concat("Alt+", line - lines.begin() + 1);
}

RecordView& recordView(const RecordKind& kind) {
  static std::vector<QPointer<RecordView>> views(kKinds.size());
  QPointer<RecordView>& view = views[static_cast<std::size_t>(&kind - kKinds.data())];
  if (!view) view = new RecordView(kind.records.value(), kind.filters, MainWindow->clientArea());
  return *view;
}

View& viewOf(const RecordKind& kind) {
  return kind.view != nullptr ? kind.view() : recordView(kind);
}

void openNew(const RecordKind& kind) {
  if (kind.openNew != nullptr) return kind.openNew();
  if (!kind.records) return;
  std::visit([](auto* current) { *current = 0; }, kind.records->current);
  kind.records->editor().showModal();
}

}  // namespace bw
