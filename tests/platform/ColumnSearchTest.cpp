#include "platform/ColumnSearch.h"

#include <gtest/gtest.h>

#include "tests/platform/Rows.h"

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
    found += std::string("-is")[static_cast<std::size_t>(search.hit(row))];
  }
  EXPECT_EQ(best, bestOfRows);
  return found;
}

TEST(ColumnSearchTest, EveryKindOfValueIsFoundByWhatItShows) {
  const auto store =
      makeStore({{"text", FieldType::text},
                 {"day", FieldType::date},
                 {"time", FieldType::time},
                 {"moment", FieldType::dateTime},
                 {"near", FieldType::smallint},
                 {"far", FieldType::integer}},
                {
                    row("Nuñez, Ana", Value(*makeDate(2003, 6, 15)), Value(TimeOfDay{50709}),
                        "2003-06-15 14:05:09", -3, 7),
                    row("Ana Núñez", Value(*makeDate(2003, 11, 6)), Value(TimeOfDay{0}),
                        "1999-01-01 00:00:00", 12, -2000000000),
                    row(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
                    row("STRASSE", Value(*makeDate(1960, 6, 15)), Value(TimeOfDay{50709}),
                        "2003-06-15 14:05:09", 3, 1999999999),
                });
  struct Case {
    std::size_t column;
    const char* wanted;
    const char* rows;
  };
  for (const Case& test : {Case{0, "NUNEZ", "si--"},
                           {0, "núñ", "si--"},
                           {0, "straße", "---s"},
                           {0, "anaana", "----"},
                           {0, "a", "is-i"},
                           {1, "6/15", "s--s"},
                           {1, "6", "si-s"},
                           {2, "2:05:09 p", "s--s"},
                           {2, "12:00", "-s--"},
                           {3, "1/1/1999", "-s--"},
                           {3, "2003 2:0", "i--i"},
                           {4, "3", "i--s"},
                           {4, "-", "s---"},
                           {5, "-2000000000", "-s--"},
                           {5, "99", "---i"},
                           {5, "8", "----"}})
    EXPECT_EQ(hits(*store, test.column, test.wanted), test.rows)
        << test.wanted << " in column " << test.column;
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
