#include "shell/frmAbout.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProcess>
#include <QVBoxLayout>
#include <array>
#include <filesystem>

#include "controls/Icons.h"
#include "controls/QtText.h"
#include "core/MachineSettings.h"
#include "core/Services.h"

namespace bw {
namespace {

// Where the machine may name its system information tool: the program itself, or its folder.
struct ToolRow {
  const char* key;
  const char* name;
  const char* inFolder;
};
constexpr std::array kTools{
    ToolRow{"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH", ""},
    ToolRow{"SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO", "MSINFO32.EXE"},
};
constexpr const char* kNoTool = "La información del sistema no está disponible en este momento";

// As much of a value as the tool's path may have, in bytes.
constexpr std::size_t kBuffer = 1024;

// The bytes of a number from the highest to the lowest, each without a leading zero.
std::string hexadecimal(std::uint32_t number) {
  std::string digits;
  for (int shift = 24; shift >= 0; shift -= 8)
    digits += fromQt(QString::number(number >> shift & 0xffU, 16).toUpper());
  return digits;
}

class About : public Dialog {
 public:
  explicit About(QWidget* owner);
  void load() {}

 private:
  static void StartSysInfo();
  static bool GetKeyValue(const std::string& KeyName, const std::string& SubKeyRef,
                          std::string& KeyVal);
};

About::About(QWidget* owner) : Dialog("frmAbout", "About Brantiwell", owner) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(20, 20, 20, 16);
  row->setSpacing(20);
  auto* picture = named(new QLabel(this), "picIcon", "Brantiwell");
  picture->setPixmap(icon("Brantiwell").pixmap(64, 64));
  row->addWidget(picture, 0, Qt::AlignTop);
  auto* column = new QVBoxLayout;
  column->setSpacing(6);
  row->addLayout(column, 1);
  auto* title = named(new QLabel(kApplicationTitle, this), "lblTitle", kApplicationTitle);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.8);
  title->setFont(large);
  const QString number = QString("Versión %1").arg(BRANTIWELL_VERSION);
  auto* version = named(new QLabel(number, this), "lblVersion", number);
  version->setTextInteractionFlags(Qt::TextSelectableByMouse);
  column->addWidget(title);
  column->addWidget(version);
  column->addSpacing(24);
  column->addStretch();
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(6);
  auto* info = makeButton("cmdSysInfo", "&System Info...", this, StartSysInfo);
  auto* ok = makeButton("cmdOK", "Ok", this, [this] { unload(); });
  ok->setDefault(true);
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addWidget(info);
  column->addLayout(buttons);
  setTabs({ok, info});
  ok->setFocus();
  layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void About::StartSysInfo() {
  for (const ToolRow& tool : kTools) {
    std::string value;
    if (!GetKeyValue(tool.key, tool.name, value)) continue;
    std::filesystem::path program = value;
    if (*tool.inFolder != '\0') {
      program /= tool.inFolder;
      if (!std::filesystem::exists(program)) continue;
    }
    if (QProcess::startDetached(toQt(program.string()), {})) return;
    break;
  }
  MsgBox(kNoTool);
}

bool About::GetKeyValue(const std::string& KeyName, const std::string& SubKeyRef,
                        std::string& KeyVal) {
  KeyVal.clear();
  const auto value = readMachineSetting(KeyName, SubKeyRef);
  if (!value) return false;
  if (const auto* number = std::get_if<std::uint32_t>(&*value)) {
    KeyVal = hexadecimal(*number);
    return true;
  }
  const auto& text = std::get<std::string>(*value);
  if (text.size() >= kBuffer) return false;
  KeyVal = text.substr(0, text.find('\0'));
  return true;
}

}  // namespace

const Form& frmAbout() {
  static const Form form(showModal<About>);
  return form;
}

}  // namespace bw
