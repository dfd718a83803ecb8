#include <QVBoxLayout>

#include "controls/ComboBox.h"
#include "core/AsisRutinasRecordsets.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLDoctors.h"
#include "patients/frmAdmitPatient.h"

namespace bw {
namespace {

class AdmitPatientDoctors : public Dialog {
 public:
  explicit AdmitPatientDoctors(QWidget* owner);
  ~AdmitPatientDoctors() override;
  void load();

 private:
  void add();
  void cancel();

  RecordSetRef RsDoctors;
  RecordSetRef RsAttentionTypes;
  RecordSetRef RsFrequencies;

  ComboBox* CBDoctors;
  ComboBox* CBAttentionTypes;
  ComboBox* CBFrequency;
};

void fillBox(ComboBox& box, const RecordSetRef& rows, const std::vector<std::string>& marks) {
  box.fillFrom(rows, "Description", marks);
  if (box.count() > 0) box.setListIndex(0);
}

void readAndFill(ComboBox& box, RecordSetRef& rows, const char* statement) {
  std::string message;
  if (OpenRecordset(rows, statement, message) != 0) return MsgBox(message);
  fillBox(box, rows, {});
}

AdmitPatientDoctors::AdmitPatientDoctors(QWidget* owner)
    : Dialog("frmAdmitPatientDoctors", "Add visiting Doctor", owner), CBDoctors(new ComboBox(this)),
      CBAttentionTypes(new ComboBox(this)), CBFrequency(new ComboBox(this)) {
  auto* column = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  addField(grid, 0, 0, "&Doctor:", CBDoctors, "CBDoctors");
  addField(grid, 1, 0, "&Type:", CBAttentionTypes, "CBAttentionTypes");
  addField(grid, 2, 0, "&Frequency:", CBFrequency, "CBFrequency");
  grid->setColumnStretch(1, 1);
  column->addLayout(grid);
  column->addStretch(1);
  column->addWidget(makeFoot(
      {.okName = "OKButton", .okText = "&Add", .cancelName = "CancelButton"}, [this] { add(); },
      [this] { cancel(); }));
  setSize(400);
}

AdmitPatientDoctors::~AdmitPatientDoctors() {
  for (RecordSetRef* rows : {&RsDoctors, &RsAttentionTypes, &RsFrequencies}) rows->close();
}

void AdmitPatientDoctors::load() {
  readAndFill(*CBAttentionTypes, RsAttentionTypes, "select * from AttentionTypes");
  readAndFill(*CBFrequency, RsFrequencies, "select * from Frequency");
  RsDoctors = DoctorList();
  if (RsDoctors) fillBox(*CBDoctors, RsDoctors, {"BillingDoctorCode", "DoctorCode"});
}

void AdmitPatientDoctors::add() {
  for (const ComboBox* required : {CBDoctors, CBAttentionTypes, CBFrequency})
    if (required->ListIndex() < 0) return;
  CBDoctors->moveToSelected(RsDoctors);
  CBAttentionTypes->moveToSelected(RsAttentionTypes);
  CBFrequency->moveToSelected(RsFrequencies);
  PickedDoctorCode = RsDoctors->code("DoctorCode");
  PickedAttentionTypeCode = RsAttentionTypes->code("AttentionTypeCode");
  PickedFrequency = RsFrequencies->code("Frequency");
  PickedDoctorNames = RsDoctors->textOrEmpty("Description");
  PickedAttentionTypeDescription = RsAttentionTypes->textOrEmpty("Description");
  PickedFrequencyDescription = RsFrequencies->textOrEmpty("Description");
  unload();
}

void AdmitPatientDoctors::cancel() {
  PickedDoctorCode = 0;
  unload();
}

}  // namespace

const Form& frmAdmitPatientDoctors() { return formOf<AdmitPatientDoctors>(); }

}  // namespace bw
