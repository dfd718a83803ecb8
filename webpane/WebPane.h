#pragma once

#include <QUrl>
#include <QWidget>
#include <QtPlugin>
#include <functional>

namespace bw {

// A web page control, as the program knows it. The engine behind it lives in a module of its own,
// which is loaded when a page is first shown; the program links none of it.
// Commands that cannot be carried out, such as going back without a history, do nothing.
class WebPane : public QWidget {
 public:
  using QWidget::QWidget;

  virtual void navigate(const QUrl& address) = 0;
  virtual void goBack() = 0;
  virtual void goForward() = 0;
  virtual void refresh() = 0;
  virtual void stop() = 0;
  // From the command that asks for a page until it is there, stopped or found unreachable.
  virtual bool isBusy() const = 0;
  // The page's title, its address when it has none.
  virtual QString locationName() const = 0;

  // Called when a page or its title is there.
  std::function<void()> onComplete;
};

// What the module offers. Module and program are of one version.
class WebPaneModule {
 public:
  virtual ~WebPaneModule() = default;
  // Owned by the parent.
  virtual WebPane* makePane(QWidget* parent) = 0;
};

}  // namespace bw

Q_DECLARE_INTERFACE(bw::WebPaneModule, "FenmoorSystems.Brantiwell.WebPane/1")
