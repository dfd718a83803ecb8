#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>

#include "charges/ChargeEditor.h"
#include "controls/Icons.h"
#include "picks/PickDialogs.h"

namespace bw {

namespace {

constexpr DetailFrame kDiagnoses{
    .title = "Diagnosis",
    .addTip = "Add diagnoses (Insert)",
    .delTip = "Remove the selected diagnosis, or keep it after all (Delete)",
    .empty = "No diagnosis yet. Press Insert here, or Alt+A, to add some.",
    .delText = "de&l"};
constexpr DetailFrame kProcedures{
    .title = "Procedures",
    .addTip = "Add procedures (Insert)",
    .delTip = "Remove the selected procedure, or keep it after all (Delete)",
    .empty = "No procedure yet. Press Insert here, or Alt+D, to add some.",
    .name = "Frame2",
    .list = "ListView2",
    .addName = "Command4",
    .addText = "a&dd",
    .delName = "Command3",
    .delText = "d&el"};

}  // namespace

ChargeEditor::ChargeEditor(QWidget* owner)
    : Dialog("frmEditCharge", "Charge", owner), CBFacilities(new ComboBox(this)),
      CBEMCodes(new ComboBox(this)), CBChargeTypes(new ComboBox(this)), DTDOC(new DatePicker(this)),
      TxtPatient(new QLineEdit(this)), CBRefDoctors(new ComboBox(this)),
      CBDoctors(new ComboBox(this)), CBStatus(new ComboBox(this)),
      ListView1(new ListView({{"Description", "Diagnosis", 4000}}, {}, this)),
      ListView2(new ListView({{"Description", "Procedures", 4000}}, {}, this)),
      diagnoses_{"DiagnosisCode", "ChargeDiagnosisDescriptive", frmPickDiagnosis,
                 WorkingList(*ListView1)},
      procedures_{"ProcedureCode", "ChargeProceduresDescriptive", frmPickProcedures,
                  WorkingList(*ListView2)},
      patientHint_(new Hint(TxtPatient, Hint::Place::below)),
      conceptHint_(new Hint(CBEMCodes, Hint::Place::below)) {
  build();
}

void ChargeEditor::build() {
  auto* column = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  buildFields(grid);
  column->addLayout(grid);
  auto* frames = new QHBoxLayout;
  frames->addWidget(buildDetails(kDiagnoses, diagnoses_));
  frames->addWidget(buildDetails(kProcedures, procedures_));
  column->addLayout(frames, 1);
  auto* foot = makeFoot(
      {}, [this] { ok(); }, [this] { cancel(); });
  column->addWidget(foot);
  const auto button = [this](const char* name) { return findChild<QWidget*>(name); };
  setTabs({CBFacilities, CBChargeTypes, Command5, CBDoctors, CBEMCodes, DTDOC, CBRefDoctors,
           CBStatus, ListView1, button("Command1"), button("Command2"), ListView2,
           button("Command4"), button("Command3"), button("btnOk"), button("btnCancel")});
  CBStatus->setItems({"Ready", "Posted", "Archived"});
  CBFacilities->onSelected = [this] { facilitySelected(); };
  CBChargeTypes->onSelected = [this] { chargeTypeSelected(); };
  CBDoctors->onSelected = [this] { doctorSelected(); };
  CBEMCodes->onSelected = [this] { unsay(); };
  onEvent(new QShortcut(QKeySequence(Qt::Key_F9), this), &QShortcut::activated, this,
          [this] { asLastTime(); });
  setSize(820, 520);
}

void ChargeEditor::buildFields(QGridLayout* grid) {
  addField(grid, 0, 0, "&Facility:", CBFacilities, "CBFacilities");
  addField(grid, 0, 2, "E&&&M:", CBEMCodes, "CBEMCodes");
  addField(grid, 1, 0, "Patient &sts.:", CBChargeTypes, "CBChargeTypes");
  addField(grid, 1, 2, "Da&te:", DTDOC, "DTDOC");

  auto* patient = new QWidget(this);
  auto* row = new QHBoxLayout(patient);
  row->setContentsMargins(0, 0, 0, 0);
  Command5 = makeButton("Command5", "", patient, [this] { pickPatient(); });
  Command5->setIcon(icon("Search"));
  Command5->setAccessibleName("Select the patient");
  Command5->setToolTip("Select the patient");
  Command5->setFixedWidth(Command5->sizeHint().height());
  row->addWidget(TxtPatient, 1);
  row->addWidget(Command5);
  addField(grid, 2, 0, "&Patient:", patient, "fraPatient")->setBuddy(Command5);
  named(TxtPatient, "TxtPatient", "Patient:");
  makeReadOnly(TxtPatient);
  constexpr const char* kAsLastTime = "F9 fills in what the patient's last charge had";
  TxtPatient->setToolTip(kAsLastTime);
  TxtPatient->setAccessibleDescription(kAsLastTime);

  LblDoctorCaption = addField(grid, 2, 2, "Attending:", CBRefDoctors, "CBRefDoctors");
  LblDoctorCaption->setObjectName("LblDoctorCaption");
  addField(grid, 3, 0, "D&octor:", CBDoctors, "CBDoctors");
  addField(grid, 3, 2, "Stat&us:", CBStatus, "CBStatus");
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  grid->setHorizontalSpacing(2 *
                             grid->horizontalSpacing());  // Tab goes down the left, then the right
  // A field that goes out of sight leaves its place to nobody.
  for (QWidget* hidden : std::initializer_list<QWidget*>{CBRefDoctors, LblDoctorCaption}) {
    QSizePolicy policy = hidden->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    hidden->setSizePolicy(policy);
  }
}

QWidget* ChargeEditor::buildDetails(const DetailFrame& frame, Details& details) {
  details.list.list().stretchLastColumn();
  return makeDetailFrame(frame, details.list, this, [this, &details] { addDetails(details); });
}

}  // namespace bw
