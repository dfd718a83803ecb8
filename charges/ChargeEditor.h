#pragma once

#include <QLabel>
#include <QLineEdit>
#include <cstdint>
#include <string>
#include <vector>

#include "charges/DoctorEntries.h"
#include "controls/ComboBox.h"
#include "controls/DatePicker.h"
#include "controls/Dialog.h"
#include "controls/Hint.h"
#include "lists/DetailFrame.h"
#include "lists/WorkingList.h"

namespace bw {

struct LastCharge;

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

  void build();
  void buildFields(QGridLayout* grid);
  QWidget* buildDetails(const DetailFrame& frame, Details& details);

  std::vector<std::string> foreseen() const;
  bool openCatalogues();
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
  QString doctorMark(int index) const;
  std::string codesOfDoctor(std::int32_t code) const;
  void takeAttentionType();

  void pickPatient();
  void takeAttending(const RecordSetRef& patient);
  void addDetails(Details& details);
  std::string codeListOf(Details& details) const;
  void ok();
  int store(std::string& message);
  std::string adviceOn(const std::string& refusal) const;
  static std::string standsTwice(const Details& details);
  void cancel();

  // As last time, in a new charge (ChargeAsLastTime.cpp): fills in what the patient's latest charge
  // had, through the handlers of the fields. Status and date stay. What cannot be had is told in a
  // hint, which stands until the next choice.
  void asLastTime();
  void apply(const LastCharge& last);
  static bool offers(const ComboBox& box, const RecordSetRef& rows, const std::string& criterion);
  bool chooseDoctorWith(std::int16_t doctor, std::int32_t concept_);
  bool chooseConcept(std::int32_t concept_);
  void chooseReferring(const LastCharge& last);
  void addMissing(Details& details, const RecordSetRef& rows);
  void unsay();

  RecordSetRef RsEMCodes;
  RecordSetRef RsFacilities;
  RecordSetRef RsChargeTypes;
  RecordSetRef RsRefDoctors;
  RecordSetRef RsDoctors;  // then the covering entries
  DoctorEntries doctorEntries_;

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
  Hint* patientHint_;
  Hint* conceptHint_;
  // The concept is not that of last time and the user has not looked yet: Ok stops once.
  bool otherConcept_ = false;
};

}  // namespace bw
