#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "text/Value.h"

namespace bw {

// The tables of an office, described once. Whatever makes, checks, fills or tells of them reads it
// here. How an engine spells it: Dialect.h.

// How texts compare.
enum class Collation : std::uint8_t {
  letters,  // without regard to the case of ASCII letters
  codes,    // without regard to trailing blanks, so that a code of blanks counts as empty
};

struct SchemaColumn {
  std::string_view name;
  std::string_view about;  // what it means, for whoever fills or reads a file of the table
  FieldType type = FieldType::smallint;
  Collation collation = Collation::letters;
  bool optional = false;      // takes no value, too
  bool working = false;       // for client copies: 0 in every stored row
  std::string_view parent{};  // the table whose row it names by that table's key
  bool parentsPart = false;   // the row is deleted with that row
  bool zeroIsNone = false;    // 0 names no row of the parent; in a key: is no row's number

  bool mayNameNone() const noexcept { return zeroIsNone && !parent.empty(); }
  bool isNeverZero() const noexcept { return zeroIsNone && parent.empty(); }
};

// An index that was measured to pay.
struct SchemaIndex {
  std::string_view name;
  std::string_view columns;
  std::string_view condition{};  // of the rows that stand in it
};

struct SchemaTable {
  std::string_view name;
  std::string_view about;
  std::span<const SchemaColumn> columns;
  std::size_t keySize = 1;     // so many columns from the first on are its key
  std::string_view owner{};    // the table with whose key its own begins, and whose row it follows
  bool isCatalogue = false;    // a file may bring new contents for rows that stand
  bool isLookup = false;       // read by the program, never written; a new database has its rows
  bool hasRowNumbers = false;  // otherwise its rows stand in the order of the key, and come so
  std::span<const SchemaIndex> indexes{};
  std::string_view one{};    // its row in a refusal: "its ward does not exist"
  std::string_view users{};  // whose its rows are in a refusal: "patients still use it"
  std::string_view twice{};  // the refusal of a new row whose key is there already
  std::string_view moved{};  // the refusal of a row whose first column would make it such a one

  std::span<const SchemaColumn> key() const noexcept { return columns.first(keySize); }
};

// Each stands behind those that it refers to.
std::span<const SchemaTable> schemaTables() noexcept;

// A table by its exact name, which must be there.
const SchemaTable& schemaTable(std::string_view name) noexcept;

// Columns of a table that name a row of another by its key.
struct SchemaReference {
  std::span<const SchemaColumn> columns;
  const SchemaTable* parent;

  bool mayNameNone() const noexcept { return columns.front().mayNameNone(); }
};
std::vector<SchemaReference> referencesOf(const SchemaTable& table);

// "PatientId, ChargeDate"
std::string listOf(std::span<const SchemaColumn> columns);

// The name of the check that a column has.
std::string checkOf(const SchemaColumn& column);

}  // namespace bw
