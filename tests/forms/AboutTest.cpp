#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "controls/QtText.h"
#include "core/MachineSettings.h"
#include "shell/frmGeneralInfo.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

// The side forms, on machine settings of the test.
class AboutTest : public FormsTest {
 protected:
  AboutTest() { qputenv("XDG_CONFIG_DIRS", folder_.path().toLocal8Bit()); }
  ~AboutTest() override { qunsetenv("XDG_CONFIG_DIRS"); }

  std::string path(const char* name) { return fromQt(folder_.filePath(name)); }
  // A program that leaves a file of its name and ".ran" beside it.
  void makeProgram(const char* name) {
    QFile file(folder_.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n: > \"$0.ran\"\n");
    file.setPermissions(file.permissions() | QFile::ExeOwner);
  }
  bool ran(const char* name) {
    return QTest::qWaitFor([&] { return QFile::exists(folder_.filePath(name) + ".ran"); });
  }
  void pressSysInfo() {
    script.in("frmAbout", [](QWidget& about) {
      click(about, "cmdSysInfo");
      click(about, "cmdOK");
    });
    trigger(window(), "mnuHelpAbout");
  }

  QTemporaryDir folder_;
};

constexpr const char* kTool = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
constexpr const char* kToolFolder = "SOFTWARE\\Microsoft\\Shared Tools Location";

TEST_F(AboutTest, TheVersionShowsThreeNumbersAndBothKeysCloseTheBox) {
  openMainWindow();
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
    script.in("frmAbout", [key](QWidget& about) {
      EXPECT_TRUE(QRegularExpression("^Versión \\d+\\.\\d+\\.\\d+$")
                      .match(control<QLabel>(about, "lblVersion").text())
                      .hasMatch());
      EXPECT_EQ(control<QLabel>(about, "lblTitle").text(), "Brantiwell");
      QTest::keyClick(&about, key);
    });
    trigger(window(), "mnuHelpAbout");
  }
}

TEST_F(AboutTest, TheToolOfTheMachineIsRunOrItIsSaidThatThereIsNone) {
  const Strings none{"La información del sistema no está disponible en este momento"};
  openMainWindow();
  pressSysInfo();
  EXPECT_EQ(takeMessages(), none);
  writeMachineSetting(kToolFolder, "MSINFO", path(""));
  pressSysInfo();
  EXPECT_EQ(takeMessages(), none) << "a folder without the tool";
  makeProgram("MSINFO32.EXE");
  pressSysInfo();
  EXPECT_TRUE(ran("MSINFO32.EXE"));
  makeProgram("tool");
  writeMachineSetting(kTool, "PATH", path("tool"));
  pressSysInfo();
  EXPECT_TRUE(ran("tool"));
  writeMachineSetting(kTool, "PATH", path("nothing there"));
  pressSysInfo();
  EXPECT_EQ(takeMessages(), none);
}

TEST_F(AboutTest, TheWelcomePageShowsTheAddressesOfTheMachine) {
  writeMachineSetting("SOFTWARE\\Fenmoor Systems\\Brantiwell PC", "MakerSalesAddress",
                      "sales@example.org");
  openMainWindow();
  window().CambiaAVista(10, 0);
  EXPECT_EQ(control<QLabel>(frmGeneralInfo(), "Label4").text(), "sales@example.org");
  for (const char* unset : {"Label3", "Label5"})
    EXPECT_FALSE(control<QLabel>(frmGeneralInfo(), unset).text().contains('@'));
}

}  // namespace
}  // namespace bw
