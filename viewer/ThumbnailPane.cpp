#include "viewer/ThumbnailPane.h"

#include <QAbstractListModel>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <cmath>
#include <utility>

namespace bw {

namespace {

constexpr int kPictureWidth = 120;
constexpr int kMargin = 8;
constexpr int kKeptPictures = 100;

}  // namespace

class ThumbnailModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  void setPages(int pages) {
    beginResetModel();
    pages_ = pages;
    endResetModel();
  }

  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : pages_; }

  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid()) return {};
    if (role == Qt::DisplayRole) return QString::number(index.row() + 1);
    if (role == Qt::AccessibleTextRole) return ThumbnailPane::tr("Page %1").arg(index.row() + 1);
    return {};
  }

 private:
  int pages_ = 0;
};

namespace {

class ThumbnailDelegate : public QStyledItemDelegate {
 public:
  explicit ThumbnailDelegate(ThumbnailPane& pane) : QStyledItemDelegate(&pane), pane_(pane) {}

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
    return pane_.pictureSize() + QSize(2 * kMargin, 2 * kMargin + option.fontMetrics.height());
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    const bool current = option.state.testFlag(QStyle::State_Selected);
    if (current) painter->fillRect(option.rect, option.palette.highlight());
    const QSize size = pane_.pictureSize();
    const QPoint corner(option.rect.center().x() - size.width() / 2, option.rect.top() + kMargin);
    painter->drawPixmap(QRect(corner, size),
                        pane_.picture(static_cast<std::size_t>(index.row()) + 1));
    painter->setPen(option.palette.color(QPalette::Mid));
    painter->drawRect(QRect(corner, size).adjusted(-1, -1, 0, 0));
    QRect below = option.rect;
    below.setTop(corner.y() + size.height());
    painter->setPen(
        option.palette.color(current ? QPalette::HighlightedText : QPalette::WindowText));
    painter->drawText(below, Qt::AlignCenter, index.data().toString());
  }

 private:
  ThumbnailPane& pane_;
};

}  // namespace

ThumbnailPane::ThumbnailPane(QWidget* parent)
    : QListView(parent), model_(new ThumbnailModel(this)), pictures_(kKeptPictures) {
  setObjectName("thumbnails");
  setAccessibleName(tr("Page pictures"));
  setUniformItemSizes(true);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setItemDelegate(new ThumbnailDelegate(*this));
  setModel(model_);
}

void ThumbnailPane::setDocument(std::shared_ptr<const FittedDocument> document) {
  const QScopedValueRollback quiet(silent_, true);
  document_ = std::move(document);
  pictures_.clear();
  model_->setPages(document_ ? static_cast<int>(document_->document().pageCount()) : 0);
}

void ThumbnailPane::setCurrentPage(std::size_t page) {
  const QScopedValueRollback quiet(silent_, true);
  setCurrentIndex(page == 0 ? QModelIndex() : model_->index(static_cast<int>(page) - 1));
}

QSize ThumbnailPane::pictureSize() const {
  const PageSize size = document_ ? document_->paper() : PageSize();
  const double across = kPictureWidth / std::max(size.width, size.height);
  return {std::max(1, static_cast<int>(std::lround(size.width * across))),
          std::max(1, static_cast<int>(std::lround(size.height * across)))};
}

QPixmap ThumbnailPane::picture(std::size_t page) {
  if (const QPixmap* known = pictures_.object(page)) return *known;
  const double ratio = devicePixelRatioF();
  const QSize size = pictureSize() * ratio;
  QPixmap pixmap(size);
  pixmap.fill(Qt::white);
  QPainter painter(&pixmap);
  const double scale = size.width() / document_->fit().paperWidth();
  painter.scale(scale, scale);
  painter_.paint(painter, document_->make(page),
                 painter.transform().inverted().mapRect(QRectF(pixmap.rect())));
  painter.end();
  pixmap.setDevicePixelRatio(ratio);
  pictures_.insert(page, new QPixmap(pixmap));
  return pixmap;
}

void ThumbnailPane::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QListView::currentChanged(current, previous);
  if (!silent_ && current.isValid()) emit pageWanted(static_cast<std::size_t>(current.row()) + 1);
}

}  // namespace bw
