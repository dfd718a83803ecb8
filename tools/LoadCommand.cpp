#include <algorithm>
#include <array>
#include <map>
#include <ostream>
#include <set>
#include <utility>

#include "data/Tables.h"
#include "engine/EngineMakers.h"
#include "engine/EngineTransaction.h"
#include "records/ColumnRules.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"
#include "tools/TableFile.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr int kMostRefusals = 50;
constexpr std::size_t kRowsBetweenProgress = 4096;

// So many rows were refused that going on would only hide the first reasons.
struct TooManyRefusals {};

// A number or a text as it stands in a statement.
std::string literal(const Value& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  std::string text;
  if (const auto* date = std::get_if<Date>(&value))
    text = isoDate(*date);
  else if (const auto* time = std::get_if<TimeOfDay>(&value))
    text = isoTime(*time);
  else
    text = textOrEmpty(value);
  for (std::size_t i = text.find('\''); i != std::string::npos; i = text.find('\'', i + 2))
    text.insert(i, 1, '\'');
  return "'" + text + "'";
}

struct Reason {
  std::string column;  // or several
  std::string sentence;
};

// One file on its way into its table.
class TableLoad {
 public:
  TableLoad(Engine& engine, const SchemaTable& table, const fs::path& path, int& refusals,
            std::ostream& out)
      : engine_(engine), table_(table), name_(path.filename().string()), file_(path),
        refusals_(refusals), out_(out) {}

  // Returns the number of rows stored.
  std::size_t run(std::ostream* progress) {
    if (!readHeader()) return 0;
    if (table_.isLookup) readKeys();
    insert_ = engine_.prepareInsert(std::string(table_.name), columns_, RowsAre::unknown);
    std::size_t rows = 0;
    while (const std::vector<std::string_view>* cells = file_.next()) {
      if (readRow(*cells) && store()) ++rows;
      if (progress != nullptr && file_.line() % kRowsBetweenProgress == 0)
        *progress << '\r' << table_.name << ' ' << static_cast<int>(file_.done() * 100) << " %   "
                  << std::flush;
    }
    return rows;
  }

 private:
  void refuse(const Reason& reason) {
    out_ << name_ << ", line " << file_.line()
         << (reason.column.empty() ? "" : ", " + reason.column) << ": " << reason.sentence << '\n';
    if (++refusals_ >= kMostRefusals) throw TooManyRefusals();
  }

  // The file's columns; every one of the table's must be there, but for the working column.
  bool readHeader() {
    const int before = refusals_;
    for (const std::string_view cell : file_.header()) {
      const auto column = std::ranges::find_if(
          table_.columns, [cell](const SchemaColumn& one) { return sameName(one.name, cell); });
      if (column == table_.columns.end()) {
        refuse({std::string(cell), "the table has no column of this name."});
        continue;
      }
      if (has(*column)) refuse({std::string(column->name), "the column stands twice."});
      columns_.emplace_back(column->name);
      types_.push_back(column->type);
    }
    for (const SchemaColumn& column : table_.columns)
      if (!column.working && !has(column))
        refuse({std::string(column.name), "the column is missing."});
    return refusals_ == before;
  }

  bool has(const SchemaColumn& column) const {
    return std::ranges::find(columns_, column.name) != columns_.end();
  }

  std::string_view keyColumn() const noexcept { return table_.key().front().name; }

  // The lookup rows that stand already; a row of the same number takes their place.
  void readKeys() {
    const std::shared_ptr<RowStore> rows =
        engine_.read(concat("SELECT ", keyColumn(), " FROM ", table_.name));
    for (std::size_t row = 0; row < rows->rowCount(); ++row)
      standing_.insert(rows->columns.front().raw(row));
  }

  bool readRow(const std::vector<std::string_view>& cells) {
    if (cells.size() != columns_.size()) {
      refuse({"", concat("the row has ", static_cast<long>(cells.size()), " cells, the header ",
                         static_cast<long>(columns_.size()), ".")});
      return false;
    }
    values_.clear();
    bool good = true;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      std::optional<Value> value = cellValue(types_[i], cells[i]);
      if (!value) {
        refuse({columns_[i], concat("\"", cells[i], "\" is not ", ruleOf(types_[i]).form, ".")});
        good = false;
      }
      values_.push_back(std::move(value).value_or(Value()));
    }
    return good;
  }

  bool store() {
    try {
      if (const auto* key = std::get_if<std::int64_t>(valueOf(keyColumn()));
          table_.isLookup && key != nullptr && standing_.erase(*key) > 0)
        engine_.execute(replacement());
      else
        insert_->row(values_);
      return true;
    } catch (const DatabaseRefusal& refusal) {
      if (isOutage(refusal.why())) throw;
      refuse(reasonOf(refusal));
      return false;
    }
  }

  std::string replacement() const {
    const std::string settings = joined(columns_, ", ", [this](const std::string& column) {
      return concat(column, " = ", literal(*valueOf(column)));
    });
    return concat("UPDATE ", table_.name, " SET ", settings, " WHERE ", keyColumn(), " = ",
                  literal(*valueOf(keyColumn())));
  }

  const Value* valueOf(std::string_view column) const {
    const auto found = std::ranges::find(columns_, column);
    return &values_[static_cast<std::size_t>(found - columns_.begin())];
  }

  // The refusal's sentence, with the column that it is about.
  Reason reasonOf(const DatabaseRefusal& refusal) {
    const std::string sentence = refusal.text();
    if (!refusal.column().empty()) return {refusal.column(), sentence};
    if (refusal.why() == Refusal::duplicateKey) return {listOf(table_.key()), sentence};
    for (const SchemaReference& reference : referencesOf(table_))
      if (isAstray(reference))
        return {listOf(reference.columns),
                concat("there is no such row in ", reference.parent->name, ".")};
    return {"", sentence};
  }

  bool isAstray(const SchemaReference& reference) {
    std::string condition;
    for (std::size_t i = 0; i < reference.columns.size(); ++i) {
      const Value& value = *valueOf(reference.columns[i].name);
      if (reference.mayNameNone() && value == Value(std::int64_t{0})) return false;
      condition +=
          concat(i == 0 ? "" : " AND ", reference.parent->columns[i].name, " = ", literal(value));
    }
    return engine_.read(concat("SELECT 1 FROM ", reference.parent->name, " WHERE ", condition))
               ->rowCount() == 0;
  }

  Engine& engine_;
  const SchemaTable& table_;
  std::string name_;
  TableFile file_;
  int& refusals_;
  std::ostream& out_;
  std::vector<std::string> columns_;
  std::vector<FieldType> types_;
  std::vector<Value> values_;
  std::set<std::int64_t> standing_;
  std::unique_ptr<BulkInsert> insert_;
};

// The files of a folder by the position of their table. Raises Refused for one without a table.
std::map<std::size_t, fs::path> filesOf(const fs::path& folder) {
  if (!fs::is_directory(folder)) throw Refused("There is no folder " + folder.string());
  std::map<std::size_t, fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const fs::path& file = entry.path();
    if (!sameName(file.extension().string(), ".tsv")) continue;
    const auto tables = schemaTables();
    const auto table = std::ranges::find_if(tables, [&file](const SchemaTable& candidate) {
      return sameName(candidate.name, file.stem().string());
    });
    if (table == tables.end())
      throw Refused("The database has no table for the file " + file.string());
    if (!files.emplace(table - tables.begin(), file).second)
      throw Refused(concat("Two files hold rows of the table ", table->name));
  }
  if (files.empty()) throw Refused("The folder has no files Table.tsv: " + folder.string());
  return files;
}

// Loads all files; the names of tables and the number of rows go to `summary`.
int loadAll(Engine& engine, const std::map<std::size_t, fs::path>& files, std::ostream& out,
            std::ostream* progress,
            std::vector<std::pair<std::string_view, std::size_t>>& summary) {
  int refusals = 0;
  try {
    for (const auto& [place, file] : files) {
      const SchemaTable& table = schemaTables()[place];
      summary.emplace_back(table.name, TableLoad(engine, table, file, refusals, out).run(progress));
    }
  } catch (const TooManyRefusals&) {
    out << "There may be more: stopped after " << kMostRefusals << ".\n";
  }
  if (progress != nullptr) *progress << "\r\x1b[K" << std::flush;
  return refusals;
}

}  // namespace

Exit loadTables(const fs::path& path, const fs::path& folder, std::ostream& out,
                std::ostream* progress) {
  const std::map<std::size_t, fs::path> files = filesOf(folder);
  const std::unique_ptr<Engine> engine = openEngine(path.string());
  std::vector<std::pair<std::string_view, std::size_t>> summary;
  EngineTransaction transaction(*engine, TransactionKind::writing);
  if (const int refusals = loadAll(*engine, files, out, progress, summary); refusals > 0) {
    transaction.end();
    out << "Nothing was loaded. Refused: " << refusals << ".\n";
    return Exit::refused;
  }
  transaction.commit();
  std::size_t total = 0;
  for (const auto& [table, rows] : summary) {
    out << table << ": " << rows << " rows\n";
    total += rows;
  }
  out << "Loaded " << total << " rows from " << folder.string() << ".\n";
  return Exit::done;
}

}  // namespace bw
