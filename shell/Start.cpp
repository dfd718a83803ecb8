#include "shell/Start.h"

#include <memory>

#include "core/ApoyoConeccion.h"
#include "core/ApoyoRegistry.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"

namespace bw {
namespace {

// "" when it is missing or no text.
std::string storedDatabasePath() {
  MachineValue value;
  RegistryReadValue("SOFTWARE\\Fenmoor Systems\\Brantiwell PC", "Database", value);
  const auto* text = std::get_if<std::string>(&value);
  return text == nullptr ? std::string() : *text;
}

}  // namespace

bool start() {
  DatabasePath = storedDatabasePath();
  ReportHeaderLine.clear();
  std::string message;
  if (!ConnectDatabase(message)) {
    MsgBox(message);
    return false;
  }
  std::unique_ptr<frmMain> window;
  showSplash([&window] { window = std::make_unique<frmMain>(); });
  // Before it loads: while it does, the tree switches views through MainWindow.
  MainWindow = window ? window.release() : new frmMain;
  MainWindow->setAttribute(Qt::WA_DeleteOnClose);
  MainWindow->load();
  MainWindow->show();
  return true;
}

}  // namespace bw
