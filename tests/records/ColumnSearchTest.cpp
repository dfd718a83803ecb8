#include "records/ColumnSearch.h"

#include "tests/records/Rows.h"

namespace bw {
namespace {

std::string hits(const RowStore& store, std::size_t column, std::string_view wanted) {
  std::vector<std::uint32_t> rows;
  for (std::uint32_t i = 0; i < store.rowCount(); ++i) rows.push_back(i);
  ColumnSearch search(store.columns[column], rows);
  const Hit best = search.search(searchText(wanted));
  std::string found;
  Hit bestOfRows = Hit::none;
  for (const std::uint32_t row : rows) {
    bestOfRows = std::max(bestOfRows, search.hit(row));
    found += std::string("-iws")[static_cast<std::size_t>(search.hit(row))];
  }
  EXPECT_EQ(best, bestOfRows);
  return found;
}

TEST(ColumnSearchTest, EveryKindOfValueIsFoundByWhatItShows) {
  // clang-format off
  const auto store = makeStore(
      {{"text", FieldType::text}, {"day", FieldType::date}, {"time", FieldType::time},
       {"moment", FieldType::dateTime}, {"near", FieldType::smallint}, {"far", FieldType::integer}},
      {row("Nuñez, Ana", "2003-06-15", "14:05:09", "2003-06-15 14:05:09", -3, 7),
       row("Ana Núñez", "2003-11-06", "00:00:00", "1999-01-01 00:00:00", 12, -2000000000),
       row(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
       row("STRASSE", "1960-06-15", "14:05:09", "2003-06-15 14:05:09", 3, 1999999999)});
  // clang-format on
  // A column, what is wanted, and how each row is hit.
  // clang-format off
  const std::tuple<std::size_t, const char*, const char*> cases[] = {
      {0, "NUNEZ", "sw--"}, {0, "núñ", "sw--"}, {0, "straße", "---s"}, {0, "anaana", "----"},
      {0, "a", "ws-i"}, {1, "6/15", "s--s"}, {1, "6", "sw-s"}, {2, "2:05:09 p", "s--s"},
      {2, "12:00", "-s--"}, {3, "1/1/1999", "-s--"}, {3, "2003 2:0", "w--w"}, {4, "3", "w--s"},
      {4, "-", "s---"}, {5, "-2000000000", "-s--"}, {5, "99", "---i"}, {5, "8", "----"}};
  // clang-format on
  for (const auto& [column, wanted, rows] : cases)
    EXPECT_EQ(hits(*store, column, wanted), rows) << wanted << " in column " << column;
}

// Each is searched as it can be typed; a word may begin behind a part that begins none.
TEST(TextSearchTest, WordsGoBeforePartsAndSignsOfPrintAreThoseOfTheKeyboard) {
  TextSearch all;
  // clang-format off
  const std::vector<std::tuple<const char*, const char*, Hit>> cases{
      {"Deacon Adea, Dean", "dea", Hit::atStart}, {"Adea Dean", "dea", Hit::atWord},
      {"X-ray, knee", "ray", Hit::atWord}, {"Bell (Covering Ames)", "covering a", Hit::atWord},
      {"Élan", "lan", Hit::inside}, {"Nuñez Ñandú", "nand", Hit::atWord},
      {"St. Joseph’s – West", "st. joseph's - w", Hit::atStart}, {"Knee pain", "knee pain", Hit::atStart},
      {"écho", "echo", Hit::atStart}, {"Knee", "knee x", Hit::none}, {"a", "b", Hit::none}};
  // clang-format on
  for (const auto& [text, wanted, hit] : cases) all.add(text);
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const auto& [text, typed, hit] = cases[i];
    const std::string wanted = searchText(typed);
    EXPECT_EQ(hitOf(text, wanted), hit) << text;
    all.search(wanted);
    EXPECT_EQ(all.hit(i), hit) << text << " among others";
  }
}

TEST(ColumnSearchTest, ValuesThatComeLaterAreNotFoundAndDoNoHarm) {
  const auto store = makeStore({{"text", FieldType::text}, {"number", FieldType::integer}},
                               {row("a", 5), row("b", 6)});
  ColumnSearch texts(store->columns[0], {0, 1});
  ColumnSearch numbers(store->columns[1], {0, 1});
  texts.search("a");
  numbers.search("5");
  for (const std::int64_t number : {-9, 4, 7, 2000000000}) {
    store->columns[0].set(0, Value("a later one " + std::to_string(number)));
    store->columns[1].set(0, Value(number));
    EXPECT_EQ(texts.hit(0), Hit::none);
    EXPECT_EQ(numbers.hit(0), Hit::none);
  }
}

}  // namespace
}  // namespace bw
