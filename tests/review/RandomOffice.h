#pragma once

#include <map>
#include <random>
#include <string>
#include <vector>

#include "records/RowStore.h"
#include "tests/data/DataFixture.h"

namespace bw {

// A row of a table by the names of its columns, as its default texts; "" for no value.
using TableRow = std::map<std::string, std::string, std::less<>>;

// Small offices of chance, in which everything that Review looks for happens often: what Review
// works out is compared with plain loops over their tables.
class RandomOfficeTest : public DataTest {
 protected:
  static constexpr unsigned kOffices = 25;

  static void clear();
  // An office in place of the one before.
  void makeOffice(unsigned seed);

  static std::vector<TableRow> table(const std::string& name);
  // The row of that key.
  static TableRow find(const std::vector<TableRow>& rows, const std::string& column,
                       const std::string& key);
  // Days and times of a default text; nothing for "".
  static std::optional<Date> dateOf(const std::string& text);

  // Rows as texts, their fields parted by "|".
  static Strings linesOf(const RowStore& rows, const Strings& fields);

 private:
  int any(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
  bool oneIn(int many) { return any(many) == 0; }
  template <class List>
  const char* oneOf(const List& list) {
    return list[static_cast<std::size_t>(any(static_cast<int>(std::size(list))))];
  }
  std::string anyDay(int from, int days);
  std::string codeOrNone(const char* prefix, int number);
  void fillCatalogues();
  void fillPatients();
  void fillCharges();

  std::mt19937 random_;
};

inline bool isBlank(const std::string& text) { return text.find_first_not_of(' ') == text.npos; }

}  // namespace bw
