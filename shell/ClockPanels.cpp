#include "shell/ClockPanels.h"

#include <QLabel>
#include <QStatusBar>
#include <QTimer>

#include "controls/Dialog.h"
#include "controls/QtText.h"
#include "core/Services.h"
#include "text/Formats.h"

namespace bw {

void addClockPanels(QStatusBar* bar) {
  auto* date = named(new QLabel(bar), "panelDate", "Date");
  auto* time = named(new QLabel(bar), "panelTime", "Time");
  bar->addPermanentWidget(named(new QLabel(bar), "panelText", "Text"), 1);
  bar->addPermanentWidget(date);
  bar->addPermanentWidget(time);
  auto* timer = new QTimer(bar);
  timer->setSingleShot(true);
  const auto show = [date, time, timer] {
    const DateTime now = services().now();
    date->setText(toQt(defaultText(now.date)));
    time->setText(toQt(Format(now.time, "h:mm AM/PM")));
    timer->start((60 - now.time.second % 60) * 1000);
  };
  onEvent(timer, &QTimer::timeout, bar, show);
  show();
}

}  // namespace bw
