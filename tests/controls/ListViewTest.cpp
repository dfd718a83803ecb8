#include "controls/ListView.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>

#include "lists/Lists.h"
#include "tests/records/Rows.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

// Names, a second column without values, and the working column.
RecordSetRef rowsOf(const std::vector<const char*>& names, int checked = 0) {
  std::vector<Row> rows;
  for (const char* name : names) rows.push_back(row(name, nullptr, checked));
  return RecordSetRef(std::make_shared<RecordSet>(
      makeStore(
          {{"Names", FieldType::text}, {"Note", FieldType::text}, {"checked", FieldType::smallint}},
          rows),
      LockType::optimistic));
}

std::vector<std::string> texts(const ListView& list) {
  std::vector<std::string> shown;
  for (int row = 0; row < list.count(); ++row) shown.push_back(list.text(row));
  return shown;
}

using Texts = std::vector<std::string>;
const std::vector<ListColumn> kColumns{
    {"Names", "Names", 2880}, {"Note", "Note", 1440}, {"", "", 1000}};

TEST(ListViewTest, FillingSelectsTheFirstRowAndFiresNothing) {
  ListView list(kColumns, {.checkBoxes = true});
  int events = 0;
  list.onChosen = list.onOpen = [&] { ++events; };
  list.onItemCheck = [&](int, bool) { ++events; };
  const RecordSetRef rows = rowsOf({"a", "b"}, 1);
  ListFill(list, rows);
  EXPECT_TRUE(rows->EOF_());
  EXPECT_EQ(list.selectedItem(), 0);
  EXPECT_TRUE(list.checked(1));
  list.setSelected(1, true);
  list.setText(0, "star");
  EXPECT_EQ(list.selectedFromLast(), std::vector<int>{1}) << "one at a time";
  ListFill(list, rowsOf({}));
  EXPECT_EQ(list.selectedItem(), std::nullopt);
  EXPECT_EQ(events, 0);
}

TEST(ListViewTest, AMissingFieldOrAFirstColumnWithoutValueIsAnErrorAndKeepsTheList) {
  ListView list(kColumns, {});
  ListFill(list, rowsOf({"a"}));
  ListView misspelt({{"Nmaes", "Names", 100}}, {});
  EXPECT_THROW(ListFill(misspelt, rowsOf({"a"})), RuntimeError);
  const RecordSetRef rows = rowsOf({"b", "c"});
  rows->MoveFirst();
  rows->set("Names", Value());
  rows->Update();
  EXPECT_THROW(ListFill(list, rows), RuntimeError);
  EXPECT_EQ(texts(list), Texts{"a"});
  EXPECT_TRUE(list.updatesEnabled());
}

TEST(ListViewTest, RowsKeepTheirPositionsWhenOneIsTakenOut) {
  ListView list(kColumns, {});
  ListFill(list, rowsOf({"a", "b", "c"}));
  list.removeItem(0);
  EXPECT_EQ(list.position(0), 2);
  EXPECT_EQ(list.rowAt(3), 1);
  EXPECT_THROW(list.rowAt(1), RuntimeError);
  EXPECT_EQ(list.selectedItem(), std::nullopt) << "a neighbour has the focus, not the selection";
}

// Positions are set one after another; that does not give back every order.
TEST(ListViewTest, StoredPositionsMoveTheOtherColumnsAlong) {
  ListView list({{"a", "a"}, {"b", "b"}, {"c", "c"}, {"d", "d"}}, {});
  for (const auto& [column, position] : {std::pair{0, 3}, {1, 4}, {2, 2}, {3, 1}})
    list.setPosition(column, position);
  EXPECT_EQ(
      (std::vector<int>{list.Position(0), list.Position(1), list.Position(2), list.Position(3)}),
      (std::vector<int>{2, 4, 3, 1}));
  EXPECT_THROW(list.setPosition(0, 5), RuntimeError);
}

TEST(ListViewTest, AWidthMeansTheSameAtEveryFont) {
  const QFont standard = QApplication::font();
  ListView list({{"a", "a", 1500}}, {});
  list.show();
  EXPECT_EQ(list.horizontalHeader()->sectionSize(0), 100);
  QFont large = standard;
  large.setPointSizeF(2 * standard.pointSizeF());
  QApplication::setFont(large);
  QApplication::processEvents();
  EXPECT_EQ(list.horizontalHeader()->sectionSize(0), 200);
  EXPECT_EQ(list.Width(0), 1500.0F);
  list.horizontalHeader()->resizeSection(0, 150);
  EXPECT_EQ(list.Width(0), 1125.0F);
  QApplication::setFont(standard);
  QApplication::processEvents();
  EXPECT_EQ(list.horizontalHeader()->sectionSize(0), 75);
}

}  // namespace
}  // namespace bw
