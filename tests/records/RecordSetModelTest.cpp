#include <algorithm>
#include <functional>
#include <random>

#include "records/RecordSet.h"
#include "tests/records/Rows.h"
#include "text/Text.h"

namespace bw {
namespace {

// The record set's rules in their plainest form: rows of values, and a view that is made anew from
// all of them whenever something changes. Texts are ASCII here.
struct Model {
  void refresh() {
    view.clear();
    for (std::uint32_t i = 0; i < rows.size(); ++i)
      if (!rows[i].empty() && (!filter || filter(rows[i]))) view.push_back(i);
    std::stable_sort(view.begin(), view.end(), [&](std::uint32_t a, std::uint32_t b) {
      for (const auto& [column, descending] : sort) {
        const int order = compare(rows[a][column], rows[b][column]);
        if (order != 0) return descending ? order > 0 : order < 0;
      }
      return false;
    });
  }

  // The position from 1, 0 when the row is not in the view.
  std::ptrdiff_t positionOf(std::uint32_t index) const {
    const auto found = std::find(view.begin(), view.end(), index);
    return found == view.end() ? 0 : found - view.begin() + 1;
  }

  static int compare(const Value& a, const Value& b) {
    const Value x = lower(a);
    const Value y = lower(b);
    return x < y ? -1 : static_cast<int>(y < x);
  }
  static Value lower(Value value) {
    if (auto* text = std::get_if<std::string>(&value)) makeLower(*text);
    return value;
  }

  std::vector<Row> rows;  // deleted ones are empty
  std::vector<std::uint32_t> view;
  std::vector<std::pair<std::size_t, bool>> sort;  // columns, and whether they descend
  std::function<bool(const Row&)> filter;
};

const std::vector<Field> kFields{{"Code", FieldType::smallint}, {"Lot", FieldType::integer},
                                 {"Names", FieldType::text},    {"Born", FieldType::date},
                                 {"Time", FieldType::time},     {"Stamp", FieldType::dateTime}};

class RecordSetModelTest : public ::testing::TestWithParam<std::size_t> {
 protected:
  RecordSetModelTest() : set_(makeStore(kFields, fill()), LockType::optimistic) {}

  std::uint32_t upTo(std::uint32_t count) { return static_cast<std::uint32_t>(random_()) % count; }

  Value randomValue(std::size_t column) {
    const auto number = static_cast<std::int32_t>(upTo(73000));
    const auto whole = static_cast<std::int64_t>(random_());
    const char letter = upTo(2) == 0 ? 'a' : 'A';
    const Value values[] = {
        std::int64_t{number % 40} - 20,
        whole - 2147483648,
        std::string(1 + upTo(2), static_cast<char>(letter + number % 5)),
        Date{number % 60 + 37000},
        TimeOfDay{number % 24 * 3600},
        DateTime{Date{number}, TimeOfDay{7}}};  // two centuries: more seconds than 32 bits count
    return upTo(8) == 0 ? Value() : values[column];
  }
  Row randomRow() {
    Row values;
    for (std::size_t i = 0; i < kFields.size(); ++i) values.push_back(randomValue(i));
    return values;
  }
  const std::vector<Row>& fill() {
    while (model_.rows.size() < GetParam()) model_.rows.push_back(randomRow());
    model_.refresh();
    return model_.rows;
  }

  // Every other time a key goes in front of those that were there, as a click on a head puts it.
  void sortAtRandom() {
    std::string text;
    auto before = std::exchange(model_.sort, {});
    const bool inFront = upTo(2) == 0;
    for (std::uint32_t i = inFront ? 1 : upTo(4); i > 0; --i)
      model_.sort.emplace_back(upTo(6), upTo(2) == 0);
    for (const auto& key : before)
      if (inFront && key.first != model_.sort.front().first) model_.sort.push_back(key);
    for (const auto& [column, descending] : model_.sort)
      text += (text.empty() ? " " : " , ") + std::string(kFields[column].name) +
              (descending ? " DESC" : "");
    set_.setSort(text);
  }

  // A clause as text and as what it means.
  std::pair<std::string, std::function<bool(const Row&)>> randomClause() {
    static constexpr const char* kSigns[] = {"=", "<>", "<", "<=", ">", ">="};
    const std::size_t column = upTo(5);
    const std::uint32_t sign = upTo(6);
    Value operand = randomValue(column);
    while (isNull(operand)) operand = randomValue(column);
    std::string text = textOf(operand);
    if (column == 2) text = "'" + text + "'";
    if (column > 2) text = "#" + text + "#";
    const auto passes = [column, sign, operand](const Row& values) {
      if (isNull(values[column])) return false;
      const int order = Model::compare(values[column], operand);
      const bool results[] = {order == 0, order != 0, order<0, order <= 0, order> 0, order >= 0};
      return results[sign];
    };
    return {std::string(kFields[column].name) + kSigns[sign] + text, passes};
  }

  void filterAtRandom() {
    std::string text;
    model_.filter = nullptr;
    for (std::uint32_t i = upTo(4); i > 0; --i) {
      const auto [clause, passes] = randomClause();
      const bool either = model_.filter && upTo(2) == 0;
      text += (text.empty() ? "" : either ? " OR " : " and ") + clause;
      model_.filter = [before = model_.filter, passes = passes, either](const Row& values) {
        const bool first = !before || before(values);
        return either ? first || passes(values) : first && passes(values);
      };
    }
    set_.setFilter(text);
  }

  std::ptrdiff_t position() const { return std::max<std::ptrdiff_t>(set_.AbsolutePosition(), 0); }

  void addRow() {
    const Row values = randomRow();
    set_.AddNew();
    for (std::size_t i = 0; i < values.size(); ++i) set_.set(i, values[i]);
    set_.Update();
    model_.rows.push_back(values);
    model_.refresh();
    ASSERT_EQ(position(), model_.positionOf(static_cast<std::uint32_t>(model_.rows.size() - 1)));
  }

  void changeCurrent(std::uint32_t index) {
    const std::size_t column = upTo(5);
    const std::ptrdiff_t before = position();
    model_.rows[index][column] = randomValue(column);
    set_.set(column, model_.rows[index][column]);
    ASSERT_EQ(set_.AbsolutePosition(), before) << "before the update";
    set_.Update();
    model_.refresh();
    for (std::size_t i = 0; i < kFields.size(); ++i)
      ASSERT_EQ(set_.value(i), model_.rows[index][i]);
    ASSERT_EQ(position(), model_.positionOf(index));
  }

  void deleteCurrent(std::uint32_t index) {
    set_.Delete();
    model_.rows[index].clear();
    model_.refresh();
  }

  // Of a row that is deleted or passes no longer the next is the one that followed.
  void changeOrDelete(bool deletes) {
    const std::uint32_t at = upTo(static_cast<std::uint32_t>(set_.RecordCount()));
    const std::vector<std::uint32_t> before = model_.view;
    set_.setAbsolutePosition(at + 1);
    deletes ? deleteCurrent(before[at]) : changeCurrent(before[at]);
    if (set_.AbsolutePosition() > 0) return;
    set_.MoveNext();
    ASSERT_EQ(position(), at + 1 < before.size() ? model_.positionOf(before[at + 1]) : 0);
  }

  std::mt19937 random_{20030615};
  Model model_;
  RecordSet set_;
};

TEST_P(RecordSetModelTest, RowsAndPositionsAgreeAfterEveryChange) {
  const int rounds = GetParam() > 1000 ? 30 : 2000;
  for (int round = 0; round < rounds && !HasFatalFailure(); ++round) {
    SCOPED_TRACE(round);
    const std::uint32_t action = upTo(10);
    if (action == 0) filterAtRandom();
    if (action == 1) sortAtRandom();
    if (action == 2) addRow();
    if (action > 2 && set_.RecordCount() > 0) changeOrDelete(action == 3);
    if (action < 2) model_.refresh();
    ASSERT_EQ(set_.view(), model_.view);
  }
}

// The second size crosses two packed blocks.
INSTANTIATE_TEST_SUITE_P(Sizes, RecordSetModelTest, ::testing::Values(40, 33500));

}  // namespace
}  // namespace bw
