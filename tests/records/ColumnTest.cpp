#include "records/Column.h"

#include <limits>
#include <random>

#include "tests/records/Rows.h"

namespace bw {
namespace {

constexpr std::size_t kBlock = 16384;

// More rows than two blocks hold, so that some are packed and some are not.
constexpr std::size_t kRows = 2 * kBlock + 1000;

struct Kind {
  FieldType type;
  Value (*of)(std::int64_t random);  // of 32 bits
  Value further;                     // lies outside the range of all others
};

DateTime momentOf(std::int64_t day, std::int64_t second) {
  return {Date{static_cast<std::int32_t>(day)}, TimeOfDay{static_cast<std::int32_t>(second)}};
}

constexpr std::int64_t kEnds[] = {-2147483648, 2147483647, 0, -1};

// clang-format off
const Kind kKinds[] = {
    {FieldType::smallint, [](std::int64_t random) { return Value(random % 65535 - 32768); }, std::int64_t{32767}},
    {FieldType::integer, [](std::int64_t random) { return Value(random % 8 < 4 ? kEnds[random % 4] : random - 2147483648); },
     std::int64_t{2147483646}},
    {FieldType::date, [](std::int64_t random) { return Value(momentOf(random % 80000 - 20000, 0).date); }, *makeDate(9999, 12, 31)},
    {FieldType::dateTime, [](std::int64_t random) { return Value(momentOf(random % 3 - 1, random % 86400)); },
     DateTime{*makeDate(100, 1, 1), TimeOfDay{86399}}},
    {FieldType::text, [](std::int64_t random) { return Value("text " + std::to_string(random % 300)); }, "a new one"},
};
// clang-format on

class ColumnTest : public ::testing::Test {
 protected:
  void fill(const Kind& kind) {
    std::mt19937 random(20030615);
    column = Column("c", kind.type);
    values.clear();
    for (std::size_t i = 0; i < kRows; ++i) {
      values.push_back(random() % 10 == 0 ? Value() : kind.of(static_cast<std::int64_t>(random())));
      appendTo(column, values.back());
    }
    column.finish();
  }
  void expectAll() {
    ASSERT_EQ(column.size(), kRows);
    for (std::size_t i = 0; i < kRows; ++i) ASSERT_EQ(column.value(i), values[i]) << "row " << i;
  }

  Column column{"c", FieldType::untyped};
  std::vector<Value> values;
};

TEST_F(ColumnTest, RowsComeBackAndAWriteIntoAPackedBlockChangesThatRowAlone) {
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(&kind - kKinds);
    fill(kind);
    expectAll();
    for (const std::size_t index :
         {std::size_t{0}, kBlock - 1, kBlock, 2 * kBlock - 1, 2 * kBlock, kRows - 1})
      // What the block can hold as it is, and what makes it wider.
      for (const Value& value : {kind.of(4711), Value(), kind.further}) {
        SCOPED_TRACE(index);
        column.set(index, value);
        values[index] = value;
        expectAll();
      }
  }
}

TEST(ColumnTypesTest, WidthsAreChosenByTheRangeOfABlock) {
  constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min() + 1;
  const auto power = [](unsigned of) { return static_cast<std::int64_t>(std::uint64_t{1} << of); };
  // The highest from the lowest on, and the bits of a value.
  // clang-format off
  const std::pair<std::int64_t, std::size_t> cases[] = {
      {0, 1}, {1, 2}, {2, 2}, {3, 3}, {254, 8}, {255, 9}, {65534, 16}, {power(32) - 2, 32},
      {power(33), 34}, {power(57) - 2, 57}, {power(57) - 1, 64}, {power(62), 64}};
  // clang-format on
  for (const auto& [highest, bits] : cases) {
    SCOPED_TRACE(highest);
    Column column("c", FieldType::integer);
    for (std::size_t i = 0; i < kBlock; ++i)
      column.appendInteger(kLowest + (i % 2 == 0 ? 0 : highest));
    column.finish();
    EXPECT_LE(column.bytes(), kBlock * bits / 8 + 200);
    EXPECT_FALSE(column.mayHoldNull());
    column.set(1, Value());
    EXPECT_TRUE(column.mayHoldNull());
    for (std::size_t i = 0; i < kBlock; ++i)
      ASSERT_EQ(column.raw(i), i == 1 ? Column::kNull : kLowest + (i % 2 == 0 ? 0 : highest)) << i;
  }
}

TEST(ColumnTypesTest, WhatADateColumnCannotHoldIsNoValue) {
  Column column("c", FieldType::date);
  for (const char* text : {"2003-06-15", "06/15/2003", "2003-02-30", "20030615", ""})
    column.appendText(text);
  column.appendInteger(20030615);
  EXPECT_EQ(column.value(0), Value(*makeDate(2003, 6, 15)));
  for (std::size_t i = 1; i < column.size(); ++i) EXPECT_TRUE(column.isNull(i)) << i;
}

TEST(ColumnTypesTest, NumbersOfAnExpressionBecomeTextsWhenATextComes) {
  Column column("c", FieldType::untyped);
  column.appendNull();
  for (std::size_t i = 0; i < kBlock + 1; ++i) column.appendInteger(-7);
  EXPECT_EQ(column.type(), FieldType::integer);
  column.appendText("x");
  EXPECT_EQ(column.type(), FieldType::text);
  EXPECT_TRUE(column.isNull(0));
  EXPECT_EQ(column.value(kBlock), Value("-7"));
  EXPECT_EQ(column.value(column.size() - 1), Value("x"));
  column.appendInteger(8);
  EXPECT_EQ(column.value(column.size() - 1), Value("8"));
}

}  // namespace
}  // namespace bw
