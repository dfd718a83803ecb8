#include "patients/frmAdmitPatient.h"

#include <QLineEdit>
#include <QVBoxLayout>

#include "controls/ComboBox.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLDoctors.h"
#include "data/BWSQLFacilities.h"
#include "data/BWSQLPatients.h"
#include "data/BWSQLWards.h"
#include "data/ChargeCodes.h"
#include "lists/DetailFrame.h"
#include "lists/EditedRecord.h"
#include "lists/WorkingList.h"
#include "patients/PatientAdmission.h"
#include "text/Text.h"

namespace bw {
namespace {

// How an attending doctor who is not among the visitors becomes one, also where the tables give
// these codes another meaning.
constexpr AttentionType kAttendingType = kConsult;
constexpr std::int16_t kAttendingFrequency = 1;  // daily

class AdmitPatient : public Dialog {
 public:
  explicit AdmitPatient(QWidget* owner);
  ~AdmitPatient() override;
  void load();

 private:
  void build();
  QWidget* buildVisitors();
  void showCatalogues();
  void openVisitors();

  void facilitySelected();
  void addVisitor();
  void ok();
  void addAttending(std::int16_t doctor);
  void storeVisitors();

  RecordSetRef RsFacilities;
  RecordSetRef RsWards;
  RecordSetRef RsDoctors;

  QLineEdit* TxtPatient;
  ComboBox* CBFacilities;
  ComboBox* CBFacilityWards;
  ComboBox* CBDoctors;
  ListView* ListView1;
  WorkingList VisitingDoctors;
};

// Fills a box with the descriptions and selects the row of that code; the first one for a code that
// is 0 or has gone. Without rows nothing is selected.
void fillAndSelect(ComboBox& box, const RecordSetRef& rows, const char* key, std::int16_t code) {
  box.Clear();
  if (!rows || rows->RecordCount() == 0) return;
  box.fillFrom(rows, "Description", {key});
  if (code == 0) return box.setListIndex(0);
  box.selectFound(rows, concat(key, " = ", code));
}

AdmitPatient::AdmitPatient(QWidget* owner)
    : Dialog("frmAdmitPatient", "Admission Information", owner), TxtPatient(new QLineEdit(this)),
      CBFacilities(new ComboBox(this)), CBFacilityWards(new ComboBox(this)),
      CBDoctors(new ComboBox(this)),
      ListView1(new ListView({{"Names", "Doctor", 2000},
                              {"AttentionTypeDescription", "Rol", 1500},
                              {"FrequencyDescription", "Frequency", 1000}},
                             {}, this)),
      VisitingDoctors(*ListView1) {
  build();
}

AdmitPatient::~AdmitPatient() {
  for (RecordSetRef* rows : {&RsFacilities, &RsWards, &RsDoctors, &VisitingDoctors.rows})
    rows->close();
}

void AdmitPatient::build() {
  auto* column = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  addField(grid, 0, 0, "Patient:", TxtPatient, "TxtPatient");
  makeReadOnly(TxtPatient);
  addField(grid, 1, 0, "&Facility:", CBFacilities, "CBFacilities");
  addField(grid, 2, 0, "&Ward:", CBFacilityWards, "CBFacilityWards");
  addField(grid, 3, 0, "A&ttending:", CBDoctors, "CBDoctors");
  grid->setColumnStretch(1, 1);
  column->addLayout(grid);
  column->addWidget(buildVisitors(), 1);
  column->addWidget(makeFoot(
      {.okName = "OKButton", .cancelName = "CancelButton"}, [this] { ok(); },
      [this] { unload(); }));
  CBFacilities->onSelected = [this] { facilitySelected(); };
  CBFacilities->setFocus();
  setSize(520, 460);
}

QWidget* AdmitPatient::buildVisitors() {
  auto* frame =
      makeDetailFrame({.title = "Doctors visiting patient",
                       .addTip = "Add a visiting doctor (Insert)",
                       .delTip = "Remove the selected doctor, or keep him after all (Delete)",
                       .empty = "No visiting doctor yet. Ok adds the attending one; press Insert "
                                "here to add others."},
                      VisitingDoctors, this, [this] { addVisitor(); });
  ListView1->stretchColumn(0);
  return frame;
}

void AdmitPatient::load() {
  NotLoaded = true;
  if (!takeAdmission(TxtPatient)) return;
  showCatalogues();
  openVisitors();
  NotLoaded = false;
}

void AdmitPatient::showCatalogues() {
  RsFacilities = FacilityList();
  fillAndSelect(*CBFacilities, RsFacilities, "FacilityCode", CurrentFacilityCode);
  RsDoctors = DoctorList();
  fillAndSelect(*CBDoctors, RsDoctors, "DoctorCode", CurrentDoctorCode);
}

void AdmitPatient::openVisitors() {
  if (openRows(
          VisitingDoctors.rows,
          concat("Select * From PatientDoctorsDescriptive Where Patientid = ", CurrentPatientId)))
    return VisitingDoctors.fill();
  // There is nothing to keep changes in.
  for (const char* name : {"ListView1", "Command1", "Command2"})
    findChild<QWidget*>(name)->setEnabled(false);
}

// The stored ward stays selected if, and only if, it belongs to the facility.
void AdmitPatient::facilitySelected() {
  CBFacilities->moveToSelected(RsFacilities);
  RsWards.close();
  RsWards = WardListByFacility(RsFacilities->code("FacilityCode"));
  fillAndSelect(*CBFacilityWards, RsWards, "WardCode", CurrentWardCode);
}

// A doctor who is on the list already is added again; the table refuses the second one.
void AdmitPatient::addVisitor() {
  frmAdmitPatientDoctors().showModal();
  if (PickedDoctorCode <= 0) return;
  VisitingDoctors.add({{"DoctorCode", Value(std::int64_t{PickedDoctorCode})},
                       {"Names", Value(PickedDoctorNames)},
                       {"AttentionTypeCode", Value(std::int64_t{PickedAttentionTypeCode})},
                       {"AttentionTypeDescription", Value(PickedAttentionTypeDescription)},
                       {"Frequency", Value(std::int64_t{PickedFrequency})},
                       {"FrequencyDescription", Value(PickedFrequencyDescription)}});
  VisitingDoctors.fill();
}

// The admission is stored first, then each visitor by himself: what fails leaves the rest done.
void AdmitPatient::ok() {
  for (const ComboBox* required : {CBFacilities, CBFacilityWards, CBDoctors})
    if (required->ListIndex() < 0) return;
  CBFacilities->moveToSelected(RsFacilities);
  CBFacilityWards->moveToSelected(RsWards);
  CBDoctors->moveToSelected(RsDoctors);
  const std::int16_t doctor = RsDoctors->code("DoctorCode");
  std::string message;
  if (PatientSetAdmission(CurrentPatientId, RsFacilities->code("FacilityCode"),
                          RsWards->code("WardCode"), doctor, message) > 0)
    return MsgBox(message);
  if (VisitingDoctors.rows) {
    addAttending(doctor);
    storeVisitors();
  }
  unload();
}

// A row that is to be removed counts as present: an attending doctor marked so ends without one.
void AdmitPatient::addAttending(std::int16_t doctor) {
  bool present = false;
  VisitingDoctors.forEach(
      [&](int) { present = present || VisitingDoctors.rows->code("DoctorCode") == doctor; });
  if (present) return;
  VisitingDoctors.add({{"DoctorCode", Value(std::int64_t{doctor})},
                       {"AttentionTypeCode", Value(std::int64_t{kAttendingType})},
                       {"Frequency", Value(std::int64_t{kAttendingFrequency})}});
}

void AdmitPatient::storeVisitors() {
  VisitingDoctors.forEach([&](int state) {
    const RecordSetRef& row = VisitingDoctors.rows;
    const std::int16_t doctor = row->code("DoctorCode");
    std::string message;
    const auto write = [&](auto routine) {
      return routine(CurrentPatientId, doctor, row->code("AttentionTypeCode"),
                     row->code("Frequency"), message);
    };
    int result = 0;
    if (state == pending::kAdded) result = write(PatientDoctorInsert);
    if (state == pending::kRemoved) result = PatientDoctorDelete(CurrentPatientId, doctor, message);
    if (state == pending::kChanged) result = write(PatientDoctorUpdate);
    if (result != 0) MsgBox(message);
  });
}

}  // namespace

const Form& frmAdmitPatient() { return formOf<AdmitPatient>(); }

}  // namespace bw
