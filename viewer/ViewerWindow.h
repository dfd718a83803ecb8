#pragma once

#include <QMainWindow>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "viewer/DocumentFile.h"
#include "viewer/Finder.h"
#include "viewer/MatchCount.h"
#include "viewer/PageView.h"
#include "viewer/PageWalk.h"
#include "viewer/Printing.h"

class QDockWidget;
class QLabel;
class QSpinBox;

namespace bw {

class FindBar;
class ThumbnailPane;

// The viewer's window: one document, its commands, and a line above the pages that says what is
// wrong with it. The place of the window, the zoom and the side pane are kept between runs.
class ViewerWindow : public QMainWindow {
  Q_OBJECT

 public:
  ViewerWindow();
  ~ViewerWindow() override;

  // A file that cannot be read leaves the document that is shown, and the reason is told.
  void openDocument(const QString& path);

  // The commands' work behind their dialogs. False, with the reason told, when nothing was written.
  bool savePdfAs(const QString& path);
  bool exportCsvTo(const QString& path);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  struct Commands;  // the menus in order, one row a command: ViewerCommands.cpp

  void addCommands();
  void addPageBox();
  void connectParts();
  void restoreSettings();
  void storeSettings() const;

  void showDocument(std::shared_ptr<const Document> document, bool keepPlace);
  void startCheck();
  std::optional<QString> damageFound(const Progress& progress);
  void showTrouble();
  void tell(const QString& sentence);
  void updateCommands();
  void updatePageBox();
  void updateZoom();
  void updateFitting();

  void open();
  void savePdf();
  void exportTable();
  void print();
  void reload();
  void copy();
  void selectPage();
  void openFind();
  void backToPages();
  void findAgain(Finder::Direction direction);
  void searchTyped(const QString& text);
  void showFound(const Match& match, bool wentRound);
  void showCount();
  void typePage();
  void step(int pages);
  void toggleThumbnails();
  void toggleFullWidth();

  using Work = std::function<Outcome(const Progress&)>;
  Outcome withProgress(const QString& label, const Work& work);
  using Save = std::function<Outcome(const Document&, const Progress&, QString& reason)>;
  bool save(const QString& path, const QString& label, const Save& save);
  void tellDone(const QString& sentence, const QString& damage);
  QString askFile(const QString& title, const QString& filter, const QString& ending);

  DocumentFile file_;
  std::shared_ptr<const Document> document_;
  std::vector<Damage> damages_;
  PageWalk check_;  // for damaged items, which opening does not read
  Finder finder_;
  MatchCount matchCount_;
  bool wentRound_ = false;
  PageView* view_;
  FindBar* findBar_;
  QLabel* trouble_;
  QDockWidget* side_;
  ThumbnailPane* thumbnails_;
  QSpinBox* pageBox_;
  QLabel* zoomLabel_;
  QLabel* fitting_;
  std::size_t findStart_ = 1;
};

}  // namespace bw
