#include "controls/ProgressWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QVBoxLayout>

#include "controls/Dialog.h"
#include "controls/QtText.h"
#include "core/Services.h"

namespace bw {
namespace {

class ProgressWindow : public QDialog {
 public:
  explicit ProgressWindow(QWidget* owner)
      : QDialog(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
        label_(new QLabel), bar_(named(new QProgressBar, "barProgress", "Progress")) {
    setObjectName("Progress");
    setWindowTitle(kApplicationTitle);
    setWindowModality(Qt::ApplicationModal);
    auto* column = new QVBoxLayout(this);
    column->addWidget(label_);
    column->addWidget(bar_);
    bar_->setMinimumWidth(fontMetrics().horizontalAdvance('0') * 50);
  }

  void show(const WorkProgress& work) {
    // The bar counts in 32 bits.
    constexpr int kSteps = 1000;
    label_->setText(toQt(work.text));
    bar_->setRange(0, kSteps);
    bar_->setValue(work.total > 0 ? static_cast<int>(work.done * kSteps / work.total) : 0);
    if (!isVisible()) QDialog::show();
  }

  void reject() override {}

 protected:
  void closeEvent(QCloseEvent* event) override { event->ignore(); }

 private:
  QLabel* label_;
  QProgressBar* bar_;
};

void showProgress(const WorkProgress& work) {
  static QPointer<ProgressWindow> window;
  if (work.ended) {
    delete window.data();
    return;
  }
  if (!window) window = new ProgressWindow(activeOwner());
  window->show(work);
  // All events: what the user does to the other windows meanwhile is dropped, since this one is
  // modal. Held back, it would come down on them when the work is done.
  QApplication::processEvents();
}

}  // namespace

void installProgressWindow() { services().progress = showProgress; }

}  // namespace bw
