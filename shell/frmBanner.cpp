#include "shell/frmBanner.h"

#include <QPointer>
#include <array>

#include "controls/Dialog.h"
#include "controls/EventGuard.h"
#include "controls/Twips.h"
#include "core/Principal.h"
#include "lists/MainFrame.h"

namespace bw {
namespace {

constexpr std::array<const char*, 4> kColours{"", "color: rgb(128, 0, 0)", "color: rgb(0, 128, 0)",
                                              "color: rgb(0, 0, 128)"};
constexpr int kStep = 5;  // twips

}  // namespace

Banner::Banner(QWidget* parent)
    : QWidget(parent), Label1(new QLabel(this)), Timer1(new QTimer(this)) {
  setObjectName("frmBanner");
  // The slogan's colours are made for light ground, whatever the desktop's.
  setAutoFillBackground(true);
  QPalette light = palette();
  light.setColor(QPalette::Window, QColor(240, 240, 240));
  light.setColor(QPalette::WindowText, Qt::black);
  setPalette(light);
  named(Label1, "Label1", "Slogan");
  Label1->setText("Brantiwell by Fenmoor Systems, the fastest way to recover your money.");
  QFont font = Label1->font();
  font.setBold(true);
  Label1->setFont(font);
  Label1->adjustSize();
  Label1->move(0, scaledPixels(toPixels(120)));
  onEvent(Timer1, &QTimer::timeout, this, [this] { tick(); });
  Timer1->start(250);
}

// The text runs out at the left edge and comes in again at the right one.
void Banner::tick() {
  if (left_ - kStep + toTwips(Label1->width()) >= 0)
    left_ -= kStep;
  else
    left_ = toTwips(width());
  Label1->move(toPixels(left_), Label1->y());
  if (++TickCount <= 10) return;
  if (++ColourIndex == 4) ColourIndex = 1;
  Label1->setStyleSheet(kColours[static_cast<std::size_t>(ColourIndex)]);
  TickCount = 0;
}

Banner& frmBanner() {
  static QPointer<Banner> form;
  if (!form) {
    form = new Banner(MainWindow->clientArea());
    form->show();
  }
  return *form;
}

}  // namespace bw
