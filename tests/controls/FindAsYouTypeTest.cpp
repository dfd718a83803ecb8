#include "controls/FindAsYouType.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include "controls/ListView.h"
#include "lists/Lists.h"
#include "tests/records/Rows.h"

namespace bw {
namespace {

class FindAsYouTypeTest : public ::testing::Test {
 protected:
  explicit FindAsYouTypeTest(ListView::Options options = {.checkBoxes = true})
      : list({{"Names", "Names", 2880}, {"Town", "Town", 1440}, {"Hidden", "", 0}}, options,
             &window) {
    list.resize(400, 200);
    rows = RecordSetRef(
        std::make_shared<RecordSet>(makeStore({{"Names", FieldType::text},
                                               {"Town", FieldType::text},
                                               {"Hidden", FieldType::text},
                                               {"checked", FieldType::smallint}},
                                              {
                                                  row("Gale, Ann", "Ely", "xx", 0),     // 0
                                                  row("Garcia, Ann", "Hull", "xx", 0),  // 1
                                                  row("Hope, Gary", "Ely", "xx", 0),    // 2
                                                  row("García, Eva", "York", "xx", 0),  // 3
                                                  row("low back", "Gale", "xx", 0),     // 4
                                                  row("lower", nullptr, "xx", 0),       // 5
                                              }),
                                    LockType::optimistic));
    ListFill(list, rows);
    other.move(0, 220);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    list.setFocus();
  }

  bool open() const { return list.findChild<QLabel*>("findField")->isVisibleTo(&list); }
  QString field() const { return list.findChild<QLabel*>("findField")->text(); }
  // Of any alphabet, which the toolkit's own routine cannot type.
  void letters(const QString& text) {
    for (const QChar letter : text) {
      QKeyEvent event(QEvent::KeyPress, letter == ' ' ? Qt::Key_Space : 0, Qt::NoModifier,
                      QString(letter));
      QApplication::sendEvent(&list, &event);
    }
  }
  void press(Qt::Key key, Qt::KeyboardModifiers with = {}) { QTest::keyClick(&list, key, with); }
  // The row that is selected when so much was typed; the field is closed again.
  std::optional<int> rowFor(const QString& text, int from) {
    list.setSelected(from, true);
    letters(text);
    const auto selected = list.selectedItem();
    if (open()) press(Qt::Key_Escape);
    return selected;
  }

  QDialog window;
  QLineEdit other{&window};
  ListView list;
  RecordSetRef rows;
};

TEST_F(FindAsYouTypeTest, ABeginningGoesBeforeAWordAndThatBeforeAPartAndTheSelectedRowCounts) {
  const struct {
    const char* typed;
    int from;
    int row;
  } cases[] = {{"gar", 0, 1},       {"gar", 1, 1},  {"gar", 2, 3},  {"GARCIA", 2, 3},
               {"garcía, e", 0, 3}, {"gary", 0, 2}, {"gale", 1, 4}, {"gale", 5, 0},
               {"ull", 3, 1},       {"b", 0, 4},    {"low ", 5, 5}, {"low b", 5, 4},
               {"an", 2, 0}};
  for (const auto& [typed, from, row] : cases)
    EXPECT_EQ(rowFor(typed, from), row) << typed << " from " << from;
}

// The row that one letter less has found is not what was meant.
TEST_F(FindAsYouTypeTest, WhileNoRowHasTheTextNoneIsSelectedAndNoKeyDoesAnything) {
  int done = 0;
  list.onOpen = list.onInsertKey = list.onDeleteKey = [&] { ++done; };
  list.setSelected(2, true);
  letters("garx");
  EXPECT_EQ(field(), "Find: garx (no such row: Backspace or Esc)");
  EXPECT_EQ(list.selectedItem(), std::nullopt);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Insert, Qt::Key_Delete, Qt::Key_Down,
                            Qt::Key_End, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_F3, Qt::Key_Space})
    press(key);
  press(Qt::Key_Return, Qt::ControlModifier);
  press(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(done, 0);
  EXPECT_EQ(list.selectedItem(), std::nullopt);
  for (int row = 0; row < list.count(); ++row) EXPECT_FALSE(list.checked(row)) << row;
  EXPECT_EQ(QApplication::focusWidget(), &list);
  EXPECT_EQ(field(), "Find: garx  (no such row: Backspace or Esc)");
  press(Qt::Key_Backspace);
  press(Qt::Key_Backspace);
  EXPECT_EQ(list.selectedItem(), 3);
  letters("zz");
  press(Qt::Key_Escape);
  EXPECT_EQ(list.selectedItem(), 2) << "back to where the search began";
  letters("zz");
  other.setFocus();
  EXPECT_FALSE(open());
  EXPECT_EQ(list.selectedItem(), std::nullopt) << "a click on Ok takes nothing";
}

TEST_F(FindAsYouTypeTest, ABlankIsTextAndTicksWhenThereIsNone) {
  press(Qt::Key_Space);
  EXPECT_TRUE(list.checked(0));
  letters("low back");
  EXPECT_EQ(list.selectedItem(), 4);
  letters("  ");
  EXPECT_EQ(list.selectedItem(), 4) << "blanks at the end count for nothing";
  for (int row = 1; row < list.count(); ++row) EXPECT_FALSE(list.checked(row)) << row;
}

TEST_F(FindAsYouTypeTest, InsertAndEnterTickWhatWasFoundAndNeverTakeATickAway) {
  int opened = 0;
  list.onOpen = [&] { ++opened; };
  std::vector<int> ticked;
  list.onItemCheck = [&](int row, bool checked) { ticked.push_back(checked ? row : -1); };
  letters("lower");
  press(Qt::Key_Insert);
  EXPECT_FALSE(open());
  EXPECT_EQ(opened, 0);
  letters("lower");
  press(Qt::Key_Insert);
  letters("hope");
  press(Qt::Key_Return);
  letters("low ");
  press(Qt::Key_Return, Qt::ControlModifier);
  press(Qt::Key_Return);
  EXPECT_EQ(ticked, (std::vector<int>{5, 2, 4}));
  EXPECT_EQ(opened, 3) << "without a search Enter ticks nothing";
}

TEST_F(FindAsYouTypeTest, ADoubleClickTurnsTheTickOnceAlsoOnTheCheckBox) {
  int opened = 0;
  list.onOpen = [&] { ++opened; };
  const QRect row = list.visualRect(list.model()->index(1, 0));
  for (const int x : {row.left() + 8, row.center().x()})
    for (const bool ticked : {true, false}) {
      const QPoint at(x, row.center().y());
      QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
      QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
      EXPECT_EQ(list.checked(1), ticked) << x;
    }
  EXPECT_EQ(opened, 0);
}

TEST_F(FindAsYouTypeTest, AFieldIsGoneWithTheRowsThatItSearched) {
  letters("gar");
  ListFill(list, rows);
  EXPECT_FALSE(open());
  letters("gar");
  list.removeItem(0);
  EXPECT_FALSE(open());
  list.setText(0, "*Ken");
  EXPECT_EQ(rowFor("ken", 3), 0) << "a text set by hand is found in place of the stored one";
  EXPECT_EQ(rowFor("garcia, a", 3), std::nullopt);
  EXPECT_EQ(rowFor("garcia, e", 3), 2);
}

class FindInListOfSeveralTest : public FindAsYouTypeTest {
 protected:
  FindInListOfSeveralTest() : FindAsYouTypeTest({.selection = ListView::Selection::several}) {}
};

TEST_F(FindInListOfSeveralTest, JustTheRowFoundIsSelectedAndEscGoesBackToAll) {
  list.selectAll();
  letters("lower ");
  EXPECT_EQ(field(), "Find: lower ");
  EXPECT_EQ(list.selectedFromLast(), std::vector<int>{5});
  press(Qt::Key_Escape);
  EXPECT_EQ(list.selectedFromLast().size(), 6U);
  letters("l");
  press(Qt::Key_Backspace);
  EXPECT_FALSE(open());
  EXPECT_EQ(list.selectedFromLast().size(), 6U) << "no letter is left";
}

TEST_F(FindInListOfSeveralTest, EveryOtherKeyClosesTheFieldAndDoesWhatItAlwaysDoes) {
  int opened = 0, inserted = 0, chosen = 0;
  list.onOpen = [&] { ++opened; };
  list.onInsertKey = [&] { ++inserted; };
  list.onChosen = [&] { ++chosen; };
  for (const auto& [key, row] :
       {std::pair{Qt::Key_Down, 2}, {Qt::Key_Return, 1}, {Qt::Key_Insert, 1}, {Qt::Key_End, 5}}) {
    list.clearSelected();
    list.setSelected(0, true);
    letters("gar");
    EXPECT_TRUE(open());
    press(key);
    EXPECT_FALSE(open());
    EXPECT_EQ(list.selectedItem(), row);
  }
  EXPECT_EQ(opened, 1);
  EXPECT_EQ(inserted, 1);
  EXPECT_EQ(chosen, 6) << "four rows found by letters, two by keys";
}

}  // namespace
}  // namespace bw
