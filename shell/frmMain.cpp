#include "shell/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <algorithm>
#include <chrono>

#include "controls/BusyCursor.h"
#include "controls/Dialog.h"
#include "controls/EventGuard.h"
#include "controls/Icons.h"
#include "controls/Twips.h"
#include "core/PassOver.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/Schema.h"
#include "lists/Settings.h"
#include "printing/PageSize.h"
#include "shell/ClockPanels.h"
#include "shell/OthersSign.h"
#include "shell/frmBanner.h"
#include "shell/frmShorcuts.h"
#include "text/BrokenOff.h"
#include "text/Conversions.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr const char* kSection = "Settings";
constexpr std::chrono::milliseconds kPrinterDelay{100};

std::int16_t storedNumber(const char* key, const char* standard) {
  return toInt16(GetSetting(kApplicationTitle, kSection, key, standard));
}

int storedPixels(const char* key, const char* standard) {
  return toPixels(toSingle(GetSetting(kApplicationTitle, kSection, key, standard)));
}

void store(const char* key, std::int64_t number) {
  SaveSetting(kApplicationTitle, kSection, key, concat(number));
}

}  // namespace

frmMain::frmMain() {
  MainWindow = this;
  setObjectName("frmMain");
  setWindowTitle("Brantiwell");
  setWindowIcon(icon("Brantiwell"));
  client_->setObjectName("clientArea");
  setCentralWidget(client_);
  client_->installEventFilter(this);
  menus_.build(*this);
  toolbar_.build(*this);
  statusBar()->setObjectName("sbStatusBar");
  addClockPanels(statusBar());
  auto* otherPane = new QShortcut(QKeySequence(Qt::Key_F6), this);
  onEvent(otherPane, &QShortcut::activated, this, [this] { goToOtherPane(); });
  openGuideByKey(this);
}

frmMain::~frmMain() {
  if (MainWindow == this) MainWindow = nullptr;
}

void frmMain::prepare() {
  const BusyCursor busy;
  frmBanner();
  frmShorcuts();
  viewOf(recordKind(storedNumber("ActiveView", "0")));
}

void frmMain::load() {
  bannerHeight_ = 500;
  // Asking for the printer waits for the print service: the first view goes first.
  QTimer::singleShot(kPrinterDelay, this, [] { passOver([] { readPageSize(); }); });
  shortcutsShown_ = storedNumber("Shortcut", "1");
  restorePlacement();
  menus_.goToMenu()->setVisible(false);  // the tree stands in for it
  VistaActualNumero = FiltroActualNumero = -1;
  frmShorcuts().FuerzaNodeClick(storedNumber("ActiveView", "0"), storedNumber("ActiveFilter", "0"));
  placeAll();  // a window of the stored size already gets no resize
  focusView();
}

// From the tree to the list of the view, and back.
void frmMain::goToOtherPane() {
  QWidget& tree = frmShorcuts();
  const bool inView =
      activeView_ == nullptr || activeView_->isAncestorOf(QApplication::focusWidget());
  if (inView && tree.isVisible())
    tree.setFocus();
  else
    focusView();
}

void frmMain::restorePlacement() {
  const int left = storedPixels("MainLeft", "1000");
  const int top = storedPixels("MainTop", "1000");
  const int width = storedPixels("MainWidth", "6500");
  const int height = storedPixels("MainHeight", "6500");
  move(left, top);
  resize(width, height);
}

void frmMain::savePlacement() const {
  if (!isMinimized()) {
    store("MainLeft", toTwips(x()));
    store("MainTop", toTwips(y()));
    store("MainWidth", toTwips(width()));
    store("MainHeight", toTwips(height()));
  }
  store("ActiveView", VistaActualNumero);
  store("ActiveFilter", FiltroActualNumero);
}

// The views store what is theirs before the window does.
void frmMain::unload() {
  for (View* view : views_) view->unload();
  savePlacement();
}

// Settings that cannot be stored keep nobody from closing the window.
void frmMain::closeEvent(QCloseEvent* event) {
  guarded([this] {
    try {
      unload();
    } catch (const RuntimeError& error) {
      if (error.number() != ErrorNumber::pathNotFound) throw;
      MsgBox(error.text() +
             ". Your records are stored. The next time the window comes up as it did this time.");
    }
  });
  event->accept();
}

void frmMain::CambiaAVista(std::int16_t Vista, std::int16_t Filtro) {
  const bool same = Vista == VistaActualNumero && Filtro == FiltroActualNumero;
  const OnShow before{activeView_, VistaActualNumero, FiltroActualNumero, menus_.checkedFilter(),
                      QApplication::focusWidget()};
  VistaActualNumero = Vista;
  FiltroActualNumero = Filtro;
  if (!same)
    orPutBack([this] { switchView(); }, [&] { putBack(before); });
  else if (activeView_ != nullptr)
    activeView_->update();
}

void frmMain::ActivaFiltro(std::int16_t NuevoFiltro) { menus_.checkFilter(NuevoFiltro); }

std::function<void()> frmMain::readsList(std::string_view statement) {
  return toolbar_.sign().watch(tablesBehind(statement));
}

// Menus and toolbar.
void frmMain::dress(const RecordKind& kind) {
  menus_.checkView(VistaActualNumero);
  menus_.currentViewMenu()->setVisible(kind.filterMenu);
  if (kind.filterMenu) menus_.checkFilter(FiltroActualNumero);
  menus_.showActions(kind);
  menus_.showFilters(kind);
  toolbar_.showGroup(kind.group);
  // A page has no Refresca: there the key is the toolbar's.
  menus_.refresh()->setShortcut(kind.group == ToolbarGroup::browser ? QKeySequence()
                                                                    : QKeySequence(Qt::Key_F5));
}

void frmMain::switchView() {
  const RecordKind& kind = recordKind(VistaActualNumero);
  dress(kind);
  View* left = activeView_;
  activeView_ = &viewOf(kind);
  if (std::find(views_.begin(), views_.end(), activeView_) == views_.end())
    views_.push_back(activeView_);
  if (left != nullptr && left != activeView_) left->hide();
  placeView(frmShorcuts().isVisibleTo(client_));
  const auto watchAsBefore = toolbar_.sign().watch({});  // a page shows no list
  orPutBack([this] { passOver([this] { activeView_->call("Refresca"); }); }, watchAsBefore);
  activeView_->show();
}

// The mark can be another than that of the filter: a view that comes up sets it.
void frmMain::putBack(const OnShow& before) {
  VistaActualNumero = before.viewNumber;
  FiltroActualNumero = before.filterNumber;
  dress(recordKind(VistaActualNumero));
  menus_.checkFilter(before.mark);
  if (activeView_ != before.view) activeView_->hide();
  activeView_ = before.view;
  placeView(frmShorcuts().isVisibleTo(client_));
  activeView_->show();
  if (before.focus != nullptr) before.focus->setFocus();
}

int frmMain::bannerBottom() const { return scaledPixels(toPixels(bannerHeight_)); }

void frmMain::placeView(bool treeShown) {
  if (activeView_ == nullptr) return;
  const int left = treeShown ? frmShorcuts().width() : 0;
  const int top = bannerBottom();
  activeView_->setGeometry(left, top, client_->width() - left, client_->height() - top);
}

void frmMain::placeAll() {
  const int top = bannerBottom();
  if (bannerHeight_ > 0) frmBanner().setGeometry(0, 0, client_->width(), top);
  if (shortcutsShown_ > 0)
    frmShorcuts().setGeometry(0, top, frmShorcuts().width(), client_->height() - top);
  placeView(shortcutsShown_ > 0);
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
  const bool place = event->type() == QEvent::Resize || event->type() == QEvent::FontChange;
  if (watched == client_ && place && MainWindow == this)
    guarded([this] { passOver([this] { placeAll(); }); });
  return QMainWindow::eventFilter(watched, event);
}

}  // namespace bw
