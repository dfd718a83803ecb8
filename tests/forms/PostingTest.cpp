#include <QCheckBox>
#include <QListWidget>
#include <fstream>

#include "controls/ProgressWindow.h"
#include "printing/ListReports.h"
#include "tests/forms/FormsFixture.h"
#include "tests/server/TestDatabase.h"

namespace bw {
namespace {

class PostingTest : public FormsTest {
 protected:
  PostingTest() {
    seedCharges();
    services().view = [this](const std::filesystem::path& file) { viewed.push_back(file); };
    openView(0);
    click(frmCharges(), "optAllDates");
  }

  static std::string stored() {
    return rows("SELECT Status, PrintLot FROM PatientCharges ORDER BY ChargeRealDate");
  }
  void post(ModalScript::Step step) {
    script.in("frmPostCharges", std::move(step));
    trigger(window(), "mnuActions(0)");
  }
  void postUnprinted() {
    post([](QWidget& dialog) {
      control<QCheckBox>(dialog, "chkPrint").setChecked(false);
      click(dialog, "OKButton");
    });
  }

  std::vector<std::filesystem::path> viewed;
};

TEST_F(PostingTest, PostsWhatIsReadyAndNothingElseAlsoUnderASortThatMovesTheRows) {
  clickHead(list(), 6);
  post([](QWidget& dialog) {
    EXPECT_EQ(line(dialog, "TxtNumCharges").text(), "2");
    EXPECT_EQ(line(dialog, "TxtLotNumber").text(), "200306151");
    EXPECT_TRUE(control<QCheckBox>(dialog, "chkPrint").isChecked());
    control<QCheckBox>(dialog, "chkPrint").setChecked(false);
    click(dialog, "OKButton");
  });
  EXPECT_EQ(stored(), "1|200306151 1|77 1|200306151 3|null");
  EXPECT_EQ(shownTexts(list(), 6), (Strings{"", "Posted", "Posted", "Posted"}));
  EXPECT_TRUE(viewed.empty());
  trigger(window(), "mnuActions(0)");
  EXPECT_EQ(takeMessages(), Strings{"No charges to post!"});
  // The lot's number brings the same charges again.
  click(frmCharges(), "optSelectedLot");
  type(line(frmCharges(), "TxtLotNumber"), "200306151");
  click(frmCharges(), "btnGo2");
  EXPECT_EQ(shownTexts(list(), 0), (Strings{"6/1/2003", "6/3/2003"}));
}

TEST_F(PostingTest, ALotThatIsNoneKeepsTheDialogAndCancelPostsNothing) {
  post([](QWidget& dialog) {
    auto& lot = line(dialog, "TxtLotNumber");
    for (const char* text : {"", "x", "2147483648"}) {
      lot.setText(text);
      EXPECT_EQ(lot.accessibleDescription(), "no lot number");
      click(dialog, "OKButton");
    }
    // Beside the number stands what it comes to.
    type(lot, "12.4");
    EXPECT_EQ(label(dialog, "LblStored"), "lot 12");
    type(lot, "-3");
    EXPECT_EQ(label(dialog, "LblStored"), "no lot number, status only");
    EXPECT_TRUE(dialog.isVisible());
    click(dialog, "CancelButton");
  });
  const std::string told =
      "The lot number must be a whole number of at most 2147483647. Please correct it.";
  EXPECT_EQ(takeMessages(), Strings(3, told));
  EXPECT_EQ(stored(), "0|null 1|77 0|null 3|null");
}

TEST_F(PostingTest, AChargeThatFailsStaysReadyAndTheOthersArePosted) {
  run("DELETE FROM PatientCharges WHERE PatientId = 25000");
  postUnprinted();
  EXPECT_EQ(takeMessages(), Strings{withAdvice("Problems updating status: U:IMPACTENT")});
  EXPECT_EQ(stored(), "1|77 1|200306151 3|null");
  EXPECT_EQ(shownTexts(list(), 6), (Strings{"Ready", "Posted", "Posted", ""}));
}

TEST_F(PostingTest, MoreThanTheCountHoldsIsToldAndNothingIsPosted) {
  const std::string time =
      onServer() ? "time '00:00' + i * interval '1 second'" : "time(i, 'unixepoch')";
  run(
      concat("INSERT INTO PatientCharges WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 "
             "FROM n WHERE i < 32767) SELECT 25000, #07/01/2003#, ",
             time, ", #07/01/2003#, 1, 1, 1, 2, 0, NULL FROM n"));
  frmCharges().Refresca();
  trigger(window(), "mnuActions(0)");
  EXPECT_NE(takeMessage().find("32770 charges"), std::string::npos);
  EXPECT_EQ(rows("SELECT count(*) FROM PatientCharges WHERE PrintLot IS NOT NULL"), "1");
}

TEST_F(PostingTest, PostingGoesOnToPrintAndTheReportsDependOnTheInsurance) {
  CurrentInsuranceCode = 2;
  click(frmCharges(), "optSelectedInsurances");
  script.in("frmPostCharges", [](QWidget& dialog) { click(dialog, "OKButton"); });
  script.in("frmPrintGeneral", [](QWidget& dialog) {
    auto& items = control<QListWidget>(dialog, "List1");
    EXPECT_EQ(items.count(), 5);
    items.setCurrentRow(4);
    click(dialog, "OKButton");
  });
  trigger(window(), "mnuActions(0)");
  ASSERT_EQ(viewed.size(), 1U);
  EXPECT_EQ(viewed.front(), services().documentFolder() / "ChargesBillingB.myv");
  click(frmCharges(), "optAllInsurances");
  script.in("frmPrintGeneral", [](QWidget& dialog) {
    EXPECT_EQ(control<QListWidget>(dialog, "List1").count(), 3);
    dialog.close();
  });
  frmCharges().Imprimir();
  EXPECT_EQ(viewed.size(), 1U);
}

TEST_F(PostingTest, EachReportHasItsCodesAndTellsTheFilters) {
  CurrentInsuranceCode = CurrentDoctorCode = 2;
  for (const char* filter : {"optSelectedInsurances", "optSelectedDoctors", "optSelectedLot"})
    click(frmCharges(), filter);
  type(line(frmCharges(), "TxtLotNumber"), "77");
  click(frmCharges(), "btnGo2");
  for (int item = 1; item <= 4; ++item) {
    script.in("frmPrintGeneral", [item](QWidget& dialog) {
      control<QListWidget>(dialog, "List1").setCurrentRow(item);
      click(dialog, "OKButton");
    });
    frmCharges().Imprimir();
    ASSERT_EQ(std::ssize(viewed), item);
    std::ifstream file(viewed.back());
    const std::string document(std::istreambuf_iterator<char>(file), {});
    const auto has = [&](const char* text) { return document.find(text) != std::string::npos; };
    const bool billing = item % 2 == 0;
    EXPECT_EQ(has("BV"), billing) << viewed.back();
    EXPECT_NE(has("99231"), billing) << viewed.back();
    EXPECT_TRUE(has(",Insurance: ") && has(", Doctor: ") && has("Lot: 77")) << viewed.back();
  }
}

TEST_F(PostingTest, AListPrintsAsItStands) {
  list().setPosition(list().columnOf("StatusDescription"), 1);
  list().setWidth(list().columnOf("Doctor"), 0);
  list().setWidth(list().columnOf("Facility"), 180);   // 0.125 inches
  list().setWidth(list().columnOf("Insurance"), 540);  // 0.375 inches
  const ColumnLists lists = columnLists(list());
  EXPECT_EQ(lists.heads, "Status,1;Date,1;Patient,2;E & M Concept,2;Facility,0.12;Insurance,0.38;");
  EXPECT_EQ(lists.fields,
            "StatusDescription,1;ChargeRealDate,1;Names,2;EMDescription,2;Facility,0.12;"
            "Insurance,0.38;");
  const auto title = [](std::int16_t view, std::int16_t filter) {
    const ListReport& report = recordKind(view).records->report;
    return reportTitle(report.title, report.words, filter);
  };
  EXPECT_EQ(title(7, 14), "Evaulation & Management Codes ()");
  EXPECT_EQ(title(9, 1), "Diagnosis Families(Incomplete)");
}

TEST_F(PostingTest, ArchivesWhatIsOlderExceptEachPatientsLatest) {
  run("INSERT INTO PatientCharges VALUES "
      "(25000, #01/01/2002#, #08:00:00#, #01/01/2002#, 1, 1, 1, 2, 2, 5), "
      "(25000, #06/14/2002#, #08:00:00#, #06/14/2002#, 1, 1, 1, 2, 1, 6), "
      "(25000, #06/15/2002#, #08:00:00#, #06/15/2002#, 1, 1, 1, 2, 1, 7)");
  const auto archive = [&](const char* until) {
    script.in("frmArchiveCharges", [until](QWidget& dialog) {
      auto& picker = control<DatePicker>(dialog, "DTPicker1");
      EXPECT_EQ(picker.value(), day(2002, 6, 15));
      type(picker, "13/01/10");
      click(dialog, "OKButton");
      EXPECT_TRUE(dialog.isVisible() && picker.hasFocus());
      type(picker, until);
      click(dialog, "OKButton");
      if (dialog.isVisible()) dialog.close();  // stopped by a failed read
    });
    trigger(window(), "mnuToolsArchive");
    QApplication::processEvents();
  };
  archive("06/15/02");
  EXPECT_EQ(takeMessages(), Strings{"Process ended successfully"});
  // The day itself is not earlier, and lots stay.
  EXPECT_EQ(stored(), "3|5 3|6 1|7 0|null 1|77 0|null 3|null");
  ASSERT_EQ(QApplication::activeWindow(), &window());
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "ListView1");
  archive("01012010");
  EXPECT_EQ(takeMessages(), Strings{"Process ended successfully"});
  EXPECT_EQ(stored(), "3|5 3|6 3|7 0|null 3|77 0|null 3|null") << "the latest stay, however old";
  closeConnection();
  archive("6/15/2002");
  const Strings told = takeMessages();
  ASSERT_EQ(told.size(), 2U) << "the run's, then the view's own";
  EXPECT_TRUE(told[0].ends_with(kClosed));
}

TEST_F(PostingTest, TheWindowTakesNoInputWhileWorkIsShown) {
  services().patience = {};
  installProgressWindow();
  int shown = 0;
  onStatement = [&](std::string_view statement) {
    QWidget* progress = QApplication::activeModalWidget();
    if (!statement.starts_with("UPDATE") || progress == nullptr) return;
    EXPECT_EQ(progress->objectName(), "Progress");
    ++shown;
    EXPECT_TRUE(progress->isVisible());
    // Would ask a question that no test expects.
    QTest::keyClick(window().windowHandle(), Qt::Key_Delete);
    QTest::keyClick(progress, Qt::Key_Escape);
    progress->close();
    EXPECT_TRUE(progress->isVisible());
  };
  postUnprinted();
  onStatement = nullptr;
  EXPECT_EQ(shown, 1);  // of two charges: after the first
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

}  // namespace
}  // namespace bw
