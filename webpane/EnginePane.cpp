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
  connect(view_, &QWebEngineView::loadStarted, this, [this] { loading_ = busy_ = true; });
  connect(view_, &QWebEngineView::loadFinished, this, [this] { complete(); });
  // A step within the page is no load: it is over when the address has changed.
  connect(view_, &QWebEngineView::urlChanged, this, [this] {
    if (busy_ && !loading_) complete();
  });
  connect(view_, &QWebEngineView::renderProcessTerminated, this, [this] { complete(); });
  connect(view_, &QWebEngineView::titleChanged, this, [this] {
    if (onComplete) onComplete();
  });
  // There is one pane: what asks for a window of its own is shown in it too.
  connect(view_->page(), &QWebEnginePage::newWindowRequested, this,
          [this](QWebEngineNewWindowRequest& request) { request.openIn(view_->page()); });
}

void EnginePane::complete() {
  loading_ = busy_ = false;
  if (onComplete) onComplete();
}

// The engine reports the start of a load later: until then the pane counts as busy already.
void EnginePane::navigate(const QUrl& address) {
  const bool withinPage = address.hasFragment() && address != view_->url() &&
                          address.matches(view_->url(), QUrl::RemoveFragment);
  view_->setUrl(address);
  busy_ = busy_ || !withinPage;
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
  loading_ = busy_ = false;
}

QString EnginePane::locationName() const { return view_->title(); }

}  // namespace bw
