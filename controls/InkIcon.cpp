#include "controls/InkIcon.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <utility>

#include "controls/DarkPalette.h"

namespace bw {
namespace {

constexpr const char* kInk = "currentColor";
constexpr const char* kInkOnLight = "#2f4858";
constexpr const char* kInkOnDark = "#d6e4ee";
constexpr qreal kDisabledOpacity = 0.4;

class InkIconEngine : public QIconEngine {
 public:
  explicit InkIconEngine(QString resource) : resource_(std::move(resource)) {}

  QIconEngine* clone() const override { return new InkIconEngine(*this); }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal scale = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, scaledPixmap(rect.size() * scale, mode, state, scale));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    const bool dark = isDark(QGuiApplication::palette());
    const QString key = QString("%1 %2x%3 %4 %5")
                            .arg(resource_)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(dark)
                            .arg(mode == QIcon::Disabled);
    QPixmap drawn;
    if (QPixmapCache::find(key, &drawn)) return drawn;
    drawn = QPixmap(size);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    if (mode == QIcon::Disabled) painter.setOpacity(kDisabledOpacity);
    QSvgRenderer renderer(source(dark));
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    renderer.render(&painter);
    QPixmapCache::insert(key, drawn);
    return drawn;
  }

 private:
  QByteArray source(bool dark) const {
    QFile file(resource_);
    if (!file.open(QIODevice::ReadOnly)) return {};
    QByteArray text = file.readAll();
    return text.replace(kInk, dark ? kInkOnDark : kInkOnLight);
  }

  QString resource_;
};

}  // namespace

QIcon inkIcon(const QString& resource) { return QIcon(new InkIconEngine(resource)); }

}  // namespace bw
