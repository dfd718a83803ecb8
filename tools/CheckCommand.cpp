#include <ostream>

#include "data/Definition.h"
#include "data/Schema.h"
#include "engine/EngineMakers.h"
#include "engine/PostgresAddress.h"
#include "engine/SqliteEngine.h"
#include "engine/Workgroup.h"
#include "records/ColumnRules.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// That the row p is the one that a row t names.
std::string sameRow(const SchemaReference& reference) {
  std::string condition;
  for (std::size_t i = 0; i < reference.columns.size(); ++i)
    condition += concat(i == 0 ? "p." : " AND p.", reference.parent->columns[i].name, " = t.",
                        reference.columns[i].name);
  return condition;
}

class Check {
 public:
  Check(Engine& engine, std::ostream& out) : engine_(engine), out_(out) {}

  void find(const std::string& sentence) {
    out_ << sentence << '\n';
    ++found_;
  }
  int found() const noexcept { return found_; }

  // Whether a table or saved query is there with its columns, each of its type.
  bool layout(Engine& model, std::string_view name) {
    const std::string statement = concat("SELECT * FROM ", name, " WHERE 1 = 0");
    std::shared_ptr<RowStore> ours;
    try {
      ours = engine_.read(statement);
    } catch (const RuntimeError& error) {
      find(concat(name, " cannot be read: ", error.text()));
      return false;
    }
    bool whole = true;
    const std::shared_ptr<RowStore> wanted = model.read(statement);
    for (const Column& column : wanted->columns) {
      const auto there = ours->find(column.name());
      const bool fits = there && (column.declared() == FieldType::untyped ||
                                  ours->columns[*there].declared() == column.declared());
      if (fits) continue;
      whole = false;
      find(concat(name, there ? " declares another type for the column " : " lacks the column ",
                  column.name()));
    }
    return whole;
  }

  void filled(const SchemaTable& table) {
    if (engine_.read(concat("SELECT * FROM ", table.name))->rowCount() == 0)
      find(concat(table.name, " has no rows: dialogs that offer them will not open"));
  }

  void values(const SchemaTable& table) {
    for (const SchemaColumn& column : table.columns)
      rows(table, concat("NOT (", conditionOf(dialectOf(engine_.dialect()), column), ")"),
           concat(column.name, " holds ", ruleOf(column.type).complaint));
  }

  void relations(const SchemaTable& table) {
    for (const SchemaReference& reference : referencesOf(table))
      rows(table,
           concat(
               reference.mayNameNone() ? concat(reference.columns.front().name, " <> 0 AND ") : "",
               "NOT EXISTS (SELECT 1 FROM ", reference.parent->name, " p WHERE ",
               sameRow(reference), ")"),
           concat(listOf(reference.columns), " names no row of ", reference.parent->name));
  }

 private:
  // Tells of the rows under a condition: how many, and the key of the first.
  void rows(const SchemaTable& table, const std::string& condition, const std::string& complaint) {
    const std::shared_ptr<RowStore> bad = engine_.read(
        concat("SELECT ", listOf(table.key()), " FROM ", table.name, " t WHERE ", condition));
    if (bad->rowCount() == 0) return;
    const std::string first = joined(bad->columns, ", ", [](const Column& column) {
      return concat(column.name(), " ", textOrEmpty(column.value(0)));
    });
    find(concat(table.name, ": ", complaint, " (rows: ", static_cast<long>(bad->rowCount()),
                ", first: ", first, ")"));
  }

  Engine& engine_;
  std::ostream& out_;
  int found_ = 0;
};

void surroundings(Check& check, const fs::path& path) {
  const std::string workgroup = workgroupPathOf(path.string());
  try {
    if (!workgroupAdmits(workgroup, "Kelps", "Kelps"))
      check.find("The workgroup file does not admit the program: " + workgroup);
  } catch (const RuntimeError& error) {
    check.find(error.text());
  }
  for (const fs::path& file : {path, fs::path(workgroup)})
    if (fs::exists(file) && (fs::status(file).permissions() &
                             (fs::perms::group_all | fs::perms::others_all)) != fs::perms::none)
      check.find("Other users of this computer can reach the file: " + file.string());
}

}  // namespace

Exit checkDatabase(const fs::path& path, std::ostream& out) {
  const std::unique_ptr<Engine> engine = openEngine(path.string());
  const std::unique_ptr<Engine> model = openSqlite(":memory:");
  createSchema(*model);
  Check check(*engine, out);
  if (!isServerAddress(path.string())) surroundings(check, path);
  for (const std::string& sentence : engine->findDamage()) check.find(sentence);
  bool whole = true;
  for (const SchemaTable& table : schemaTables()) whole = check.layout(*model, table.name) && whole;
  // Rows can be asked about only where all tables are there.
  if (whole)
    for (const SchemaTable& table : schemaTables()) {
      if (table.isLookup) check.filled(table);
      check.values(table);
      check.relations(table);
    }
  for (const std::string& query : schemaQueries()) check.layout(*model, query);
  if (check.found() > 0) return Exit::findings;
  out << "No fault found in " << path.string() << ".\n";
  return Exit::done;
}

}  // namespace bw
