#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <fstream>

#include "controls/QtText.h"
#include "core/MachineSettings.h"
#include "core/Principal.h"
#include "data/Schema.h"
#include "engine/SqliteEngine.h"
#include "engine/Workgroup.h"
#include "shell/Start.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

class StartTest : public FormsTest {
 protected:
  StartTest() {
    resetShared();
    qputenv("XDG_CONFIG_DIRS", folder_.path().toLocal8Bit());
  }
  ~StartTest() override { qunsetenv("XDG_CONFIG_DIRS"); }

  std::string path(const char* name) { return fromQt(folder_.filePath(name)); }
  void registerDatabase(const std::string& file) {
    writeMachineSetting("SOFTWARE\\Fenmoor Systems\\Brantiwell PC", "Database", file);
  }
  static std::string problem(const std::string& file) {
    return "Problems stablishing connectionProvider=Microsoft.Jet.OLEDB.4.0;Data Source=" + file +
           ";Jet OLEDB:System database=" + workgroupPathOf(file) + ";User Id=Kelps;Password=Kelps";
  }
  void write(const char* name, const std::string& text) { std::ofstream(path(name)) << text; }

  QTemporaryDir folder_;
};

TEST_F(StartTest, WithoutASessionThereIsTheMessageAndNoWindow) {
  const std::string file = path("office.db");
  const auto failsWith = [&](const std::string& message) {
    EXPECT_FALSE(start());
    EXPECT_EQ(takeMessages(), Strings{message});
    EXPECT_EQ(MainWindow, nullptr);
  };
  failsWith("Falta iniciar Informacion de Bases de datos");
  registerDatabase(file);
  failsWith(problem(file));  // nothing there
  createSchema(*createSqlite(file));
  failsWith(problem(file));  // no workgroup file
  write("office.dw", "rubbish");
  failsWith(problem(file));
  write("office.dw", workgroupText("Kelps", "other"));
  failsWith(problem(file));
  write("office.dw", workgroupText("Kelps", "Kelps"));
  write("office.db", std::string(5000, 'x'));
  failsWith(problem(file));
  registerDatabase("x");  // whatever the last letter is, "w" takes its place
  failsWith(problem("x"));
}

TEST_F(StartTest, TheTitleStandsTwoSecondsBeforeTheFirstViewIsRead) {
  const std::string file = path("office.db");
  createSchema(*createSqlite(file));
  write("office.dw", workgroupText("Kelps", "Kelps"));
  registerDatabase(file);
  QElapsedTimer clock;
  clock.start();
  script.in("frmSplash", [](QWidget&) { EXPECT_EQ(MainWindow, nullptr); });
  ASSERT_TRUE(start());
  EXPECT_GE(clock.elapsed(), 2000);
  ASSERT_NE(MainWindow, nullptr);
  EXPECT_TRUE(MainWindow->isVisible());
  EXPECT_EQ(MainWindow->VistaActualNumero, 0);
  delete MainWindow;
}

}  // namespace
}  // namespace bw
