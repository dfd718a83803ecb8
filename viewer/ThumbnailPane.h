#pragma once

#include <QCache>
#include <QListView>
#include <QPixmap>
#include <memory>

#include "viewer/FittedDocument.h"
#include "viewer/PagePainter.h"

namespace bw {

class ThumbnailModel;

// The pages as small pictures, drawn when they come into sight. Choosing one asks for its page.
class ThumbnailPane : public QListView {
  Q_OBJECT

 public:
  explicit ThumbnailPane(QWidget* parent = nullptr);

  void setDocument(std::shared_ptr<const FittedDocument> document);
  void setCurrentPage(std::size_t page);  // asks for nothing

  // The picture of a page in device pixels, from the cache or drawn now.
  QPixmap picture(std::size_t page);
  QSize pictureSize() const;  // in the pane's pixels

 signals:
  void pageWanted(std::size_t page);

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  ThumbnailModel* model_;
  std::shared_ptr<const FittedDocument> document_;
  PagePainter painter_;
  QCache<std::size_t, QPixmap> pictures_;
  bool silent_ = false;
};

}  // namespace bw
