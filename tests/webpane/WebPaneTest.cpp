#include <QEventLoop>
#include <QFile>
#include <QLabel>
#include <QTcpServer>
#include <QTcpSocket>

#include "core/MachineSettings.h"
#include "shell/frmBrowser.h"
#include "shell/frmShorcuts.h"
#include "tests/forms/FormsFixture.h"
#include "text/RuntimeError.h"
#include "webpane/WebPane.h"

// Inside the web engine the sanitizer finds objects freed as another type; that is not ours.
extern "C" const char* __asan_default_options() { return "new_delete_type_mismatch=0"; }

namespace bw {
namespace {

constexpr int kDeadline = 30'000;  // milliseconds until a page is given up; none takes a second

// A web server on this computer. Every path is a page with the path's name as its title; what is
// asked for below /slow is never answered.
class PageServer {
 public:
  PageServer() {
    if (!server_.listen(QHostAddress::LocalHost)) throw std::runtime_error("no port to listen on");
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
      QTcpSocket* socket = server_.nextPendingConnection();
      QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { serve(socket); });
      QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    });
  }

  std::string address(const char* path) const {
    return "http://127.0.0.1:" + std::to_string(server_.serverPort()) + path;
  }
  // Paths asked for, in order.
  QStringList takeAsked() { return std::exchange(asked_, {}); }
  // Asked for at least once since the last take.
  bool wasAsked(const char* path) const { return asked_.contains(path); }
  // Nobody listens at the address any more.
  void close() { server_.close(); }

 private:
  void serve(QTcpSocket* socket) {
    // A request of some hundred bytes arrives at once: "GET /path HTTP/1.1".
    const QString path = QString::fromLatin1(socket->readAll()).section(' ', 1, 1);
    const bool isIcon = path == "/favicon.ico";
    if (!isIcon) asked_ << path;
    if (path.startsWith("/slow")) return;
    const QByteArray page = "<!DOCTYPE html><title>" + path.mid(1).toUtf8() + "</title>";
    socket->write(isIcon ? "HTTP/1.1 404 Not Found\r\n" : "HTTP/1.1 200 OK\r\n");
    socket->write("Content-Type: text/html\r\nCache-Control: no-store\r\nConnection: close\r\n" +
                  QByteArray("Content-Length: ") + QByteArray::number(page.size()) + "\r\n\r\n" +
                  page);
    socket->disconnectFromHost();
  }

  QTcpServer server_;
  QStringList asked_;
};

// Runs the event loop until the condition holds; the engine's work is spread over many events.
bool waitUntil(const std::function<bool()>& condition) {
  QEventLoop loop;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
    if (condition()) loop.exit(1);
  });
  poll.start(1);
  QTimer::singleShot(kDeadline, &loop, &QEventLoop::quit);
  return loop.exec() == 1;
}

// The web view in the main window, its start page served by the test.
class WebPaneTest : public FormsTest {
 protected:
  WebPaneTest() {
    qputenv("XDG_CONFIG_DIRS", settings_.path().toLocal8Bit());
    setAddress("MakerAddress", server_.address("/start"));
  }
  ~WebPaneTest() override { qunsetenv("XDG_CONFIG_DIRS"); }

  static void setAddress(const char* name, const std::string& address) {
    writeMachineSetting("SOFTWARE\\Fenmoor Systems\\Brantiwell PC", name, address);
  }
  static std::string caption() { return frmBrowser().windowTitle().toStdString(); }
  static bool isWorking() { return control<QTimer>(frmBrowser(), "timTimer").isActive(); }
  static WebPane& pane() { return control<WebPane>(frmBrowser(), "brwWebBrowser"); }
  // Waits until the page of that title is there and nothing is on its way.
  static void expectPage(const char* title) {
    const bool came = waitUntil([&] { return caption() == title && !isWorking(); });
    ASSERT_TRUE(came) << "wanted " << title << ", on show is " << caption();
  }
  static void open(const std::string& address) {
    pane().navigate(QUrl(QString::fromStdString(address)));
  }
  void showWeb() { frmShorcuts().FuerzaNodeClick(12, 0); }
  // The main window with the start page on show.
  void start() {
    openMainWindow();
    showWeb();
    expectPage("start");
  }
  void showWelcome() { frmShorcuts().FuerzaNodeClick(10, 0); }
  void press(const char* button) { trigger(window(), button); }

  QTemporaryDir settings_;
  PageServer server_;
};

bool engineIsInTheProcess() {
  QFile maps("/proc/self/maps");
  if (!maps.open(QFile::ReadOnly)) throw std::runtime_error("no list of what is loaded");
  return maps.readAll().contains("WebEngineCore");
}

// First, since the engine stays in the process once it is there.
TEST_F(WebPaneTest, TheEngineComesWithTheFirstPageAndNotBefore) {
  openMainWindow();
  showWelcome();
  EXPECT_FALSE(engineIsInTheProcess());
  showWeb();
  EXPECT_TRUE(engineIsInTheProcess());
  expectPage("start");
}

TEST_F(WebPaneTest, ButtonsMoveThroughThePages) {
  start();
  press("Back");  // nothing to go back to
  expectPage("start");
  open(server_.address("/start#part"));
  EXPECT_FALSE(pane().isBusy()) << "nothing is loaded for it";
  for (const char* step : {"Back", "Fordward"}) {
    press(step);
    expectPage("start");
  }
  open(server_.address("/second"));
  expectPage("second");
  press("Back");
  expectPage("start");
  press("Fordward");
  expectPage("second");
  server_.takeAsked();
  press("Refresh");
  EXPECT_TRUE(waitUntil([&] { return server_.wasAsked("/second"); }));
  expectPage("second");
  press("Home");
  expectPage("start");
  EXPECT_TRUE(takeFatal().empty());
}

TEST_F(WebPaneTest, StopLeavesThePageThatWasOnShow) {
  start();
  press("Stop");
  EXPECT_EQ(caption(), "start") << "nothing was on its way";
  EXPECT_FALSE(isWorking());

  setAddress("MakerAddress", server_.address("/slow"));
  showWelcome();
  showWeb();
  ASSERT_TRUE(waitUntil([&] { return server_.wasAsked("/slow"); }));
  EXPECT_TRUE(waitUntil([] { return caption() == "Working..."; }));
  EXPECT_TRUE(isWorking());
  press("Stop");
  EXPECT_FALSE(isWorking());
  EXPECT_FALSE(pane().isBusy());
  EXPECT_NE(caption(), "Working...");
  frmBrowser().call("Accion", "Back");
  frmBrowser().call("Accion", "nonsense");
  EXPECT_TRUE(waitUntil([] { return !isWorking(); }));
}

TEST_F(WebPaneTest, EachReturnStartsAtTheStartingAddress) {
  start();
  open(server_.address("/elsewhere"));
  expectPage("elsewhere");
  server_.takeAsked();
  showWelcome();
  showWeb();
  expectPage("start");
  EXPECT_EQ(server_.takeAsked(), QStringList{"/start"});
  setAddress("SearchAddress", server_.address("/search"));
  frmBrowser().call("Accion", "Búsqueda");
  expectPage("search");
}

TEST_F(WebPaneTest, AnAddressThatNobodyAnswersEndsTheWaiting) {
  setAddress("MakerAddress", server_.address("/gone"));
  server_.close();
  openMainWindow();
  showWeb();
  EXPECT_TRUE(waitUntil([] { return !isWorking(); }));
  EXPECT_FALSE(pane().isBusy());
  EXPECT_NE(caption(), "Working...");
  PageServer other;
  open(other.address("/other"));
  expectPage("other");
}

TEST_F(WebPaneTest, WithoutAnAddressThereIsThePageThatComesWithTheProgram) {
  setAddress("MakerAddress", "");
  openMainWindow();
  showWeb();
  expectPage("Fenmoor Systems on the Web");
  EXPECT_TRUE(frmBrowser().StartingAddress.ends_with("share/brantiwell/start.html"));
}

TEST_F(WebPaneTest, WithoutTheModuleASentenceNamesThePackage) {
  openMainWindow();
  const QString module = std::exchange(frmBrowser().moduleFile, "/nowhere/brantiwell-webpane.so");
  showWeb();
  auto& sentence = control<QLabel>(frmBrowser(), "missing");
  EXPECT_TRUE(sentence.isVisible());
  EXPECT_TRUE(sentence.text().contains("package brantiwell-webpane"));
  for (const char* button : {"Back", "Fordward", "Refresh", "Home", "Stop"}) press(button);
  EXPECT_TRUE(waitUntil([] { return !isWorking(); }));
  trigger(window(), "mnuViewRefresh");
  EXPECT_EQ(takeFatal(), Strings{std::string(errorText(ErrorNumber::noSuchOperation))});
  frmShorcuts().FuerzaNodeClick(0, 0);
  EXPECT_TRUE(control<QWidget>(window(), "frmCharges").isVisible());

  frmBrowser().moduleFile = module;  // installed meanwhile
  showWeb();
  expectPage("start");
}

}  // namespace
}  // namespace bw
