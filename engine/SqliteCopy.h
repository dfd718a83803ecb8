#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bw {

// What a table holds: equal for equal rows in equal order.
struct TablePrint {
  std::string table;
  std::int64_t rows = 0;
  std::uint64_t sum = 0;

  bool operator==(const TablePrint&) const = default;
};

// Copies an embedded database as it stands at one moment into a file that is empty or not there;
// others may read and write it meanwhile. Returns what its tables held at that moment. The copy is
// on the disk when this returns. Raises DatabaseRefusal.
std::vector<TablePrint> copySqlite(const std::string& from, const std::string& to);

// What the tables of an embedded database hold at one moment. Raises DatabaseRefusal.
std::vector<TablePrint> printsOf(const std::string& path);

}  // namespace bw
