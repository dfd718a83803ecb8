#include "shell/frmGeneralInfo.h"

#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>

#include "controls/Dialog.h"
#include "controls/Icons.h"
#include "controls/QtText.h"
#include "core/MachineSettings.h"
#include "core/Principal.h"
#include "lists/MainFrame.h"

namespace bw {
namespace {

struct LineRow {
  const char* name;
  const char* text;
  int points;
  const char* setting = "";  // of the machine, in place of the text
};

// The addresses are known to the installation alone; without them the page says where to turn.
constexpr LineRow kLines[] = {
    {"Label1", "Brantiwell™ PC", 30},
    {"Label6", "by", 11},
    {"Label2", "Fenmoor Systems", 18},
    {"Label3", "Web page: Fenmoor Systems on the Web, in the shortcuts", 11, "MakerAddress"},
    {"Label4", "Sales: ask who installed this program", 11, "MakerSalesAddress"},
    {"Label5", "Support: ask who installed this program", 11, "MakerSupportAddress"},
};
constexpr QSize kPicture{480, 240};

QString textOfLine(const LineRow& line) {
  const auto set =
      *line.setting == '\0'
          ? std::nullopt
          : readMachineSetting("SOFTWARE\\Fenmoor Systems\\Brantiwell PC", line.setting);
  const auto* address = set ? std::get_if<std::string>(&*set) : nullptr;
  return address == nullptr || address->empty() ? QString(line.text) : toQt(*address);
}

// A white page with a picture drawn for white paper, also on a dark desktop.
class GeneralInfo : public View {
 public:
  explicit GeneralInfo(QWidget* parent) : View("frmGeneralInfo", "Brantiwell", parent) {
    setAutoFillBackground(true);
    QPalette paper = palette();
    paper.setColor(QPalette::Window, Qt::white);
    paper.setColor(QPalette::WindowText, QColor(0x2f, 0x48, 0x58));
    setPalette(paper);
    auto* column = new QVBoxLayout(this);
    column->setSpacing(4);
    column->addStretch(2);
    auto* picture = named(new QLabel(this), "picWelcome", "Sheets of charges, ticked and stamped");
    picture->setPixmap(icon("Welcome").pixmap(kPicture));
    picture->setAlignment(Qt::AlignCenter);
    picture->setMinimumSize(1, 1);  // in a low window the texts go first
    column->addWidget(picture);
    column->addSpacing(12);
    for (const LineRow& line : kLines) addLine(column, line);
    column->addStretch(3);
    offer("Refresca", [] {});
  }

 private:
  void addLine(QVBoxLayout* column, const LineRow& line) {
    const QString text = textOfLine(line);
    auto* label = named(new QLabel(text, this), line.name, text);
    QFont font = label->font();
    font.setPointSize(line.points);
    label->setFont(font);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
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
