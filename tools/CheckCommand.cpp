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
#include "tools/Copies.h"
#include "tools/SchemaAge.h"
#include "tools/ServerDatabase.h"
#include "tools/TableFile.h"

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

  // What is no fault, but should be known.
  void note(const std::string& sentence) { out_ << "Note: " << sentence << '\n'; }

  // Does a part of the check. What the database refuses in it is a finding.
  template <class Part>
  void part(std::string_view name, Part run) {
    try {
      run();
    } catch (const DatabaseRefusal& refusal) {
      find(concat(name, " cannot be checked: ", refusal.text()));
    }
  }

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

  // Texts that are no UTF-8 show as something else than what was stored.
  void texts(const SchemaTable& table) {
    const std::shared_ptr<RowStore> rows = engine_.read(concat("SELECT * FROM ", table.name));
    for (const Column& column : rows->columns) {
      if (column.declared() != FieldType::text) continue;
      for (std::size_t row = 0; row < rows->rowCount(); ++row)
        if (!cellValue(FieldType::text, textOrEmpty(column.value(row))))
          find(concat(table.name, ": the text in ", column.name(), " cannot be read (",
                      keyOf(*rows, row, table.keySize), ")"));
    }
  }

  void age(Engine& model) {
    const SchemaAge parts(engine_, model);
    parts.tell(out_);
    if (parts.isNewer())
      note("a later version of the program has made it.");
    else if (parts.isOld() && !parts.lacksTables())
      note("the command upgrade brings it to what this version makes.");
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
    find(concat(table.name, ": ", complaint, " (rows: ", static_cast<long>(bad->rowCount()),
                ", first: ", keyOf(*bad, 0, bad->columns.size()), ")"));
  }

  // A row by the columns of its key, which stand in front.
  static std::string keyOf(const RowStore& rows, std::size_t row, std::size_t columns) {
    return joined(std::span(rows.columns).first(columns), ", ", [row](const Column& column) {
      return concat(column.name(), " ", textOrEmpty(column.value(row)));
    });
  }

  Engine& engine_;
  std::ostream& out_;
  int found_ = 0;
};

// Whether others than those who are meant to can reach a file or put one in its place. In a folder
// that hands its group on to what is made in it, the group is meant.
void reach(Check& check, const fs::path& path) {
  using enum fs::perms;
  const fs::path folder = fs::absolute(path).parent_path();
  const fs::perms around = fs::status(folder).permissions();
  const fs::perms strangers = (around & set_gid) == none ? group_all | others_all : others_all;
  for (const fs::path& file : {path, fs::path(workgroupPathOf(path.string()))})
    if (fs::exists(file) && (fs::status(file).permissions() & strangers) != none)
      check.find("Other users of this computer can reach the file: " + file.string());
  if ((around & strangers & (group_write | others_write)) != none)
    check.find("Other users of this computer can write into the folder: " + folder.string());
}

void workgroup(Check& check, const fs::path& path) {
  const std::string workgroup = workgroupPathOf(path.string());
  try {
    if (!workgroupAdmits(workgroup, "Kelps", "Kelps"))
      check.find("The workgroup file does not admit the program: " + workgroup);
  } catch (const RuntimeError& error) {
    check.find(error.text());
  }
}

void copies(Check& check, const fs::path& database) {
  const std::vector<Copy> all = copiesOf(database);
  const int days = ageInDays(all);
  if (all.empty())
    check.note("there is no copy of it in " + copiesFolders(database).front().string() + ".");
  else if (days < 0)
    check.find("The newest copy is not whole: its sums cannot be found: " +
               all.back().sums().string());
  else if (days >= kOldInDays)
    check.find(concat("The newest good copy is ", days, " days old."));
}

// What stands about a file.
void surroundings(Check& check, const fs::path& path) {
  workgroup(check, path);
  reach(check, path);
  copies(check, fs::absolute(path));
}

void content(Check& check, Engine& model) {
  bool whole = true;
  for (const SchemaTable& table : schemaTables()) whole = check.layout(model, table.name) && whole;
  // Rows can be asked about only where all tables are there.
  if (whole)
    for (const SchemaTable& table : schemaTables())
      check.part(table.name, [&] {
        if (table.isLookup) check.filled(table);
        check.values(table);
        check.texts(table);
        check.relations(table);
      });
  for (const std::string& query : schemaQueries()) check.layout(model, query);
}

// Nothing when it is so damaged that it cannot be opened.
std::unique_ptr<Engine> openWhatOpens(const fs::path& path, std::ostream& out) {
  try {
    return makerOf(path.string()).openDamaged(path.string());
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() != Refusal::damaged) throw;
    out << refusal.text() << '\n';
    return nullptr;
  }
}

}  // namespace

Exit checkDatabase(const fs::path& path, std::ostream& out) {
  const std::unique_ptr<Engine> engine = openWhatOpens(path, out);
  if (!engine) return Exit::findings;
  const std::unique_ptr<Engine> model = openSqlite(":memory:");
  createSchema(*model);
  Check check(*engine, out);
  const bool isFile = !isServerAddress(path.string());
  if (isFile) surroundings(check, path);
  check.part("The structure", [&] {
    for (const std::string& sentence : engine->findDamage()) check.find(sentence);
    if (!isFile && !keepsChecksums(*engine))
      check.note(
          "the server keeps no checksums (pg_checksums switches them on), so that damaged pages "
          "could not be looked for.");
  });
  content(check, *model);
  if (isFile) check.part("The age of the database", [&] { check.age(*model); });
  if (check.found() > 0) return Exit::findings;
  out << "No fault found in " << path.string() << ".\n";
  return Exit::done;
}

}  // namespace bw
