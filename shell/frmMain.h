#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "lists/MainFrame.h"
#include "lists/View.h"
#include "shell/MainMenus.h"
#include "shell/MainToolbar.h"

namespace bw {

// The program's frame: a slogan at the top, the tree of shortcuts on the left, and one view at a
// time in the rest. It owns the numbers of the view and the filter that are on show, and hands
// commands to the active view by name.
class frmMain : public MainFrame {
 public:
  // MainWindow points here from now on.
  frmMain();
  ~frmMain() override;

  // Makes what the first view would wait for. load() does without.
  void prepare();
  // Restores the window and selects the stored view and filter, which fills the first view.
  void load();

  void CambiaAVista(std::int16_t Vista, std::int16_t Filtro) override;
  void ActivaFiltro(std::int16_t NuevoFiltro) override;
  std::function<void()> readsList(std::string_view statement) override;
  // Hides the tree.
  void CerrarShortcut();

  // Commands, for menus and toolbar.
  // Calls an operation of the active view: 91 when there is none, 438 when it lacks it.
  void callView(std::string_view operation, std::string_view argument = {});
  void chooseFilter(std::int16_t filter);
  void chooseView(std::int16_t view);
  void toggleShortcuts();
  void archiveCharges();
  void pageSetup();
  // Opens the editor of that record kind on a new record; for a page nothing happens.
  void newRecordDialog(int index);
  void newFromToolbar();
  void pressButton(std::string_view key) override;
  void newFromMenu(int index);
  void about();

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void restorePlacement();
  void savePlacement() const;
  // What is on show, as far as another view changes it.
  struct OnShow {
    View* view;
    std::int16_t viewNumber, filterNumber;
    std::int16_t mark;  // of the Current View menu
    QWidget* focus;
  };
  void switchView();
  void putBack(const OnShow& before);
  void dress(const RecordKind& kind);
  void goToOtherPane();
  void focusView();
  int bannerBottom() const;
  void placeView(bool treeShown);
  void placeAll();
  void unload();

  MainMenus menus_;
  MainToolbar toolbar_;
  View* activeView_ = nullptr;
  std::vector<View*> views_;  // that came up in this run; they live as long as the window
  std::int16_t shortcutsShown_ = 0;
  int bannerHeight_ = 0;  // twips, at the standard font
};

}  // namespace bw
