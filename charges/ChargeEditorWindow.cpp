#include <QGroupBox>
#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>

#include "charges/ChargeEditor.h"
#include "controls/Icons.h"
#include "picks/PickDialogs.h"

namespace bw {

struct ChargeEditor::FrameRow {
  const char* name;
  const char* title;
  const char* list;
  const char* addName;
  const char* addText;
  const char* addTip;
  const char* delName;
  const char* delText;
  const char* delTip;
};

// clang-format off
const ChargeEditor::FrameRow ChargeEditor::kFrames[] = {
    {"Frame1", "Diagnosis", "ListView1", "Command1", "&add", "Add diagnoses (Insert)",
     "Command2", "de&l", "Remove the selected diagnosis, or keep it after all (Delete)"},
    {"Frame2", "Procedures", "ListView2", "Command4", "a&dd", "Add procedures (Insert)",
     "Command3", "d&el", "Remove the selected procedure, or keep it after all (Delete)"},
};
// clang-format on

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
  for (const FrameRow& row : kFrames)
    frames->addWidget(buildDetails(row, &row == kFrames ? diagnoses_ : procedures_));
  column->addLayout(frames, 1);
  auto* foot = makeFoot(
      {}, [this] { ok(); }, [this] { cancel(); });
  column->addWidget(foot);
  const auto button = [this](const char* name) { return findChild<QWidget*>(name); };
  setTabs({CBFacilities, CBEMCodes, CBChargeTypes, DTDOC, Command5, CBRefDoctors, CBDoctors,
           CBStatus, ListView1, button("Command1"), button("Command2"), ListView2,
           button("Command4"), button("Command3"), button("btnOk"), button("btnCancel")});
  CBStatus->setItems({"Ready", "Posted", "Archived"});
  CBFacilities->onSelected = [this] { facilitySelected(); };
  CBChargeTypes->onSelected = [this] { chargeTypeSelected(); };
  CBDoctors->onSelected = [this] { doctorSelected(); };
  CBEMCodes->onSelected = [this] { unsay(); };
  onEvent(new QShortcut(QKeySequence(Qt::Key_F9), this), &QShortcut::activated, this,
          [this] { asLastTime(); });
  resize(820, 520);
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
  // A field that goes out of sight leaves its place to nobody.
  for (QWidget* hidden : std::initializer_list<QWidget*>{CBRefDoctors, LblDoctorCaption}) {
    QSizePolicy policy = hidden->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    hidden->setSizePolicy(policy);
  }
}

QWidget* ChargeEditor::buildDetails(const FrameRow& row, Details& details) {
  auto* frame = named(new QGroupBox(row.title, this), row.name, row.title);
  auto* column = new QVBoxLayout(frame);
  ListView& list = details.list.list();
  list.stretchLastColumn();
  list.onInsertKey = [this, &details] { addDetails(details); };
  list.onDeleteKey = [&details] { details.list.toggleSelected(); };
  column->addWidget(named(&list, row.list, row.title));
  auto* buttons = new QHBoxLayout;
  auto* add =
      makeButton(row.addName, row.addText, frame, [this, &details] { addDetails(details); });
  auto* del =
      makeButton(row.delName, row.delText, frame, [&details] { details.list.toggleSelected(); });
  add->setToolTip(row.addTip);
  del->setToolTip(row.delTip);
  buttons->addWidget(add);
  buttons->addWidget(del);
  buttons->addStretch();
  column->addLayout(buttons);
  return frame;
}

}  // namespace bw
