#include "review/ReviewWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QPushButton>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>

#include "controls/ComboBox.h"
#include "controls/EventGuard.h"
#include "controls/ListView.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "data/SavedQueries.h"
#include "data/Schema.h"
#include "engine/EngineMakers.h"
#include "engine/SqliteEngine.h"
#include "review/OfficeSnapshot.h"
#include "review/Page.h"
#include "review/Statements.h"
#include "tests/forms/ModalScript.h"
#include "tests/review/ReviewTest.h"
#include "tests/server/TestDatabase.h"

namespace bw {
namespace {

class ReviewWindowTest : public ReviewTest {
 protected:
  ReviewWindowTest() {
    services().settingsFolder = [this] { return below("settings"); };
    services().documentFolder = [this] { return below("documents"); };
    services().view = [this](const std::filesystem::path& document) { viewed.push_back(document); };
    unhandledError() = [](const std::exception& error) { ADD_FAILURE() << error.what(); };
  }

  std::filesystem::path below(const char* name) const { return fromQt(folder_.filePath(name)); }

  // As the program does.
  static void open(ReviewWindow& window) {
    window.show();
    QApplication::processEvents();
    window.readCurrent();
  }
  static ListView& list(const QWidget& window, const char* name) {
    auto* found = window.findChild<ListView*>(name);
    if (found == nullptr) throw std::runtime_error(name);
    return *found;
  }
  static Strings column(const ListView& list, int column) {
    Strings texts;
    for (int row = 0; row < list.count(); ++row)
      texts.push_back(fromQt(list.model()->index(row, column).data().toString()));
    return texts;
  }

  // Nothing lacks but the billing codes of doctors 3 and 4: a ready charge of 3 on 6/2, and one of
  // 4 on 6/3.
  void addUncodedCharges() {
    run("UPDATE Diagnosis SET BillingDiagnosisCode = 'X'");
    run("UPDATE Procedures SET BillingProcedureCode = 'X'");
    charge({.care = "06/02/2003", .doctor = 3});
    charge({.care = "06/03/2003", .doctor = 4});
    run("INSERT INTO ChargeDiagnosis SELECT PatientId, ChargeDate, ChargeTime, 2 FROM "
        "PatientCharges WHERE ChargeDate = #06/02/2003#");
  }

  std::vector<std::filesystem::path> viewed;
  ModalScript script;

 private:
  QTemporaryDir folder_;
};

TEST_F(ReviewWindowTest, RowsAreFoundByLettersAndEnterCopiesWhatFindsThemAgain) {
  addUncodedCharges();
  ReviewWindow window("posting");
  open(window);
  ListView& causes = list(window, "lstCauses");
  ListView& charges = list(window, "lstCharges");
  EXPECT_EQ(column(charges, 3), Strings(2, "Doctor without billing code"));
  charges.setFocus();
  QTest::keyClicks(&charges, "dunn");
  EXPECT_EQ(charges.selectedItem(), 1);
  QTest::keyClick(&charges, Qt::Key_Return);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "A1 6/3/2003");
  EXPECT_EQ(window.statusBar()->currentMessage(), "Copied: A1 6/3/2003");
  // A cause that has no charges, and then the one that has.
  causes.setFocus();
  QTest::keyClicks(&causes, "no diagnosis");
  EXPECT_EQ(charges.count(), 0);
  EXPECT_EQ(fromQt(charges.accessibleDescription()),
            "Nothing is missing: these charges can be posted.");
}

TEST_F(ReviewWindowTest, ACauseWithoutItsTickStaysAwayInTheNextWindowToo) {
  addUncodedCharges();
  {
    ReviewWindow window("posting");
    open(window);
    ListView& causes = list(window, "lstCauses");
    causes.setFocus();
    QTest::keyClicks(&causes, "doctor without");
    QTest::keyClick(&causes, Qt::Key_F2);  // ends the search
    QTest::keyClick(&causes, Qt::Key_Space);
    QTest::qWait(0);
    EXPECT_EQ(list(window, "lstCharges").count(), 0);
  }
  ReviewWindow window("posting");
  window.readCurrent();
  EXPECT_EQ(list(window, "lstCharges").count(), 0);
  ListView& causes = list(window, "lstCauses");
  EXPECT_FALSE(causes.checked(0));
  EXPECT_FALSE(causes.checked(2));
  EXPECT_TRUE(causes.checked(3));
  EXPECT_EQ(column(causes, 1)[2], "2");
}

// Each page has its key, a list that leads, and its document.
TEST_F(ReviewWindowTest, EveryPageOpensByItsKeyAndPrintsWhatItShows) {
  run("UPDATE PatientCharges SET PrintLot = 200306011, Status = 1");
  addUncodedCharges();
  run("INSERT INTO Patient (PatientId, Names, DateOfBirth, AccountNumber, InsuranceCode) VALUES "
      "(25009, 'Smith, Anne', #1950/02/28#, 'A9', 1)");
  ReviewWindow window("posting");
  open(window);
  auto& tabs = *window.findChild<QTabWidget*>("tabPages");
  for (int i = 0; i < tabs.count(); ++i) {
    const PageKind& kind = *pageKinds()[static_cast<std::size_t>(i)];
    QTest::keyClick(&window, static_cast<Qt::Key>(Qt::Key_1 + i), Qt::ControlModifier);
    EXPECT_EQ(tabs.currentIndex(), i);
    ListView& leading = list(window, kind.leading.name);
    EXPECT_TRUE(leading.hasFocus()) << kind.name;
    EXPECT_GT(leading.count(), 0) << kind.name;
    if (kind.name == "rounds") window.findChild<ComboBox*>("cmbShow")->setListIndex(1);
    QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier);
    ASSERT_EQ(viewed.size(), static_cast<std::size_t>(i) + 1) << kind.name;
    EXPECT_EQ(viewed.back().filename(), kind.document);
    EXPECT_TRUE(std::filesystem::exists(viewed.back()));
  }
}

TEST_F(ReviewWindowTest, DaysBetweenVisitsMakeADoctorDue) {
  ReviewWindow window("rounds");
  open(window);
  ListView& visits = list(window, "lstVisits");
  EXPECT_EQ(visits.count(), 0);
  script.in("frmDays", [](QWidget& dialog) {
    dialog.findChild<QSpinBox*>("spnDays1")->setValue(10);
    dialog.findChild<QPushButton*>("btnOk")->click();
  });
  QTest::mouseClick(window.findChild<QPushButton*>("btnMore"), Qt::LeftButton);
  EXPECT_EQ(column(visits, 0), Strings{"Smith, Ann"});
  EXPECT_EQ(column(visits, 6), Strings{"4 days late"});
  visits.setFocus();
  QTest::keyClick(&visits, Qt::Key_Return);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "A1");
}

TEST_F(ReviewWindowTest, ARefusedReadingIsToldAndLeavesWhatWasShown) {
  addUncodedCharges();
  ReviewWindow window("posting");
  open(window);
  const int shown = list(window, "lstCharges").count();
  closeConnection();
  QTest::keyClick(&window, Qt::Key_F5);
  EXPECT_EQ(takeMessages(), Strings{kClosed});
  EXPECT_EQ(list(window, "lstCharges").count(), shown);
}

TEST_F(ReviewWindowTest, ATableOfALotIsNamedWithItAndHoldsNoFormulas) {
  run("UPDATE PatientCharges SET PrintLot = 200306011, Status = 1");
  run("UPDATE Patient SET Names = '=SUM(1), \"Ann\"'");
  ReviewWindow window("lots");
  open(window);
  auto* page = static_cast<Page*>(window.findChild<QWidget*>("pagelstLots"));
  EXPECT_EQ(page->tableName(), "Lot 200306011.csv");
  const std::string table = page->table();
  EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 2);
  EXPECT_NE(
      table.find("200306011,A1,\"'=SUM(1), \"\"Ann\"\"\",2/28/1950,Mutual,6/1/2003,General,GI,"
                 "Inpatient,Ames,A,Bell,B,Visit,99231,BV,"),
      table.npos)
      << table;
}

// A file that the program writes to while Review reads.
class ReadOnlyTest : public ReviewWindowTest {
 protected:
  ReadOnlyTest() : writer_(onServer() ? openEngine(addressOfDatabase()) : makeFile()) {
    DatabaseConnection = officeConnection(openEngine(target(), EngineAccess::readOnly));
  }
  Engine& writer() { return *writer_; }

 private:
  std::string target() const {
    return onServer() ? addressOfDatabase() : below("office.db").string();
  }
  std::unique_ptr<Engine> makeFile() const {
    std::unique_ptr<Engine> engine = createSqlite(target());
    createSchema(*engine);
    engine->execute("INSERT INTO Insurance VALUES (1, 'Mutual', 'MU')");
    return engine;
  }

  std::unique_ptr<Engine> writer_;
};

TEST_F(ReadOnlyTest, TheEngineRefusesEveryWriteAndDefinition) {
  for (const char* statement :
       {"INSERT INTO Insurance VALUES (2, 'Other', '')", "UPDATE Insurance SET Description = 'x'",
        "DELETE FROM Insurance", "CREATE TABLE Other (a INTEGER)", "DROP TABLE Sickness"}) {
    try {
      DatabaseConnection.Execute(statement);
      ADD_FAILURE() << statement;
    } catch (const DatabaseRefusal& refusal) {
      EXPECT_EQ(refusal.why(), Refusal::readOnly) << statement;
    }
  }
  EXPECT_EQ(rows("SELECT * FROM Insurance"), "1|Mutual|MU");
}

TEST_F(ReadOnlyTest, AReadingIsAsOfOneMomentAndKeepsNoWriterWaiting) {
  {
    OfficeSnapshot snapshot(2);
    EXPECT_EQ(snapshot.read(statements::kInsuranceNames)->rowCount(), 1U);
    writer().execute("INSERT INTO Insurance VALUES (2, 'Other', '')");
    EXPECT_EQ(snapshot.read(statements::kInsuranceNames)->rowCount(), 1U);
  }
  OfficeSnapshot next(1);
  EXPECT_EQ(next.read(statements::kInsuranceNames)->rowCount(), 2U);
}

}  // namespace
}  // namespace bw
