#pragma once

#include <QWidget>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace bw {

// One view of the main window's client area. The main window knows a view only by the names of its
// operations (Refresca, Insertado, Eliminar, Imprimir and what else it has) and calls them by name.
class View : public QWidget {
 public:
  struct Operation {
    std::string_view name;
    std::function<void(std::string_view argument)> run;
  };

  View(const char* name, const QString& caption, QWidget* parent);

  // Raises 438 when the view has no such operation; what the operation raises passes through.
  void call(std::string_view operation, std::string_view argument = {});

  // Runs once, when the main window is unloaded: stores what is to be kept.
  void unload();

  // Gives the focus to what the view is there for. No focus proxy: Tab would pass over all that
  // stands before it.
  void takeFocus() { (home_ != nullptr ? home_ : this)->setFocus(); }

 protected:
  void setHome(QWidget* home) { home_ = home; }
  // Offers an operation by name.
  void offer(std::string_view name, std::function<void()> run);
  void offerWithArgument(std::string_view name, std::function<void(std::string_view)> run);
  std::function<void()> onUnload;

 private:
  std::vector<Operation> operations_;
  QWidget* home_ = nullptr;
};

}  // namespace bw
