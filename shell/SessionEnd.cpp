#include "shell/SessionEnd.h"

#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QSocketNotifier>
#include <QTimer>
#include <cerrno>
#include <chrono>
#include <csignal>

#include "core/Principal.h"
#include "lists/MainFrame.h"

namespace bw {
namespace {

// Between two tries. The title and the progress of a long work do not close before their time.
constexpr std::chrono::milliseconds kPause{50};

// A signal handler may do next to nothing: it writes a byte, which the event loop hears.
int signalPipe[2];

void onSignal(int) {
  const int error = errno;
  const char byte = 0;
  // Full, it has been told already.
  [[maybe_unused]] const ssize_t written = write(signalPipe[1], &byte, 1);
  errno = error;
}

// One window each time: whoever has opened a dialog goes on before his own window is closed. Again
// and again until the main window is gone, since closing may bring up a message.
void closeNext() {
  QObject* untilThatHasGone = qApp;
  if (MainWindow != nullptr) untilThatHasGone = MainWindow;
  QTimer::singleShot(kPause, untilThatHasGone, closeNext);
  QWidget* inFront = QApplication::activePopupWidget();
  if (inFront == nullptr) inFront = QApplication::activeModalWidget();
  if (inFront == nullptr) inFront = MainWindow;
  if (inFront != nullptr) inFront->close();
}

}  // namespace

void endSession() { QTimer::singleShot(0, qApp, closeNext); }

void installSessionEnd() {
  if (pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0) return;  // signals end the process, as ever
  auto* notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, qApp);
  QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier] {
    notifier->setEnabled(false);
    endSession();
  });
  struct sigaction action {};
  action.sa_handler = onSignal;
  action.sa_flags = SA_RESTART;
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaction(signal, &action, nullptr);
}

}  // namespace bw
