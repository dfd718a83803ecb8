#include "controls/Icons.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>

namespace bw {
namespace {

// The lightness of the opaque part on the average; -1 when nothing is drawn.
int lightnessOf(const QIcon& icon) {
  const QImage image = icon.pixmap(32, 32).toImage();
  int sum = 0;
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (const QColor color = image.pixelColor(x, y); color.alpha() == 255) {
        sum += color.lightness();
        ++count;
      }
  return count == 0 ? -1 : sum / count;
}

TEST(InkIconTest, FollowsTheDesktopToDarkAndBack) {
  const QPalette light = QGuiApplication::palette();
  const QIcon merge = icon("Merge");
  const int onLight = lightnessOf(merge);
  ASSERT_GE(onLight, 0);
  QGuiApplication::setPalette(QPalette(Qt::black));
  const int onDark = lightnessOf(merge);
  QGuiApplication::setPalette(light);
  EXPECT_GT(onDark, onLight + 40);
  EXPECT_EQ(lightnessOf(merge), onLight);
}

}  // namespace
}  // namespace bw
