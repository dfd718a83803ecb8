#include "webpane/EnginePane.h"

#include <QVBoxLayout>
#include <QWebEngineHistory>
#include <QWebEngineNewWindowRequest>
#include <QWebEnginePage>
#include <QWebEngineView>

namespace bw {

EnginePane::EnginePane(QWidget* parent) : WebPane(parent), view_(new QWebEngineView(this)) {
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addWidget(view_);
  setFocusProxy(view_);
  connect(view_, &QWebEngineView::loadStarted, this, [this] { busy_ = true; });
  connect(view_, &QWebEngineView::loadFinished, this, [this] { complete(); });
  connect(view_, &QWebEngineView::renderProcessTerminated, this, [this] { complete(); });
  connect(view_, &QWebEngineView::titleChanged, this, [this] {
    if (onComplete) onComplete();
  });
  // There is one pane: what asks for a window of its own is shown in it too.
  connect(view_->page(), &QWebEnginePage::newWindowRequested, this,
          [this](QWebEngineNewWindowRequest& request) { request.openIn(view_->page()); });
}

void EnginePane::complete() {
  busy_ = false;
  if (onComplete) onComplete();
}

// The engine reports the start of a load later: until then the pane counts as busy already.
void EnginePane::navigate(const QUrl& address) {
  busy_ = true;
  view_->setUrl(address);
}

void EnginePane::goBack() {
  busy_ = busy_ || view_->history()->canGoBack();
  view_->back();
}

void EnginePane::goForward() {
  busy_ = busy_ || view_->history()->canGoForward();
  view_->forward();
}

void EnginePane::refresh() {
  busy_ = busy_ || !view_->url().isEmpty();
  view_->reload();
}

void EnginePane::stop() {
  view_->stop();
  busy_ = false;
}

QString EnginePane::locationName() const { return view_->title(); }

}  // namespace bw
