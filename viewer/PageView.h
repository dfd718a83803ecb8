#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <memory>
#include <optional>

#include "viewer/Finder.h"
#include "viewer/FittedDocument.h"
#include "viewer/PageLayout.h"
#include "viewer/PagePainter.h"
#include "viewer/Selection.h"

class QGestureEvent;

namespace bw {

// Shows all pages below each other, scrolls and zooms them, and lets texts be selected. A zoom of
// 1 shows an inch as an inch of the screen. Without a document there are no pages.
class PageView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  enum class Fit { none, width, page };

  explicit PageView(QWidget* parent = nullptr);

  // Stays at the same place of the same page when told so, as far as there still is one.
  void setDocument(std::shared_ptr<const Document> document, bool keepPlace);
  const Document* document() const noexcept { return document_ ? &document_->document() : nullptr; }

  // The layout that is shown; nothing without a document.
  const std::shared_ptr<const FittedDocument>& fitted() const noexcept { return document_; }
  // Wide documents in their natural size, instead of fitted to their paper.
  void setNatural(bool natural);
  bool isNatural() const noexcept { return natural_; }

  std::size_t currentPage() const noexcept { return static_cast<std::size_t>(current_); }
  void goToPage(std::size_t page);

  double zoom() const noexcept { return zoom_; }
  Fit fit() const noexcept { return fit_; }
  void setZoom(double zoom);  // clamped; ends a fit
  void setFit(Fit fit);       // kept while the window changes its size
  void zoomIn();
  void zoomOut();

  // Highlights the text wherever it stands on the screen; "" for nothing.
  void setNeedle(const QString& needle);
  const QString& needle() const noexcept { return needle_; }
  // Scrolls there, highlights it above the others and lets it be copied.
  void showMatch(const Match& match);
  const std::optional<Match>& match() const noexcept { return match_; }

  void selectPage();
  bool hasSelection() const noexcept { return selection_.active() || match_.has_value(); }
  QString selectedText();

 signals:
  void currentPageChanged(std::size_t page);
  void zoomChanged();
  void selectionChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  bool viewportEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  QSizeF naturalPage() const;  // in pixels at zoom 1
  double pixelsPerTwip() const;
  QRect pageRect(int page) const;  // on the viewport
  Spot spotAt(const QPoint& point) const;
  QPointF pointAt(const Spot& spot) const;

  void zoomAround(double zoom, const QPoint& point);
  void layOut();
  void layOutInPlace();
  void applyFit();
  void scrollTo(const Spot& spot, const QPointF& point);
  void setCurrent(int page);
  void dragTo(const QPoint& point);
  void changeSelection();

  void paintPage(QPainter& painter, int page, const QRect& exposed);
  void paintMarks(QPainter& painter, const FittedPage& page, std::size_t number);
  std::size_t pageCount() const noexcept;
  QString cutTextAt(const QPoint& point) const;
  bool pinch(QGestureEvent& event);

  std::shared_ptr<const FittedDocument> document_;
  bool natural_ = false;
  PagePainter painter_;
  PageLayout layout_;
  double zoom_ = 1;
  Fit fit_ = Fit::width;
  int current_ = 0;

  Selection selection_;
  QString needle_;
  std::optional<Match> match_;
  QBasicTimer dragScroll_;
  QPoint dragPoint_;
  bool dragging_ = false;
};

}  // namespace bw
