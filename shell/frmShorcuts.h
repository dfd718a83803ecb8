#pragma once

#include <QTreeWidget>
#include <QWidget>
#include <cstdint>
#include <string>

namespace bw {

// The tree of shortcuts: the one road by which view and filter change. A node's key is the letter
// K, the view's number, a full stop and the filter's number, two digits each (K01.15).
class ShorcutsTree : public QWidget {
 public:
  explicit ShorcutsTree(QWidget* parent);

  // Selects the node of that view and filter and makes the main window switch to them. A pair
  // without a node raises 35601.
  void FuerzaNodeClick(std::int16_t Vista, std::int16_t Filtro);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void build();
  void takeFont();
  QTreeWidgetItem* nodeOf(const std::string& key) const;
  void nodeClick(QTreeWidgetItem* node);
  void switchTo(QTreeWidgetItem* node, std::int16_t view, std::int16_t filter);
  void markShown();

  QTreeWidget* TreeView1;
  QTreeWidgetItem* shown_ = nullptr;  // whose view is on show
};

// The name is spelled so on purpose.
ShorcutsTree& frmShorcuts();

}  // namespace bw
