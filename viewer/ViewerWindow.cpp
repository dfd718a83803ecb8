#include "viewer/ViewerWindow.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDockWidget>
#include <QLabel>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QSpinBox>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <utility>

#include "viewer/FindBar.h"
#include "viewer/ThumbnailPane.h"

namespace bw {

namespace {

QSettings settings() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, "Brantiwell", "myviewer");
}

QLabel* makeTroubleLine() {
  auto* label = new QLabel;
  label->setObjectName("trouble");
  label->setWordWrap(true);
  label->setMargin(6);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  label->setAutoFillBackground(true);
  QPalette colours = label->palette();
  colours.setColor(QPalette::Window, QColor(255, 240, 190));
  colours.setColor(QPalette::WindowText, Qt::black);
  label->setPalette(colours);
  label->hide();
  return label;
}

// The wheel changes the page only where the keys would.
class PageBox : public QSpinBox {
 public:
  PageBox() { setFocusPolicy(Qt::StrongFocus); }

 protected:
  void wheelEvent(QWheelEvent* event) override {
    if (hasFocus()) return QSpinBox::wheelEvent(event);
    event->ignore();
  }
};

}  // namespace

ViewerWindow::ViewerWindow()
    : view_(new PageView), findBar_(new FindBar), trouble_(makeTroubleLine()),
      side_(new QDockWidget(tr("Pages"))), thumbnails_(new ThumbnailPane), pageBox_(new PageBox),
      zoomLabel_(new QLabel), fitting_(new QLabel) {
  setAcceptDrops(true);
  fitting_->setObjectName("fitting");
  statusBar()->addPermanentWidget(fitting_);
  auto* middle = new QWidget;
  auto* layout = new QVBoxLayout(middle);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(trouble_);
  layout->addWidget(view_, 1);
  layout->addWidget(findBar_);
  setCentralWidget(middle);
  findBar_->hide();
  side_->setObjectName("side");
  side_->setWidget(thumbnails_);
  side_->setFeatures(QDockWidget::DockWidgetClosable);
  addDockWidget(Qt::LeftDockWidgetArea, side_);
  addCommands();
  addPageBox();
  connectParts();
  restoreSettings();
  showDocument(nullptr, false);
  view_->setFocus();
}

// A part that loses the keys or its place while the window goes down still tells of it.
ViewerWindow::~ViewerWindow() {
  for (QObject* part : findChildren<QObject*>()) part->disconnect(this);
}

void ViewerWindow::addPageBox() {
  auto* bar = findChild<QToolBar*>("toolbar");
  pageBox_->setObjectName("pageBox");
  pageBox_->setAccessibleName(tr("Page"));
  pageBox_->setToolTip(tr("Page (Ctrl+L)"));
  pageBox_->setKeyboardTracking(false);
  pageBox_->setAlignment(Qt::AlignRight);
  zoomLabel_->setObjectName("zoom");
  zoomLabel_->setMargin(4);
  bar->insertWidget(findChild<QAction*>("zoomIn"), zoomLabel_);
  bar->addSeparator();
  bar->addAction(findChild<QAction*>("previousPage"));
  bar->addWidget(pageBox_);
  bar->addAction(findChild<QAction*>("nextPage"));
}

void ViewerWindow::connectParts() {
  connect(pageBox_, &QSpinBox::valueChanged, this,
          [this](int page) { view_->goToPage(static_cast<std::size_t>(page)); });
  // Emitted also when the box loses the keys to another widget, which is to keep them.
  connect(pageBox_, &QSpinBox::editingFinished, this, [this] {
    if (pageBox_->hasFocus()) view_->setFocus();
  });
  connect(thumbnails_, &ThumbnailPane::pageWanted, view_, &PageView::goToPage);
  connect(view_, &PageView::currentPageChanged, this, [this] {
    updatePageBox();
    showTrouble();
  });
  connect(view_, &PageView::zoomChanged, this, &ViewerWindow::updateZoom);
  connect(view_, &PageView::selectionChanged, this, &ViewerWindow::updateCommands);
  connect(side_, &QDockWidget::visibilityChanged, this,
          [this] { findChild<QAction*>("thumbnailPane")->setChecked(!side_->isHidden()); });
  connect(findBar_, &FindBar::textChanged, this, &ViewerWindow::searchTyped);
  connect(findBar_, &FindBar::nextWanted, this, [this] { findAgain(Finder::Direction::forward); });
  connect(findBar_, &FindBar::previousWanted, this,
          [this] { findAgain(Finder::Direction::backward); });
  connect(findBar_, &FindBar::closed, this, &ViewerWindow::backToPages);
  connect(&finder_, &Finder::found, this, &ViewerWindow::showFound);
  connect(&finder_, &Finder::notFound, this,
          [this] { findBar_->setNote(tr("Not in this document")); });
  connect(&matchCount_, &MatchCount::counted, this, &ViewerWindow::showCount);
  connect(&file_, &DocumentFile::rewritten, this, &ViewerWindow::reload);
  view_->setContextMenuPolicy(Qt::ActionsContextMenu);
  view_->addActions({findChild<QAction*>("copy"), findChild<QAction*>("selectPage")});
}

void ViewerWindow::restoreSettings() {
  const QSettings stored = settings();
  // With room for the frame: the find bar is at the foot.
  constexpr QSize kUsual(1000, 800);
  constexpr QSize kFrame(16, 48);
  resize(kUsual.boundedTo(screen()->availableSize() - kFrame));
  restoreGeometry(stored.value("Window/Geometry").toByteArray());
  side_->setVisible(stored.value("Window/Thumbnails", true).toBool());
  const QString fit = stored.value("View/Fit", "width").toString();
  view_->setZoom(stored.value("View/Zoom", 1.0).toDouble());
  if (fit == "width") view_->setFit(PageView::Fit::width);
  if (fit == "page") view_->setFit(PageView::Fit::page);
}

void ViewerWindow::storeSettings() const {
  QSettings stored = settings();
  stored.setValue("Window/Geometry", saveGeometry());
  stored.setValue("Window/Thumbnails", !side_->isHidden());
  stored.setValue("View/Zoom", view_->zoom());
  stored.setValue("View/Fit", view_->fit() == PageView::Fit::width  ? "width"
                              : view_->fit() == PageView::Fit::page ? "page"
                                                                    : "none");
}

void ViewerWindow::closeEvent(QCloseEvent* event) {
  storeSettings();
  QMainWindow::closeEvent(event);
}

void ViewerWindow::openDocument(const QString& path) {
  QString reason;
  auto document = file_.open(path, reason);
  if (document == nullptr) {
    tell(
        tr("The document \"%1\" cannot be opened: %2. Open another one, or print the report again.")
            .arg(path, reason));
    return;
  }
  showDocument(std::move(document), false);
}

void ViewerWindow::reload() {
  QString reason;
  auto document = file_.reopen(reason);
  if (document == nullptr) {
    tell(tr("The document \"%1\" cannot be read again: %2. What was read before is still shown.")
             .arg(file_.path(), reason));
    return;
  }
  showDocument(std::move(document), true);
}

void ViewerWindow::showDocument(std::shared_ptr<const Document> document, bool keepPlace) {
  document_ = std::move(document);
  damages_ = document_ ? document_->damages() : std::vector<Damage>();
  startCheck();
  matchCount_.begin(document_, view_->needle());
  finder_.setDocument(document_);
  view_->setDocument(document_, keepPlace);
  thumbnails_->setDocument(view_->fitted());
  setWindowTitle(document_ ? tr("%1 - Report Viewer").arg(file_.name()) : tr("Report Viewer"));
  findBar_->setNote(QString());
  showTrouble();
  updatePageBox();
  updateZoom();
  updateFitting();
  updateCommands();
}

void ViewerWindow::startCheck() {
  check_.stop();
  if (document_ == nullptr) return;
  check_.start(
      document_->pageCount(),
      [this](std::size_t page) {
        const Damage damage = document_->parse(page).damage;
        if (damage) damages_.push_back(damage);
        return !damage;
      },
      [this] {
        if (!damages_.empty()) showTrouble();
      });
}

// What is told of the document that is shown, its items included; nothing when `progress` ended the
// search.
std::optional<QString> ViewerWindow::damageFound(const Progress& progress) {
  if (check_.active()) {
    check_.stop();
    auto damages = allDamages(*document_, progress);
    if (!damages) {
      startCheck();
      return std::nullopt;
    }
    damages_ = *std::move(damages);
  }
  return QString::fromStdString(sentences(damages_));
}

void ViewerWindow::showTrouble() {
  QString trouble = QString::fromStdString(sentences(damages_));
  if (trouble.isEmpty() && document_ != nullptr && document_->pageCount() == 0) {
    trouble = tr("This report has no pages. Print it again.");
  }
  tell(trouble);
}

void ViewerWindow::tell(const QString& sentence) {
  trouble_->setText(sentence);
  trouble_->setVisible(!sentence.isEmpty());
}

void ViewerWindow::updatePageBox() {
  const int pages = document_ ? static_cast<int>(document_->pageCount()) : 0;
  const int page = static_cast<int>(view_->currentPage());
  const QSignalBlocker quiet(pageBox_);
  pageBox_->setEnabled(pages > 0);
  pageBox_->setRange(pages > 0 ? 1 : 0, pages);
  pageBox_->setSuffix(tr(" / %1").arg(pages));
  pageBox_->setValue(page);
  thumbnails_->setCurrentPage(view_->currentPage());
}

void ViewerWindow::updateZoom() {
  zoomLabel_->setText(tr("%1 %").arg(qRound(view_->zoom() * 100)));
  updateCommands();
}

void ViewerWindow::step(int pages) {
  const int wanted = static_cast<int>(view_->currentPage()) + pages;
  if (wanted > 0) view_->goToPage(static_cast<std::size_t>(wanted));
}

void ViewerWindow::typePage() {
  pageBox_->setFocus(Qt::ShortcutFocusReason);
  pageBox_->selectAll();
}

void ViewerWindow::toggleThumbnails() { side_->setVisible(side_->isHidden()); }

// What is printed stays fitted to its paper, which has no more room.
void ViewerWindow::toggleFullWidth() {
  view_->setNatural(!view_->isNatural());
  thumbnails_->setDocument(view_->fitted());
  thumbnails_->setCurrentPage(view_->currentPage());
  updateFitting();
  updateCommands();
}

void ViewerWindow::updateFitting() {
  QString text;
  if (document_ != nullptr) {
    text =
        QString::fromStdString(sentence(fitToPaper(document_->pageSize(), document_->rightEdge())));
  }
  fitting_->setText(
      text.isEmpty() || !view_->isNatural()
          ? text
          : tr("Shown at full width. On paper: %1").arg(text.at(0).toLower() + text.mid(1)));
}

void ViewerWindow::copy() {
  const QString text = view_->selectedText();
  if (!text.isEmpty()) QApplication::clipboard()->setText(text);
}

void ViewerWindow::selectPage() { view_->selectPage(); }

void ViewerWindow::openFind() {
  findStart_ = view_->currentPage();
  findBar_->open();
  searchTyped(findBar_->text());
}

void ViewerWindow::backToPages() {
  finder_.stop();
  matchCount_.stop();
  view_->setNeedle(QString());
  findBar_->hide();
  view_->setFocus();
}

// Every letter typed searches from the page where the search was begun.
void ViewerWindow::searchTyped(const QString& text) {
  view_->setNeedle(text);
  findBar_->setNote(QString());
  finder_.stop();
  finder_.findFrom(text, findStart_);
  matchCount_.begin(document_, text);
}

void ViewerWindow::findAgain(Finder::Direction direction) {
  if (findBar_->isHidden()) {
    openFind();
    return;
  }
  if (const auto& match = view_->match()) {
    finder_.findNext(findBar_->text(), *match, direction);
  } else {
    finder_.findFrom(findBar_->text(), view_->currentPage());
  }
}

void ViewerWindow::showFound(const Match& match, bool wentRound) {
  view_->showMatch(match);
  findStart_ = match.page;
  wentRound_ = wentRound;
  showCount();
}

void ViewerWindow::showCount() {
  const auto& match = view_->match();
  if (!match) return;
  const auto total = matchCount_.total();
  QString note = total ? tr("Match %1 of %2, %3 on this page")
                             .arg(matchCount_.place(*match))
                             .arg(*total)
                             .arg(matchCount_.onPage(match->page))
                       : tr("Counting the matches...");
  if (wentRound_) note += tr("; went on from the other end");
  findBar_->setNote(note);
}

void ViewerWindow::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (urls.size() == 1 && urls.front().isLocalFile()) event->acceptProposedAction();
}

void ViewerWindow::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  openDocument(event->mimeData()->urls().front().toLocalFile());
}

}  // namespace bw
