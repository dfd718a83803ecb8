#include "controls/ComboBox.h"

#include <gtest/gtest.h>

#include <QTest>

#include "platform/RuntimeError.h"

namespace bw {
namespace {

struct Counted : ::testing::Test {
  Counted() {
    box.onSelected = [this] { ++selections; };
  }
  ComboBox box;
  int selections = 0;
};

using ComboBoxTest = Counted;

TEST_F(ComboBoxTest, FillingSelectsNothingAndFiresNothing) {
  box.setItems({"Alpha", "Beta"});
  EXPECT_EQ(box.ListIndex(), -1);
  box.setListIndex(1);
  box.Clear();
  EXPECT_EQ(box.ListIndex(), -1);
  EXPECT_EQ(selections, 1);
}

// The handlers reposition record sets; a search that failed left one at its end.
TEST_F(ComboBoxTest, AssigningTheSameIndexFiresAgain) {
  box.setItems({"Alpha", "Beta"});
  box.setListIndex(0);
  box.setListIndex(0);
  box.setListIndex(-1);
  EXPECT_EQ(selections, 3);
}

TEST_F(ComboBoxTest, AnIndexOutsideTheListIsAnErrorAndChangesNothing) {
  box.setItems({"Alpha", "Beta"});
  box.setListIndex(1);
  for (const int index : {-2, 2, 3}) EXPECT_THROW(box.setListIndex(index), RuntimeError) << index;
  EXPECT_EQ(box.ListIndex(), 1);
  EXPECT_EQ(selections, 1);
}

TEST_F(ComboBoxTest, KeysOfTheUserFire) {
  box.setItems({"Alpha", "Beta", "Gamma"});
  box.setListIndex(0);
  QTest::keyClick(&box, Qt::Key_Down);
  QTest::keyClicks(&box, "g");
  EXPECT_EQ(box.ListIndex(), 2);
  EXPECT_EQ(selections, 3);
}

}  // namespace
}  // namespace bw
