#pragma once

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "data/Tables.h"
#include "engine/Engine.h"
#include "tools/Commands.h"
#include "tools/TableFile.h"

namespace bw {

// What was refused, told line by line. Raises TooManyRefusals when going on would only hide the
// first reasons.
struct TooManyRefusals {
  int count;
};

class Refusals {
 public:
  explicit Refusals(std::ostream& out) : out_(out) {}
  void add(std::string_view file, std::size_t line, std::string_view column,
           std::string_view sentence);
  int count() const noexcept { return count_; }

 private:
  std::ostream& out_;
  int count_ = 0;
};

// What became of the rows of a file.
struct LoadCount {
  std::size_t added = 0;
  std::size_t changed = 0;
  std::size_t same = 0;  // they stood already as the file has them

  std::size_t rows() const noexcept { return added + changed + same; }
};

// One file on its way into its table. Rows of lookups, and of catalogues when they are to be
// updated, take the place of those with the same key.
class TableLoad {
 public:
  TableLoad(Engine& engine, const SchemaTable& table, const std::filesystem::path& path,
            const LoadOptions& options, Refusals& refusals);

  LoadCount run(std::ostream* progress);

 private:
  struct Reason {
    std::string column;  // or several
    std::string sentence;
  };

  void refuse(const Reason& reason);
  bool readHeader();
  bool has(const SchemaColumn& column) const;
  void readStanding();
  bool readRow(const std::vector<std::string_view>& cells);
  void store();
  bool isSame(std::size_t standingRow) const;
  std::string settings(const std::vector<std::string>& columns, std::string_view separator) const;
  const Value& valueOf(std::string_view column) const;
  Reason reasonOf(const DatabaseRefusal& refusal);
  bool isAstray(const SchemaReference& reference);

  Engine& engine_;
  const SchemaTable& table_;
  std::string name_;
  TableFile file_;
  bool replaces_;
  Refusals& refusals_;
  LoadCount count_;
  std::vector<std::string> columns_;
  std::vector<std::string> key_;
  std::vector<FieldType> types_;
  std::vector<Value> values_;
  std::shared_ptr<RowStore> standing_;
  std::map<std::string, std::size_t> standingRows_;  // by their key; each is met once
  std::unique_ptr<BulkInsert> insert_;
};

}  // namespace bw
