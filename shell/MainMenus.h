#pragma once

#include <QAction>
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "shell/RecordKinds.h"

class QMenu;

namespace bw {

class frmMain;

// The menu bar: its entries stand in a table, its arrays by index.
class MainMenus {
 public:
  void build(frmMain& window);

  QAction* goToMenu() const { return goToMenu_; }
  QAction* currentViewMenu() const { return currentViewMenu_; }
  QAction* shortcuts() const { return shortcuts_; }
  QAction* refresh() const { return refresh_; }

  void checkView(std::int16_t view);
  void checkFilter(std::int16_t filter);
  std::int16_t checkedFilter() const;  // -1 for none
  // Shows the entries of the view, and "All" always, and gives them their keys.
  void showFilters(const RecordKind& kind);
  void showActions(const RecordKind& kind);

 private:
  void buildArrays(frmMain& window, QMenu* currentView, QMenu* goTo, QMenu* actions);

  std::vector<QAction*> goTo_;
  std::vector<QAction*> filters_;
  QAction* treeFilter_ = nullptr;  // for the keys of one that stands in the tree alone
  std::array<QAction*, 3> actions_{};
  QAction* goToMenu_ = nullptr;
  QAction* currentViewMenu_ = nullptr;
  QAction* shortcuts_ = nullptr;
  QAction* refresh_ = nullptr;
};

}  // namespace bw
