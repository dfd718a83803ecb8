#include "review/ReviewWindow.h"

#include <QCloseEvent>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QTabWidget>

#include "controls/Dialog.h"
#include "controls/Icons.h"
#include "controls/QtText.h"
#include "controls/Twips.h"
#include "core/PassOver.h"
#include "core/Services.h"
#include "lists/Settings.h"
#include "review/Page.h"
#include "text/Conversions.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr const char* kSection = "Window";

}  // namespace

ReviewWindow::ReviewWindow(std::string_view page)
    : tabs_(named(new QTabWidget(this), "tabPages", "Pages")) {
  setObjectName("frmReview");
  setWindowTitle("Brantiwell Review");
  setWindowIcon(icon("Brantiwell"));
  setCentralWidget(tabs_);
  statusBar()->setObjectName("StatusBar");
  for (const PageKind* kind : pageKinds()) {
    auto* made = new Page(*kind, tabs_);
    made->onTold = [this](const QString& text) { statusBar()->showMessage(text); };
    pages_.push_back(made);
    const int place = tabs_->addTab(made, kind->caption);
    tabs_->setTabToolTip(place, QString("Ctrl+%1").arg(place + 1));
  }
  restore();
  goTo(page);
  onEvent(tabs_, &QTabWidget::currentChanged, this, [this] {
    statusBar()->clearMessage();
    readCurrent();
  });
  addKeys();
}

void ReviewWindow::readCurrent() {
  current()->readOnce();
  current()->takeFocus();
}

Page* ReviewWindow::current() const {
  return pages_[static_cast<std::size_t>(tabs_->currentIndex())];
}

void ReviewWindow::goTo(std::string_view page) {
  for (std::size_t i = 0; i < pages_.size(); ++i)
    if (sameName(pages_[i]->kind().name, page)) tabs_->setCurrentIndex(static_cast<int>(i));
}

void ReviewWindow::addKeys() {
  const auto key = [this](const QKeySequence& keys, auto handler) {
    onEvent(new QShortcut(keys, this), &QShortcut::activated, this, handler);
  };
  for (int i = 0; i < tabs_->count(); ++i)
    key(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + i)),
        [this, i] { tabs_->setCurrentIndex(i); });
  key(QKeySequence(Qt::Key_F5), [this] { current()->read(); });
  key(QKeySequence(Qt::Key_F6), [this] { current()->switchLists(); });
  key(QKeySequence(Qt::CTRL | Qt::Key_P), [this] { current()->print(); });
  key(QKeySequence(Qt::CTRL | Qt::Key_E), [this] { current()->saveTable(); });
  key(QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { close(); });
}

// The window's size at the standard font, as large as the screen lets it.
void ReviewWindow::restore() {
  const auto stored = [](const char* key, const char* otherwise) {
    return GetSetting(kApplicationTitle, kSection, key, otherwise);
  };
  QSize size(scaledPixels(1000), scaledPixels(680));
  passOver([&] { size = {toInt32(stored("Width", "")), toInt32(stored("Height", ""))}; });
  resize(size.boundedTo(screen()->availableSize()));
  goTo(stored("Page", ""));
}

void ReviewWindow::store() {
  for (const Page* page : pages_) page->storeLayout();
  SaveSetting(kApplicationTitle, kSection, "Width", concat(width()));
  SaveSetting(kApplicationTitle, kSection, "Height", concat(height()));
  SaveSetting(kApplicationTitle, kSection, "Page", std::string(current()->kind().name));
}

void ReviewWindow::closeEvent(QCloseEvent* event) {
  guarded([this] { store(); });
  event->accept();
}

}  // namespace bw
