#pragma once

#include <array>
#include <cstddef>

#include "shell/RecordKinds.h"

class QAction;
class QToolBar;

namespace bw {

class frmMain;
class OthersSign;

inline constexpr std::size_t kToolbarButtons = 17;

// The toolbar tbToolBar: New with its drop-down list, and one button or separator a row of a table.
class MainToolbar {
 public:
  void build(frmMain& window);

  OthersSign& sign() { return *sign_; }

  // New and Print belong to every view, the others to a group.
  void showGroup(ToolbarGroup group);

 private:
  std::array<QAction*, kToolbarButtons> buttons_{};
  OthersSign* sign_ = nullptr;
};

}  // namespace bw
