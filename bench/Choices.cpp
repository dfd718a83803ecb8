// A list of choices of 2,000 entries: a key in it, closed and open, and its opening.

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <algorithm>
#include <string_view>

#include "bench/Measure.h"
#include "controls/ComboBox.h"
#include "controls/Dialog.h"
#include "text/Text.h"

namespace {

using namespace bw;

constexpr int kEntries = 2000;
constexpr double kMostKey = 16;   // ms, painted
constexpr double kMostOpen = 16;  // from the second opening on

// Names of which many begin alike, as in an office.
QStringList doctors() {
  constexpr const char* kSurnames[] = {"Hernandez", "Fern\u00e1ndez", "O\u2019Brien", "Smith-Jones",
                                       "Garcia"};
  QStringList names;
  for (int i = 0; i < kEntries; ++i)
    names << QString("%1, Doctor number %2 (Covering %3, Ann)")
                 .arg(kSurnames[i % 5])
                 .arg(i)
                 .arg(kSurnames[i / 5 % 5]);
  return names;
}

struct Window : Dialog {
  Window() : Dialog("Window", "Window", nullptr), box(this) {
    box.resize(300, box.sizeHint().height());
    resize(500, 100);
    box.setItems(doctors());
    box.setListIndex(0);
    show();
    box.setFocus();
    QApplication::processEvents();
  }
  ComboBox box;
};

double key(QWidget& target, QWidget& painted, int code, const QString& text) {
  return bench::processorMilliseconds([&] {
    QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier, text);
    QApplication::sendEvent(&target, &event);
    painted.repaint();
  });
}

// The slowest key of a search: the first makes the texts ready, later ones are found nowhere.
double slowestKey(QWidget& target, QWidget& painted) {
  double slowest = 0;
  for (const char letter : std::string_view("number 1999 (covering zq"))
    slowest = std::max(slowest, key(target, painted, 0, QString(QChar(letter))));
  slowest = std::max(slowest, key(target, painted, Qt::Key_Backspace, {}));
  key(target, painted, Qt::Key_Escape, {});
  return slowest;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  Window window;
  bench::report("a key in a list of choices of 2,000 entries, painted", "ms",
                bench::median([&] { return slowestKey(window.box, window); }), kMostKey);
  const auto open = [&] {
    window.box.showPopup();
    window.box.view()->viewport()->repaint();
  };
  open();  // makes the list and its style
  bench::report("a key in the open list of 2,000 entries, painted", "ms", bench::median([&] {
                  return slowestKey(*window.box.view(), *window.box.view()->window());
                }),
                kMostKey);
  bench::report("opening a list of choices of 2,000 entries, painted", "ms", bench::median([&] {
                  window.box.hidePopup();
                  return bench::processorMilliseconds(open);
                }),
                kMostOpen);
  return bench::verdict();
}
