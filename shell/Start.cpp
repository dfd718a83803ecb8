#include "shell/Start.h"

#include <memory>

#include "core/ApoyoConeccion.h"
#include "core/ApoyoRegistry.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/SavedQueries.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"

namespace bw {

bool start() {
  DatabasePath = installationText("Database");
  ReportHeaderLine.clear();
  std::string message;
  if (!ConnectDatabase(message)) {
    MsgBox(withAdvice(message, connectionAdvice()));
    return false;
  }
  DatabaseConnection.lookedUpQueries = lookedUpQueries();
  std::unique_ptr<frmMain> window;
  showSplash([&window] {
    window = std::make_unique<frmMain>();
    window->prepare();
  });
  frmMain& opened = *(window ? window.release() : new frmMain);
  opened.setAttribute(Qt::WA_DeleteOnClose);
  opened.load();
  opened.show();
  return true;
}

}  // namespace bw
