#pragma once

#include "webpane/WebPane.h"

class QWebEngineView;

namespace bw {

// The web page control on the toolkit's web engine. What a page leaves behind is gone with the
// program: its profile is kept in memory.
class EnginePane : public WebPane {
 public:
  explicit EnginePane(QWidget* parent);

  void navigate(const QUrl& address) override;
  void goBack() override;
  void goForward() override;
  void refresh() override;
  void stop() override;
  bool isBusy() const override { return busy_; }
  QString locationName() const override;

 private:
  void complete();

  QWebEngineView* view_;
  bool loading_ = false;  // between the engine's start and end of a load
  bool busy_ = false;
};

}  // namespace bw
