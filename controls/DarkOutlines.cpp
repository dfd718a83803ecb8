#include "controls/DarkOutlines.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

#include "controls/DarkPalette.h"

namespace bw {
namespace {

class DarkOutlines : public QProxyStyle {
 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (!isDark(option->palette)) return;
    QColor line = option->palette.color(QPalette::Text);
    line.setAlphaF((option->state & State_Enabled) != 0 ? 0.5F : 0.25F);
    painter->save();
    painter->setPen(line);
    const QRectF edge = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    switch (element) {
      case PE_IndicatorRadioButton:
        painter->setRenderHint(QPainter::Antialiasing);
        painter->drawEllipse(edge);
        break;
      case PE_IndicatorCheckBox:
      case PE_IndicatorItemViewItemCheck:
      case PE_FrameLineEdit:
        painter->drawRect(edge);
        break;
      default:
        break;
    }
    painter->restore();
  }
};

}  // namespace

void installDarkOutlines() {
  if (QApplication::style()->name() == "fusion") QApplication::setStyle(new DarkOutlines);
}

}  // namespace bw
