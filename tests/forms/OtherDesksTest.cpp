#include <QEventLoop>
#include <QTimer>
#include <QToolBar>

#include "core/Advice.h"
#include "data/SavedQueries.h"
#include "data/Schema.h"
#include "engine/PostgresEngine.h"
#include "engine/SqliteEngine.h"
#include "shell/OthersSign.h"
#include "tests/forms/FormsFixture.h"
#include "tests/server/TestDatabase.h"
#include "tests/tools/TemporaryFolder.h"

namespace bw {
namespace {

constexpr std::int16_t kDoctors = 2;
constexpr std::int16_t kFacilities = 3;

// Our window and another desk at one database, a file or one on a server.
class OtherDesksTest : public FormsTest {
 protected:
  OtherDesksTest() : theirs(onServer() ? openPostgres(addressOfDatabase()) : another()) {}

  OthersSign& sign() { return control<OthersSign>(window(), "othersSign"); }
  // A server tells what it has to tell before its next answer.
  static void hear() { count("Doctors"); }
  // Whether it is on show once it has looked again.
  bool isOnShow() {
    hear();
    auto& timer = control<QTimer>(sign(), "");
    QEventLoop loop;
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.setInterval(0);
    loop.exec();
    timer.setInterval(1000000);
    return sign().isVisible();
  }

 private:
  // A second connection to a file that takes the place of the database in memory.
  std::unique_ptr<Engine> another() {
    const std::string path = folder_.path() / "office.db";
    createSchema(*createSqlite(path));
    const auto tap = DatabaseConnection.tap;
    DatabaseConnection = officeConnection(openSqlite(path));
    DatabaseConnection.tap = tap;
    seedOffice();
    return openSqlite(path);
  }

  TemporaryFolder folder_;

 protected:
  Connection theirs;
};

TEST_F(OtherDesksTest, ASignTellsThatAnotherDeskHasChangedWhatTheListShows) {
  openView(kDoctors);
  run("UPDATE Doctors SET Description='Own' WHERE DoctorCode=4");
  EXPECT_FALSE(isOnShow()) << "our own change";
  if (onServer()) {
    theirs.Execute("UPDATE Insurance SET Description='Theirs'");
    EXPECT_FALSE(isOnShow()) << "what the list does not show";
  }
  theirs.Execute("UPDATE Doctors SET Description='Theirs' WHERE DoctorCode=1");
  EXPECT_TRUE(isOnShow());
  EXPECT_EQ(shownTexts(list()).front(), "Ames") << "no list changes by itself";
  EXPECT_EQ(sign().geometry().right(), control<QToolBar>(window(), "tbToolBar").rect().right());
  trigger(window(), "mnuViewRefresh");
  EXPECT_FALSE(isOnShow());
  EXPECT_EQ(shownTexts(list()).back(), "Theirs");

  theirs.Execute("DELETE FROM DoctorCoveringDoctors");
  theirs.Execute("UPDATE Facility SET Description='Theirs'");
  hear();
  frmShorcuts().FuerzaNodeClick(kFacilities, 0);
  EXPECT_FALSE(isOnShow()) << "it was stored before the list was read";
  theirs.Execute("UPDATE FacilityTypes SET Description='Theirs'");
  EXPECT_TRUE(isOnShow()) << "behind a saved query";
  frmShorcuts().FuerzaNodeClick(kWelcomeView, 0);
  EXPECT_FALSE(isOnShow()) << "a page shows no list";
}

TEST_F(OtherDesksTest, ANumberThatAnotherDeskTookIsDrawnAnewByASecondOk) {
  openView(kDoctors);
  script.in("frmEditDoctor", [&](QWidget& editor) {
    onStatement = [&](std::string_view issued) {
      if (issued != "BEGIN") return;
      onStatement = nullptr;
      theirs.Execute("INSERT INTO Doctors VALUES (5, 'Theirs', '')");
    };
    click(editor, "btnOk");
    EXPECT_EQ(takeMessages(), Strings{withAdvice(kDuplicateKey)});
    EXPECT_NE(withAdvice(kDuplicateKey).find("Ok draws the next one"), std::string::npos);
    click(editor, "btnOk");
  });
  click(window(), "Nuevo");
  EXPECT_EQ(rows("SELECT DoctorCode FROM Doctors WHERE DoctorCode > 4"), "5 6");
}

}  // namespace
}  // namespace bw
