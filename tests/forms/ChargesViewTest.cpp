#include <QHeaderView>

#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

// Charges of four days: Smith (1st), Jones (2nd to 4th).
class ChargesViewTest : public FormsTest {
 protected:
  ChargesViewTest() {
    seedCharges();
    openView(0);
    click(frmCharges(), "optAllDates");
    takeStatements();
  }

  static Strings names() { return shownTexts(list(), 1); }
};

TEST_F(ChargesViewTest, EachPanelNarrowsTheStatement) {
  CurrentPatientId = 25001;
  CurrentInsuranceCode = 2;
  CurrentDoctorCode = 3;
  type(line(frmCharges(), "TxtLotNumber"), "");
  frmShorcuts().FuerzaNodeClick(0, 13);
  takeStatements();
  std::string statement = "SELECT * FROM ChargesDescriptive Where [status]=2";
  const std::pair<const char*, std::string> panels[] = {
      {"optSelectedDates",
       " and ChargeRealDate >= #06/15/2003# and ChargeRealDate <= #06/15/2003#"},
      {"optSelectedPatients", " and PatientId= 25001"},
      {"optSelectedInsurances", " and InsuranceCode= 2"},
      {"optSelectedDoctors", " and DoctorCode= 3"},
      {"optSelectedLot", " and PrintLot = 0"}};
  for (const auto& [option, clause] : panels) {
    click(frmCharges(), option);
    EXPECT_EQ(takeStatements(), Strings{statement += clause});
  }
  type(line(frmCharges(), "TxtLotNumber"), "20 03x");
  click(frmCharges(), "btnGo2");
  EXPECT_EQ(takeStatements(), Strings{statement.substr(0, statement.size() - 1) + "2003"});
}

TEST_F(ChargesViewTest, NoDateLeavesTheListOnEveryRoad) {
  click(frmCharges(), "optSelectedDates");
  auto& first = control<DatePicker>(frmCharges(), "DTPicker1");
  auto& last = control<DatePicker>(frmCharges(), "DTPicker2");
  type(first, "06012003");
  type(last, "06/02/03");
  QTest::keyClick(&last, Qt::Key_Return);
  type(first, "31/6/03");
  takeStatements();
  const std::tuple<const char*, std::function<void()>, bool> roads[] = {
      {"refresh", [&] { QTest::keyClick(&window(), Qt::Key_F5); }, false},
      {"a filter", [] { frmShorcuts().FuerzaNodeClick(0, 4); }, false},
      {"lot on", [] { click(frmCharges(), "optSelectedLot"); }, false},
      {"lot off", [] { click(frmCharges(), "optAllLots"); }, false},
      {"go", [] { click(frmCharges(), "btnGo"); }, true},
      {"go of the lot", [] { click(frmCharges(), "btnGo2"); }, true},
      {"printing", [] { frmCharges().call("Imprimir"); }, true},
      {"posting", [] { frmCharges().call("Post"); }, true}};
  for (const auto& [name, go, goesThere] : roads) {
    SCOPED_TRACE(name);
    last.setFocus();
    go();
    EXPECT_EQ(first.hasFocus(), goesThere);
    EXPECT_EQ(first.text(), "31/6/03");
    EXPECT_EQ(names(), (Strings{"Smith, Ann", "Jones, Bob"}));
    EXPECT_EQ(takeStatements(), Strings{});
  }
  frmShorcuts().FuerzaNodeClick(0, 0);
  type(first, "06022003");
  type(last, "3");  // the latest third of a month
  QTest::keyClick(&last, Qt::Key_Return);
  EXPECT_EQ(names(), (Strings{"Jones, Bob", "Jones, Bob"}));
  // A date that does not filter stops nobody.
  type(last, "31/6/03");
  click(frmCharges(), "optAllDates");
  EXPECT_EQ(list().count(), 4);
}

TEST_F(ChargesViewTest, AColumnThatSaysTheSameIsHiddenAndItsWidthIsKept) {
  const int column = list().columnOf("Names");
  list().horizontalHeader()->resizeSection(column, 250);
  CurrentPatientId = 25001;
  click(frmCharges(), "optSelectedPatients");
  EXPECT_EQ(list().Width(column), 0);
  auto& box = line(frmCharges(), "TxtPatient");
  EXPECT_EQ(box.text() + box.placeholderText(), "Jones, Bob") << "nobody chose him here";
  click(frmCharges(), "optAllPatients");
  EXPECT_EQ(box.placeholderText(), "");
  click(frmCharges(), "optSelectedPatients");
  closeMainWindow();
  EXPECT_EQ(GetSetting(kApplicationTitle, "Charges", "NamesWidth", ""), "3750");
}

TEST_F(ChargesViewTest, ASearchThatPicksTheCurrentOneReadsNothing) {
  CurrentInsuranceCode = 2;
  click(frmCharges(), "optSelectedInsurances");
  takeStatements();
  script.in("frmPickInsurance", picks("Other"));
  click(frmCharges(), "btnSearchInsurance");
  EXPECT_EQ(takeStatements(), Strings{"SELECT * FROM Insurance"});
  script.in("frmPickInsurance", picks("Mutual"));
  click(frmCharges(), "btnSearchInsurance");
  EXPECT_EQ(line(frmCharges(), "TxtInsurance").text(), "Mutual");
  EXPECT_EQ(names(), Strings{"Smith, Ann"});
}

TEST_F(ChargesViewTest, TheHeadsMenuSortsHidesAndBringsBackByKeys) {
  const int status = list().columnOf("StatusDescription");
  list().horizontalHeader()->resizeSection(status, 0);
  const auto menu = [&](std::initializer_list<Qt::Key> keys) {
    QTest::keyClick(&list(), Qt::Key_F10, Qt::ShiftModifier);
    for (const Qt::Key key : keys) QTest::keyClick(QApplication::activePopupWidget(), key);
  };
  menu({Qt::Key_2});
  EXPECT_EQ(names().back(), "Smith, Ann");
  EXPECT_EQ(list().sorted(), list().columnOf("Names"));
  frmShorcuts().FuerzaNodeClick(0, 5);
  EXPECT_EQ(list().sorted(), list().columnOf("ChargeRealDate")) << "as the records are";
  menu({Qt::Key_Up, Qt::Key_Up, Qt::Key_Return});  // the last one's entry, above the reset
  EXPECT_EQ(list().Width(status), 1440);
  menu({Qt::Key_Up, Qt::Key_Up, Qt::Key_Return});
  EXPECT_EQ(list().Width(status), 0);
  list().setPosition(status, 1);
  menu({Qt::Key_R});
  EXPECT_EQ(list().Width(status), 1440);
  EXPECT_EQ(list().Position(status), 7);
}

TEST_F(ChargesViewTest, ALettersKeyGoesToTheOptionThatIsOnAndArrowsChooseTheOther) {
  CurrentPatientId = 25001;
  click(frmCharges(), "optSelectedPatients");
  takeStatements();
  press(Qt::Key_P, Qt::AltModifier);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "optSelectedPatients");
  press(Qt::Key_Left);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "optAllPatients");
  EXPECT_EQ(takeStatements().size(), 1U);
}

TEST_F(ChargesViewTest, AnEmptyListSaysWhy) {
  const auto why = [&] { return list().accessibleDescription().toStdString(); };
  EXPECT_EQ(why(), "");
  click(frmCharges(), "optSelectedDates");
  EXPECT_EQ(why(), "No charges from 06/15/2003 to 06/15/2003. Choose All to see the others.");
  frmShorcuts().FuerzaNodeClick(0, 4);
  CurrentPatientId = 7;
  click(frmCharges(), "optSelectedPatients");
  type(line(frmCharges(), "TxtLotNumber"), "");
  click(frmCharges(), "optSelectedLot");
  EXPECT_EQ(why(),
            "No Ready charges from 06/15/2003 to 06/15/2003 for the selected patient in lot 0. "
            "Choose All to see the others.");
  CurrentDoctorCode = 0;
  click(frmCharges(), "optSelectedDoctors");
  EXPECT_EQ(why(), "No doctor is selected yet. Tab and Space choose one.");
}

TEST_F(ChargesViewTest, DeletesJustTheSelectedRowsAndKeepsARefusedOne) {
  // The third charge cannot be deleted.
  onStatement = [](std::string_view statement) {
    if (statement.find("DELETE") == 0 && statement.find("25001") != std::string_view::npos)
      throw RuntimeError(ErrorNumber::database, "kept");
  };
  clickRow(list(), 0);
  clickRow(list(), 2, Qt::ControlModifier);
  answer(false);
  trigger(window(), "Eliminar");
  EXPECT_EQ(takeQuestions(), Strings{"Are you sure you want to delete the selected Charges?"});
  EXPECT_EQ(selectedRows(list()), (std::vector<int>{0, 2})) << "Cancel changes nothing";
  answer(true);
  QTest::keyClick(&list(), Qt::Key_Delete);
  EXPECT_EQ(takeMessages(), Strings{"U:IMPELIENT"});
  EXPECT_EQ(names(), Strings(3, "Jones, Bob"));
  EXPECT_EQ(rows("SELECT DoctorCode FROM PatientCharges"), "2 3 3");
}

TEST_F(ChargesViewTest, AStatusThatTheEditorCannotShowIsKept) {
  script.in("frmEditCharge", [](QWidget& editor) {
    EXPECT_EQ(control<ComboBox>(editor, "CBStatus").ListIndex(), -1);
    click(editor, "btnOk");
  });
  doubleClickRow(list(), 3);
  EXPECT_EQ(rows("SELECT Status FROM PatientCharges WHERE DoctorCode=3"), "0 3");
}

// Three searches one behind the other are no search for the key: the row of another patient with
// that date and time is overwritten.
TEST_F(ChargesViewTest, MergingGoesOverARowThatHasTheSameDateAndTime) {
  run("INSERT INTO PatientCharges VALUES "
      "(25000, #06/03/2003#, #10:00:00#, #06/03/2003#, 1, 1, 4, 1, 0, NULL)");
  CurrentPatientId = 25000;
  CurrentChargeDate = day(2003, 6, 3);
  CurrentChargeTime = makeTime(10, 0, 0).value();
  frmCharges().Insertado();
  EXPECT_EQ(names(), (Strings{"Smith, Ann", "Jones, Bob", "Smith, Ann", "Jones, Bob"}));
  EXPECT_EQ(selectedRows(list()), std::vector<int>{2});
}

}  // namespace
}  // namespace bw
