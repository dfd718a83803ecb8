// The program's start, up to the first paint of a view.

#include <QApplication>
#include <cstdlib>

#include "bench/FirstPaint.h"
#include "controls/DarkOutlines.h"
#include "controls/EventGuard.h"
#include "controls/MessageBox.h"
#include "core/Services.h"
#include "lists/View.h"
#include "records/KeptMemory.h"
#include "shell/Start.h"

namespace {

// Opaque controls can cover a view, so that it is never painted itself.
bool belongsToView(const QObject* object) {
  while (object != nullptr && dynamic_cast<const bw::View*>(object) == nullptr)
    object = object->parent();
  return object != nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  bw::keepFreedMemory();
  QApplication application(argc, argv);
  FirstPaint watch(belongsToView);
  application.installEventFilter(&watch);
  bw::installDarkOutlines();
  bw::services().message = [](const std::string&) { std::_Exit(EXIT_FAILURE); };
  bool started = false;
  bw::guarded([&] { started = bw::start(); });
  return started ? QApplication::exec() : EXIT_FAILURE;
}
