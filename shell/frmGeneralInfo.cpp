#include "shell/frmGeneralInfo.h"

#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>

#include "controls/Dialog.h"
#include "core/Principal.h"
#include "shell/frmMain.h"

namespace bw {
namespace {

class GeneralInfo : public View {
 public:
  explicit GeneralInfo(QWidget* parent) : View("frmGeneralInfo", "Brantiwell", parent) {
    setAutoFillBackground(true);
    QPalette white = palette();
    white.setColor(QPalette::Window, Qt::white);
    white.setColor(QPalette::WindowText, Qt::black);
    setPalette(white);
    auto* column = new QVBoxLayout(this);
    column->addStretch();
    addLine(column, "Label1", "Brantiwell™ PC", 28);
    addLine(column, "Label6", "by", 10);
    addLine(column, "Label2", "Fenmoor Systems", 16);
    column->addStretch();
    offer("Refresca", [] {});
  }

 private:
  void addLine(QVBoxLayout* column, const char* name, const QString& text, int points) {
    auto* label = named(new QLabel(text, this), name, text);
    QFont font = label->font();
    font.setPointSize(points);
    label->setFont(font);
    label->setAlignment(Qt::AlignCenter);
    column->addWidget(label);
  }
};

}  // namespace

View& frmGeneralInfo() {
  static QPointer<GeneralInfo> form;
  if (!form) form = new GeneralInfo(MainWindow->clientArea());
  return *form;
}

}  // namespace bw
