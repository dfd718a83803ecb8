#include "controls/ComboBox.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

#include "controls/Dialog.h"
#include "controls/Hint.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

struct Window : Dialog {
  Window() : Dialog("Window", "Window", nullptr), box(this), behind(this) {
    auto* column = new QVBoxLayout(this);
    column->addWidget(&box);
    column->addWidget(&behind);
    column->addWidget(makeFoot(
        {}, [this] { ++oks; }, [this] { unload(); }));
  }
  QPushButton* ok() const { return okButton(); }
  ComboBox box;
  ComboBox behind;
  int oks = 0;
};

void press(Qt::Key key, Qt::KeyboardModifiers with = {}) {
  QTest::keyClick(QApplication::focusWidget(), key, with);
}

class ComboBoxTest : public ::testing::Test {
 protected:
  ComboBoxTest() {
    box.setItems({"Adler, Ann", "O\u2019Brien, Kay", "Smith", "Smith, Bob", "Smith, Carl-Otto",
                  "Smithers, Bob", "St. Joseph I", "St. Joseph V", "Stein, \u00cd\u00f1igo",
                  "Zorn, Al", "Adler, Ann (Covering Zorn, Al)", "Oakhill", "Oakhill"},
                 [](int index) { return QString("code %1").arg(index); });
    box.setListIndex(0);
    box.onSelected = [this] { ++selections; };
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    box.setFocus();
  }

  // Of any alphabet, to the open list or to the closed box.
  void letters(const QString& text) {
    QWidget* target = box.view()->isVisible() ? static_cast<QWidget*>(box.view()) : &box;
    for (const QChar letter : text) {
      QKeyEvent event(QEvent::KeyPress, letter == ' ' ? Qt::Key_Space : 0, Qt::NoModifier,
                      QString(letter));
      QApplication::sendEvent(target, &event);
    }
  }
  QString hint() const {
    for (const Hint* hint : window.findChildren<Hint*>())
      if (hint->isVisibleTo(&window)) return hint->text();
    return {};
  }

  Window window;
  ComboBox& box = window.box;
  int selections = 0;
};

// The handlers reposition record sets; a search that failed left one at its end.
TEST_F(ComboBoxTest, AssigningFiresAlsoTheSameIndexAndOneOutsideTheListIsAnError) {
  for (const int index : {1, 1, -1, 2}) box.setListIndex(index);
  EXPECT_EQ(selections, 4);
  for (const int index : {-2, 13, 14}) EXPECT_THROW(box.setListIndex(index), RuntimeError) << index;
  EXPECT_EQ(box.ListIndex(), 2);
  EXPECT_EQ(selections, 4);
}

TEST_F(ComboBoxTest, WhatIsTypedIsFoundWithBlanksFromTheChosenItemOn) {
  const struct {
    const char* typed;
    int from;
    int chosen;
    int changes;
  } cases[] = {{"smith, c", 0, 4, 3},      {"smith", 4, 4, 0},        {"smith, b ", 4, 3, 1},
               {"SMITHERS", 0, 5, 2},      {"st. joseph v", 0, 7, 3}, {"o'brien", 0, 1, 1},
               {"stein, inigo", 0, 8, 3},  {"carl-o", 0, 4, 2},       {"bob", 4, 5, 2},
               {"adler, ann (", 0, 10, 1}, {"covering", 0, 10, 2},    {"hill", 0, 11, 2}};
  for (const auto& [typed, from, chosen, changes] : cases) {
    SCOPED_TRACE(typed);
    box.setListIndex(from);
    selections = 0;
    letters(typed);
    EXPECT_EQ(box.ListIndex(), chosen);
    EXPECT_LE(selections, changes) << "the handlers run on changes alone";
    EXPECT_EQ(selections == 0, chosen == from);
    EXPECT_TRUE(hint().startsWith(QString("Find: ") + typed)) << hint().toStdString();
    EXPECT_TRUE(box.settle());
    EXPECT_EQ(hint(), "");
  }
}

TEST_F(ComboBoxTest, OneOfSeveralWithItsNameIsToldByItsMark) {
  letters("oakh");
  EXPECT_EQ(box.ListIndex(), 11);
  EXPECT_EQ(hint(), "Find: oakh (code 11; F3 goes on)");
  press(Qt::Key_F3);
  EXPECT_EQ(box.ListIndex(), 12);
  EXPECT_EQ(hint(), "Find: oakh (code 12; F3 goes on)");
  EXPECT_EQ(box.mark(0), "") << "a name of its own needs none";
}

TEST_F(ComboBoxTest, ATextWithoutItemKeepsTheChoiceAndIsStoppedOnce) {
  const struct {
    const char* name;
    std::function<void()> go;
    int oks;     // when it is not held back
    bool stays;  // in the box
  } ways[] = {
      {"Enter", [] { press(Qt::Key_Return); }, 1, true},
      {"Ctrl+Enter", [] { press(Qt::Key_Return, Qt::ControlModifier); }, 1, true},
      {"Tab", [] { press(Qt::Key_Tab); }, 0, false},
      {"Ok",
       [this] {
         window.ok()->setFocus(Qt::MouseFocusReason);
         QTest::mouseClick(window.ok(), Qt::LeftButton);
       },
       1, false},
  };
  for (const auto& [name, go, oks, stays] : ways) {
    SCOPED_TRACE(name);
    window.oks = 0;
    box.setListIndex(0);
    box.setFocus();
    letters("smith, bx");
    EXPECT_EQ(box.ListIndex(), 3);
    EXPECT_EQ(hint(), "Find: smith, bx (no such entry; chosen is Smith, Bob)");
    go();
    EXPECT_EQ(window.oks, 0);
    EXPECT_EQ(QApplication::focusWidget(), &box);
    EXPECT_TRUE(hint().endsWith("Once more, and that is taken."));
    go();
    EXPECT_EQ(window.oks, oks);
    EXPECT_EQ(hint(), "");
    EXPECT_EQ(box.ListIndex(), 3);
    EXPECT_EQ(QApplication::focusWidget() == &box, stays);
  }
  box.setFocus();
  letters("nobody");
  press(Qt::Key_Return);
  letters("smith, bo");
  EXPECT_EQ(hint(), "Find: smith, bo") << "in place of what is not there";
}

class LongComboBoxTest : public ComboBoxTest {
 protected:
  LongComboBoxTest() {
    QStringList items;
    for (int i = 0; i < 215; ++i) items << QString("Doctor %1").arg(i);
    box.setItems(items);
    box.setListIndex(7);
    selections = 0;
    box.showPopup();
  }
  int marked() const { return box.view()->currentIndex().row(); }
  void press(Qt::Key key) { QTest::keyClick(box.view(), key); }
  // The found row is seen whole.
  void expectInSight() {
    const QRect row = box.view()->visualRect(box.view()->currentIndex());
    EXPECT_TRUE(box.view()->viewport()->rect().contains(row)) << marked();
    const auto* over = box.view()->findChild<Hint*>();
    ASSERT_TRUE(over->isVisible());
    EXPECT_FALSE(over->geometry().intersects(row.translated(box.view()->viewport()->pos())))
        << marked();
  }
};

TEST_F(LongComboBoxTest, TheOpenListHasTwentyRowsAndAScrollBar) {
  const int height = box.view()->visualRect(box.view()->currentIndex()).height();
  EXPECT_EQ(box.view()->viewport()->height() / height, 20);
  EXPECT_TRUE(box.view()->verticalScrollBar()->isVisible());
}

TEST_F(LongComboBoxTest, LettersMarkAndEnterTakesWhatIsMarked) {
  for (const char* number : {"214", "213", "9", "20", "113", "0", "10"}) {
    letters(QString("doctor ") + number);
    EXPECT_EQ(marked(), QString(number).toInt());
    EXPECT_EQ(box.ListIndex(), 7);
    expectInSight();
    press(Qt::Key_Escape);
    EXPECT_EQ(marked(), 7);
  }
  EXPECT_TRUE(box.view()->isVisible()) << "Esc ends the search, and then closes the list";
  letters("doctor 9");
  press(Qt::Key_Return);
  EXPECT_EQ(box.ListIndex(), 9);
  EXPECT_EQ(selections, 1);
  EXPECT_FALSE(box.view()->isVisible());
}

TEST_F(LongComboBoxTest, ATextWithoutItemIsStoppedOnceInTheOpenListToo) {
  letters("doctor 12x");
  press(Qt::Key_Return);
  EXPECT_TRUE(box.view()->isVisible());
  EXPECT_EQ(selections, 0);
  press(Qt::Key_Escape);
  press(Qt::Key_Escape);
  EXPECT_FALSE(box.view()->isVisible());
  EXPECT_TRUE(box.settle());
  box.showPopup();
  letters("doctor 12x");
  box.hidePopup();
  EXPECT_FALSE(box.settle()) << "closed by a click elsewhere";
  EXPECT_EQ(box.ListIndex(), 7);
}

}  // namespace
}  // namespace bw
