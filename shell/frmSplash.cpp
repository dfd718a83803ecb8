#include "shell/frmSplash.h"

#include <QDialog>
#include <QFrame>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "controls/Dialog.h"
#include "controls/EventGuard.h"
#include "controls/Icons.h"

namespace bw {
namespace {

constexpr int kMilliseconds = 2000;

class Splash : public QDialog {
 public:
  explicit Splash(std::function<void()> meanwhile)
      : QDialog(nullptr, Qt::SplashScreen), meanwhile_(std::move(meanwhile)) {
    auto* timer = new QTimer(this);
    timer->setObjectName("Timer1");
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);  // a coarse one may be a twentieth early
    onEvent(timer, &QTimer::timeout, this, [this] { done(0); });
    timer->start(kMilliseconds);
    setObjectName("frmSplash");
    setWindowTitle("Brantiwell");
    setModal(true);
    setStyleSheet("#frmSplash { background: rgb(192, 192, 192); } QLabel { color: black; }");
    auto* outer = new QVBoxLayout(this);
    auto* frame = new QFrame(this);
    frame->setObjectName("fraMainFrame");
    frame->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    outer->addWidget(frame);
    auto* lines = new QVBoxLayout(frame);
    lines->setSpacing(8);
    auto* logo = named(new QLabel(frame), "picLogo", "Logo");
    logo->setPixmap(icon("Brantiwell").pixmap(96, 96));
    logo->setAlignment(Qt::AlignCenter);
    lines->addWidget(logo);
    addLine(lines, "Label1", "SETUP", 10);
    addLine(lines, "lblProductName", "Brantiwell PC", 26);
    addLine(lines, "lblCompanyProduct", "Fenmoor Systems", 14);
    addLine(lines, "lblPlatform", "for Linux", 10);
    addLine(lines, "lblCopyright", "Copyright Fenmoor Systems", 8);
    addLine(lines, "lblWarning", "Patient records are confidential.", 8);
    resize(440, 320);
  }

 protected:
  void reject() override {}  // only the timer ends it
  void paintEvent(QPaintEvent* event) override {
    QDialog::paintEvent(event);
    if (std::exchange(painted_, true)) return;
    QTimer::singleShot(0, this, [this] { guarded(meanwhile_); });
  }

 private:
  static void addLine(QVBoxLayout* lines, const char* name, const QString& text, int points) {
    auto* label = named(new QLabel(text), name, text);
    QFont font = label->font();
    font.setPointSize(points);
    label->setFont(font);
    label->setAlignment(Qt::AlignCenter);
    lines->addWidget(label);
  }

  std::function<void()> meanwhile_;
  bool painted_ = false;
};

}  // namespace

void showSplash(const std::function<void()>& meanwhile) { Splash(meanwhile).exec(); }

}  // namespace bw
