#pragma once

#include <QString>
#include <QTimer>
#include <string>

#include "lists/View.h"

class QLabel;

namespace bw {

class WebPane;

// The web page as a view, below a line with its caption: the page's title, or that it is on its
// way. Navigates to StartingAddress whenever it comes on show. It has one operation, Accion, with
// the key of a browser button. Without the module that shows pages a sentence stands in their
// place; the module is looked for at each coming on show.
class Browser : public View {
 public:
  explicit Browser(QWidget* parent);

  std::string StartingAddress;
  QString moduleFile;  // the module's path

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Command;
  static const Command kCommands[];

  void activate();
  void place();
  void Accion(std::string_view Boton);
  void tick();
  void navigate(const std::string& address);
  void showLocationName();
  void loadPane();

  QTimer* timTimer;  // runs while a page is on its way
  QLabel* caption_;
  WebPane* brwWebBrowser = nullptr;
  QLabel* missing_ = nullptr;
};

Browser& frmBrowser();

// The view with the maker's or the sponsor's address as its start: the installation's setting, or
// the page that comes with the program.
View& makerOnTheWeb();
View& sponsorOnTheWeb();

}  // namespace bw
