#include <QElapsedTimer>
#include <QRegularExpression>
#include <fstream>

#include "controls/ListView.h"
#include "core/MachineSettings.h"
#include "data/Schema.h"
#include "engine/SqliteEngine.h"
#include "engine/Workgroup.h"
#include "lists/Settings.h"
#include "shell/Start.h"
#include "shell/frmGeneralInfo.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

// What hangs on the machine's settings, with settings of the test.
class MachineTest : public FormsTest {
 protected:
  MachineTest() { qputenv("XDG_CONFIG_DIRS", folder_.path().toLocal8Bit()); }
  ~MachineTest() override { qunsetenv("XDG_CONFIG_DIRS"); }

  std::string path(const std::string& name) { return fromQt(folder_.filePath(toQt(name))); }
  void write(const std::string& name, const std::string& text) {
    std::ofstream(path(name)) << text;
  }
  static void set(const char* name, const std::string& value) {
    writeMachineSetting("SOFTWARE\\Fenmoor Systems\\Brantiwell PC", name, value);
  }

 private:
  QTemporaryDir folder_;
};

class StartTest : public MachineTest {
 protected:
  StartTest() { resetShared(); }

  static std::string problem(const std::string& file) {
    return "Problems stablishing connectionProvider=Microsoft.Jet.OLEDB.4.0;Data Source=" + file +
           ";Jet OLEDB:System database=" + workgroupPathOf(file) + ";User Id=Kelps;Password=Kelps";
  }
};

TEST_F(StartTest, WithoutASessionThereIsTheMessageAndNoWindow) {
  const std::string file = path("office.db");
  const auto failsWith = [&](const std::string& message) {
    EXPECT_FALSE(start());
    EXPECT_EQ(takeMessages(), Strings{message});
    EXPECT_EQ(MainWindow, nullptr);
  };
  failsWith("Falta iniciar Informacion de Bases de datos");
  set("Database", file);
  createSchema(*createSqlite(file));
  failsWith(problem(file));  // no workgroup file
  set("Database", "x");      // whatever the last letter is, "w" takes its place
  failsWith(problem("x"));
}

TEST_F(StartTest, TheTitleStandsTwoSecondsBeforeTheFirstViewIsRead) {
  const std::string file = path("office.db");
  const auto database = createSqlite(file);
  createSchema(*database);
  database->execute({"INSERT INTO Doctors VALUES (1, 'Ashby', '')"});
  SaveSetting(kApplicationTitle, "Settings", "ActiveView", "2");
  write("office.dw", workgroupText("Kelps", "Kelps"));
  set("Database", file);
  QElapsedTimer clock;
  clock.start();
  const auto rows = [] { return MainWindow->findChild<ListView*>()->count(); };
  script.in("frmSplash", [&rows](QWidget&) {
    ASSERT_NE(MainWindow, nullptr);
    EXPECT_FALSE(MainWindow->isVisible());
    EXPECT_EQ(rows(), 0);
  });
  ASSERT_TRUE(start());
  EXPECT_EQ(rows(), 1);
  EXPECT_GE(clock.elapsed(), 2000);
  ASSERT_NE(MainWindow, nullptr);
  EXPECT_TRUE(MainWindow->isVisible());
  delete MainWindow;
}

class AboutTest : public MachineTest {
 protected:
  AboutTest() { openMainWindow(); }

  // A program that leaves a file of its name and ".ran" beside it.
  void makeProgram(const char* name) {
    write(name, "#!/bin/sh\n: > \"$0.ran\"\n");
    std::filesystem::permissions(path(name), std::filesystem::perms::owner_all);
  }
  bool ran(const std::string& name) {
    return QTest::qWaitFor([&] { return std::filesystem::exists(path(name + ".ran")); });
  }
  void inAbout(const ModalScript::Step& step) {
    script.in("frmAbout", step);
    trigger(window(), "mnuHelpAbout");
  }
  // The message.
  Strings pressSysInfo() {
    inAbout([](QWidget& about) {
      click(about, "cmdSysInfo");
      click(about, "cmdOK");
    });
    return takeMessages();
  }
};

TEST_F(AboutTest, TheVersionShowsThreeNumbers) {
  inAbout([](QWidget& about) {
    const QString version = toQt(label(about, "lblVersion"));
    EXPECT_TRUE(QRegularExpression("^Versión \\d+\\.\\d+\\.\\d+$").match(version).hasMatch());
    QTest::keyClick(&about, Qt::Key_Return);
  });
}

TEST_F(AboutTest, TheToolOfTheMachineIsRunOrItIsSaidThatThereIsNone) {
  constexpr const char* kTools = "SOFTWARE\\Microsoft\\Shared Tools";
  const Strings none{"La información del sistema no está disponible en este momento"};
  EXPECT_EQ(pressSysInfo(), none);
  writeMachineSetting(concat(kTools, " Location"), "MSINFO", path(""));
  EXPECT_EQ(pressSysInfo(), none) << "a folder without the tool";
  makeProgram("MSINFO32.EXE");
  EXPECT_EQ(pressSysInfo(), Strings{});
  EXPECT_TRUE(ran("MSINFO32.EXE"));
  makeProgram("tool");
  writeMachineSetting(concat(kTools, "\\MSINFO"), "PATH", path("tool"));
  EXPECT_EQ(pressSysInfo(), Strings{});
  EXPECT_TRUE(ran("tool"));
  writeMachineSetting(concat(kTools, "\\MSINFO"), "PATH", path("nothing there"));
  EXPECT_EQ(pressSysInfo(), none);
}

TEST_F(AboutTest, TheWelcomePageShowsTheAddressesOfTheMachine) {
  set("MakerSalesAddress", "sales@example.org");
  window().CambiaAVista(10, 0);
  EXPECT_EQ(label(frmGeneralInfo(), "Label4"), "sales@example.org");
  for (const char* unset : {"Label3", "Label5"})
    EXPECT_EQ(label(frmGeneralInfo(), unset).find('@'), std::string::npos);
}

}  // namespace
}  // namespace bw
