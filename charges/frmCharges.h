#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "charges/FilterPanels.h"
#include "controls/ListView.h"
#include "lists/View.h"
#include "records/RecordSet.h"

class QScrollArea;

namespace bw {

// The charges: five filter panels, and the list of what they and the main window's status filter
// let through. A panel filters by the Current... variable of the moment, not by what its box shows.
class ChargesView : public View {
 public:
  explicit ChargesView(QWidget* parent);

  // Exchanged with the posting dialog.
  std::int16_t PostChargeCount = 0;
  std::int32_t PostLotNumber = 0;
  std::int16_t PostPrint = 0;

  void Refresca();
  void Insertado();
  void Eliminar();
  // Posts all "Ready" charges of the list, after the posting dialog.
  void Post();
  void Imprimir();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void load();
  void close();
  void showColumn(PanelKind kind, bool shown);
  void choose(PanelKind kind, bool all);
  std::string statement() const;
  std::string whyEmpty() const;
  void tellWhoFilters();
  void takeKey(int row);
  void openSelected();
  void search(PanelKind kind);
  void postReady(std::int64_t ready);
  std::string reportSubtitles() const;

  QScrollArea* panelArea_;
  FilterPanels panels_;  // in front of the list, in the order of the Tab key
  ListView* ListView1;
  std::array<float, kPanelKinds.size()> widths_{};  // of columns that a filter hides, twips
  RecordSetRef RsCharges;
  std::int16_t ActiveFilter = 0;
  bool FormReady = false;
};

ChargesView& frmCharges();

}  // namespace bw
