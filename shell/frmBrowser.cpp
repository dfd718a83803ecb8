#include "shell/frmBrowser.h"

#include <QLabel>
#include <QPluginLoader>
#include <QPointer>
#include <QResizeEvent>
#include <chrono>

#include "controls/Dialog.h"
#include "controls/QtText.h"
#include "core/ApoyoRegistry.h"
#include "core/PassOver.h"
#include "core/Principal.h"
#include "lists/MainFrame.h"
#include "shell/Guide.h"
#include "webpane/WebPane.h"

namespace bw {
namespace {

constexpr std::chrono::milliseconds kTimerInterval{5};
constexpr int kCaptionMargin = 4;  // pixels

std::string startPage() {
  return fromQt(QUrl::fromLocalFile(besideProgram("share/brantiwell/start.html")).toString());
}

}  // namespace

struct Browser::Command {
  std::string_view Boton;
  void (*run)(Browser& form);
};

// No button of the toolbar sends "Búsqueda".
const Browser::Command Browser::kCommands[] = {
    {"Back", [](Browser& form) { form.brwWebBrowser->goBack(); }},
    {"Fordward", [](Browser& form) { form.brwWebBrowser->goForward(); }},
    {"Refresh", [](Browser& form) { form.brwWebBrowser->refresh(); }},
    {"Home", [](Browser& form) { form.navigate(form.StartingAddress); }},
    {"Búsqueda", [](Browser& form) { form.navigate(installationText("SearchAddress")); }},
    {"Stop",
     [](Browser& form) {
       form.timTimer->stop();
       form.brwWebBrowser->stop();
       form.showLocationName();
     }},
};

Browser::Browser(QWidget* parent)
    : View("frmBrowser", "Fenmoor Systems on the Web", parent),
      moduleFile(besideProgram("lib/brantiwell/modules/brantiwell-webpane.so")),
      timTimer(new QTimer(this)), caption_(new QLabel(this)) {
  named(caption_, "caption", "Page");
  caption_->setTextFormat(Qt::PlainText);
  caption_->setMargin(kCaptionMargin);
  onEvent(this, &QWidget::windowTitleChanged, caption_, [this](const QString& title) {
    caption_->setText(title);
    caption_->setAccessibleName(title);
  });
  caption_->setText(windowTitle());
  timTimer->setObjectName("timTimer");
  timTimer->setInterval(kTimerInterval);
  onEvent(timTimer, &QTimer::timeout, this, [this] { passOver([this] { tick(); }); });
  offerWithArgument("Accion", [this](std::string_view Boton) { Accion(Boton); });
}

void Browser::showEvent(QShowEvent* event) {
  View::showEvent(event);
  // The window system shows the window again after it was minimized: that is no coming on show.
  if (event->spontaneous()) return;
  guarded([this] { passOver([this] { activate(); }); });
}

void Browser::resizeEvent(QResizeEvent* event) {
  View::resizeEvent(event);
  place();
}

void Browser::place() {
  const int line = caption_->sizeHint().height();
  const QRect page = rect().adjusted(0, line, 0, 0);
  caption_->setGeometry(0, 0, width(), line);
  if (brwWebBrowser != nullptr) brwWebBrowser->setGeometry(page);
  if (missing_ != nullptr) missing_->setGeometry(page);
}

void Browser::activate() {
  if (brwWebBrowser == nullptr) loadPane();
  if (StartingAddress.empty()) return;
  timTimer->start();
  navigate(StartingAddress);
}

void Browser::loadPane() {
  QPluginLoader loader(moduleFile);
  if (auto* module = qobject_cast<WebPaneModule*>(loader.instance())) {
    delete missing_;
    missing_ = nullptr;
    brwWebBrowser = named(module->makePane(this), "brwWebBrowser", "Web page");
    setHome(brwWebBrowser);
    brwWebBrowser->onComplete = [this] { guarded([this] { showLocationName(); }); };
  } else if (missing_ == nullptr) {
    missing_ = new QLabel(
        "Web pages cannot be shown, because the package brantiwell-webpane is not installed.\n"
        "Install it and come back to this view; all else works without it.",
        this);
    missing_->setObjectName("missing");
    missing_->setAlignment(Qt::AlignCenter);
    missing_->setWordWrap(true);
  }
  place();
  (brwWebBrowser != nullptr ? static_cast<QWidget*>(brwWebBrowser) : missing_)->show();
}

void Browser::navigate(const std::string& address) {
  if (brwWebBrowser != nullptr && !address.empty())
    brwWebBrowser->navigate(QUrl::fromUserInput(toQt(address)));
}

void Browser::showLocationName() {
  if (brwWebBrowser != nullptr) setWindowTitle(brwWebBrowser->locationName());
}

void Browser::tick() {
  if (brwWebBrowser != nullptr && brwWebBrowser->isBusy()) {
    setWindowTitle("Working...");
    return;
  }
  timTimer->stop();
  showLocationName();
}

void Browser::Accion(std::string_view Boton) {
  timTimer->start();
  if (brwWebBrowser == nullptr) return;
  for (const Command& command : kCommands)
    if (command.Boton == Boton) passOver([&] { command.run(*this); });
}

Browser& frmBrowser() {
  static QPointer<Browser> form;
  if (!form) form = new Browser(MainWindow->clientArea());
  return *form;
}

namespace {

View& onTheWeb(const char* setting) {
  const std::string address = installationText(setting);
  frmBrowser().StartingAddress = address.empty() ? startPage() : address;
  return frmBrowser();
}

}  // namespace

View& makerOnTheWeb() { return onTheWeb("MakerAddress"); }
View& sponsorOnTheWeb() { return onTheWeb("SponsorAddress"); }

}  // namespace bw
