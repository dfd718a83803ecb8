#include "controls/FindAsYouType.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QTest>

#include "controls/ListView.h"
#include "lists/Lists.h"
#include "tests/platform/Rows.h"

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
    window.show();
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
  ListView list;
  RecordSetRef rows;
};

TEST_F(FindAsYouTypeTest, ABeginningGoesBeforeAPartAndTheSelectedRowCounts) {
  struct Case {
    const char* typed;
    int from;
    int row;
  };
  for (const Case& test : {Case{"gar", 0, 1},
                           {"gar", 1, 1},
                           {"gar", 2, 3},
                           {"GARCIA", 2, 3},
                           {"garcía, e", 0, 3},
                           {"gary", 0, 2},
                           {"gale", 1, 4},
                           {"gale", 5, 0},
                           {"ull", 3, 1},
                           {"zz", 2, 2},
                           {"xx", 2, 2},
                           {"low ", 5, 4}})
    EXPECT_EQ(rowFor(test.typed, test.from), test.row) << test.typed << " from " << test.from;
}

TEST_F(FindAsYouTypeTest, TheFieldShowsEditsAndClosesWithoutClosingTheDialog) {
  letters("garx");
  EXPECT_TRUE(open());
  EXPECT_EQ(field(), "Find: garx (no such row)");
  EXPECT_EQ(list.selectedItem(), 1) << "what was found last stays";
  press(Qt::Key_Backspace);
  EXPECT_EQ(field(), "Find: gar");
  press(Qt::Key_F3);
  EXPECT_EQ(list.selectedItem(), 3);
  press(Qt::Key_F3);
  EXPECT_EQ(list.selectedItem(), 1);
  for (int i = 0; i < 3; ++i) press(Qt::Key_Backspace);
  EXPECT_FALSE(open());
  letters("g");
  press(Qt::Key_Escape);
  EXPECT_FALSE(open());
  EXPECT_TRUE(window.isVisible());
  press(Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
}

TEST_F(FindAsYouTypeTest, EveryOtherKeyClosesTheFieldAndDoesWhatItAlwaysDoes) {
  int opened = 0, inserted = 0, chosen = 0;
  list.onOpen = [&] { ++opened; };
  list.onInsertKey = [&] { ++inserted; };
  list.onChosen = [&] { ++chosen; };
  for (const auto& [key, row] :
       {std::pair{Qt::Key_Down, 2}, {Qt::Key_Return, 1}, {Qt::Key_Insert, 1}, {Qt::Key_End, 5}}) {
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

TEST_F(FindAsYouTypeTest, ABlankTicksUnlessItGoesOnWithATextOfTheList) {
  press(Qt::Key_Space);
  EXPECT_TRUE(list.checked(0));
  letters("low back");
  EXPECT_EQ(field(), "Find: low back");
  press(Qt::Key_Space);
  EXPECT_TRUE(list.checked(4));
  EXPECT_FALSE(open());
  letters("lower ");
  EXPECT_TRUE(list.checked(5));
  EXPECT_FALSE(list.checked(1));
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
  EXPECT_EQ(rowFor("garcia, a", 3), 2);
}

class FindInListOfSeveralTest : public FindAsYouTypeTest {
 protected:
  FindInListOfSeveralTest() : FindAsYouTypeTest({.selection = ListView::Selection::several}) {}
};

TEST_F(FindInListOfSeveralTest, JustTheRowFoundIsSelectedAndABlankIsText) {
  list.selectAll();
  letters("lower ");
  EXPECT_EQ(field(), "Find: lower  (no such row)");
  EXPECT_EQ(list.selectedFromLast(), std::vector<int>{5});
}

}  // namespace
}  // namespace bw
