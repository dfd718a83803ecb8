#pragma once

#include <QMainWindow>
#include <string_view>
#include <vector>

class QTabWidget;

namespace bw {

class Page;

// The window: a tab a page. A page is read when it first comes on show; the one that the window
// opens with by readCurrent(), when the window can be seen.
class ReviewWindow : public QMainWindow {
 public:
  explicit ReviewWindow(std::string_view page);

  void goTo(std::string_view page);
  void readCurrent();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  Page* current() const;
  void addKeys();
  void restore();
  void store();

  QTabWidget* tabs_;
  std::vector<Page*> pages_;
};

}  // namespace bw
