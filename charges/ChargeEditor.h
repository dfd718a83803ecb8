#pragma once

#include <QLabel>
#include <QLineEdit>
#include <cstdint>
#include <string>
#include <vector>

#include "controls/ComboBox.h"
#include "controls/DatePicker.h"
#include "controls/Dialog.h"
#include "lists/WorkingList.h"

namespace bw {

// The window of frmEditCharge.
class ChargeEditor : public Dialog {
 public:
  explicit ChargeEditor(QWidget* owner);
  ~ChargeEditor() override;
  void load();

 private:
  // What differs between the diagnoses and the procedures of a charge.
  struct Details {
    const char* column;  // of the code
    const char* view;    // that lists them
    const Form& (*pick)();
    WorkingList list;
  };
  struct FrameRow;
  static const FrameRow kFrames[2];

  void build();
  void buildFields(QGridLayout* grid);
  QWidget* buildDetails(const FrameRow& row, Details& details);

  bool openCatalogues();
  bool open(RecordSetRef& rows, const char* statement, const char* emptyMessage);
  bool openDetails(Details& details);
  bool loadStored();
  void showStored(const RecordSetRef& charge);
  bool loadNew();
  bool showPatientOfNew();
  bool isNew() const;

  void facilitySelected();
  void chargeTypeSelected();
  void doctorSelected();
  void fillEMCodes();
  void fillDoctors();
  RecordSetRef readCoveringEntries();
  QString doctorMark(int index) const;
  std::string codesOfDoctor(std::int32_t code) const;
  void takeAttentionType();

  void pickPatient();
  void addDetails(Details& details);
  std::string codeListOf(Details& details) const;
  void ok();
  int store(std::string& message);
  void cancel();

  RecordSetRef RsEMCodes;
  RecordSetRef RsFacilities;
  RecordSetRef RsChargeTypes;
  RecordSetRef RsRefDoctors;
  RecordSetRef RsDoctors;              // then the covering entries
  std::vector<std::int32_t> covered_;  // for whom each of those

  ComboBox* CBFacilities;
  ComboBox* CBEMCodes;
  ComboBox* CBChargeTypes;
  DatePicker* DTDOC;
  QLineEdit* TxtPatient;
  QPushButton* Command5 = nullptr;
  ComboBox* CBRefDoctors;
  QLabel* LblDoctorCaption = nullptr;
  ComboBox* CBDoctors;
  ComboBox* CBStatus;
  ListView* ListView1;
  ListView* ListView2;
  Details diagnoses_;
  Details procedures_;
  // Stored with the charge, and kept when the list of statuses has no item for it.
  std::int16_t storedStatus_ = 0;
};

}  // namespace bw
