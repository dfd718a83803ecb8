#include <unistd.h>

#include <QLoggingCategory>
#include <QObject>
#include <QQuickWindow>

#include "webpane/EnginePane.h"

namespace bw {
namespace {

// Drawing through the graphics card wants its contexts shared from before the application object
// on, which every start of the program would pay for. In software nothing is shared; but the
// engine's note of how it draws reads a shared context without asking whether there is one, so
// that note is kept off.
void drawInSoftware() {
  QQuickWindow::setSceneGraphBackend("software");
  constexpr const char* kFlags = "QTWEBENGINE_CHROMIUM_FLAGS";
  qputenv(kFlags, qgetenv(kFlags) + " --disable-gpu");
  QLoggingCategory::setFilterRules("qt.webenginecontext*=false");
}

// The engine's sandbox refuses to run for root.
void allowRoot() {
  if (geteuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

}  // namespace

class Module : public QObject, public WebPaneModule {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID "FenmoorSystems.Brantiwell.WebPane/1")
  Q_INTERFACES(bw::WebPaneModule)

 public:
  Module() {
    drawInSoftware();
    allowRoot();
  }
  WebPane* makePane(QWidget* parent) override { return new EnginePane(parent); }
};

}  // namespace bw

#include "Module.moc"
