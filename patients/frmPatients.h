#pragma once

#include <cstdint>
#include <functional>

#include "controls/Dialog.h"
#include "controls/ListView.h"
#include "lists/View.h"
#include "records/RecordSet.h"

namespace bw {

// The patients, under one of eight filters, and where admission, discharge and merge start.
// The row that the user goes to becomes CurrentPatientId: the charges take their patient from it.
class PatientsView : public View {
 public:
  explicit PatientsView(QWidget* parent);

  void Refresca();
  void Insertado();
  void Eliminar();
  void Admit();
  void Discharge();
  void Merge();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void load();
  void close();
  void takeKey(int row);
  void rowChosen();
  void openSelected();
  void showForSelected(const Form& dialog);

  ListView* ListView1;
  RecordSetRef RsPatients;
  std::int16_t ActiveFilter = 0;
};

PatientsView& frmPatients();

}  // namespace bw
