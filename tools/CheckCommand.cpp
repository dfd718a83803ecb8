#include <array>
#include <ostream>
#include <utility>

#include "data/Schema.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/Workgroup.h"
#include "tools/Commands.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// What a check of a table is about, by the end of its name.
constexpr std::array kComplaints{
    std::pair<std::string_view, std::string_view>{"Size", "a text of more than 255 characters"},
    std::pair<std::string_view, std::string_view>{"Range", "no number, or one out of range"},
    std::pair<std::string_view, std::string_view>{"Date", "no date"},
    std::pair<std::string_view, std::string_view>{"Time", "no time"},
    std::pair<std::string_view, std::string_view>{"Stamp", "no date and time"},
};

class Check {
 public:
  Check(Engine& engine, std::ostream& out) : engine_(engine), out_(out) {}

  void find(const std::string& sentence) {
    out_ << sentence << '\n';
    ++found_;
  }
  int found() const noexcept { return found_; }

  // Whether a table or saved query is there with its columns, each of its type.
  bool layout(Engine& model, const std::string& name) {
    const std::string statement = "SELECT * FROM [" + name + "] WHERE 1 = 0";
    std::shared_ptr<RowStore> ours;
    try {
      ours = engine_.read(statement);
    } catch (const RuntimeError& error) {
      find(name + " cannot be read: " + error.text());
      return false;
    }
    bool whole = true;
    const std::shared_ptr<RowStore> wanted = model.read(statement);
    for (const Column& column : wanted->columns) {
      const auto there = ours->find(column.name());
      const bool fits = there && ours->columns[*there].declared() == column.declared();
      if (fits) continue;
      whole = false;
      find(concat(name, there ? " declares another type for the column " : " lacks the column ",
                  column.name()));
    }
    return whole;
  }

  void filled(const SchemaTable& table) {
    if (engine_.read("SELECT * FROM " + table.name)->rowCount() == 0)
      find(table.name + " has no rows: dialogs that offer them will not open");
  }

  void values(const SchemaTable& table) {
    for (const SchemaCheck& check : table.checks)
      for (const auto& [ending, complaint] : kComplaints)
        if (check.name.ends_with(ending))
          rows(table, "NOT (" + check.condition + ")",
               concat(check.name.substr(0, check.name.size() - ending.size()), " holds ",
                      complaint));
  }

  void relations(const SchemaTable& table) {
    for (const SchemaReference& reference : table.references) {
      std::string same;
      std::string columns;
      for (std::size_t i = 0; i < reference.columns.size(); ++i) {
        same +=
            concat(i == 0 ? "" : " AND ", "p.", reference.key[i], " = t.", reference.columns[i]);
        columns += concat(i == 0 ? "" : ", ", reference.columns[i]);
      }
      rows(table,
           concat(reference.zeroIsNone ? "t." + reference.columns.front() + " <> 0 AND " : "",
                  "NOT EXISTS (SELECT 1 FROM ", reference.parent, " p WHERE ", same, ")"),
           concat(columns, " names no row of ", reference.parent));
    }
  }

 private:
  // Tells of the rows under a condition: how many, and the key of the first.
  void rows(const SchemaTable& table, const std::string& condition, const std::string& complaint) {
    std::string keys;
    for (const std::string& column : table.key)
      keys += concat(keys.empty() ? "t." : ", t.", column);
    const std::shared_ptr<RowStore> bad =
        engine_.read(concat("SELECT ", keys, " FROM ", table.name, " t WHERE ", condition));
    if (bad->rowCount() == 0) return;
    std::string first;
    for (const Column& column : bad->columns)
      first += concat(first.empty() ? "" : ", ", column.name(), " ", textOrEmpty(column.value(0)));
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
  const std::unique_ptr<Engine> engine = openSqlite(path.string());
  const std::unique_ptr<Engine> model = openSqlite(":memory:");
  createSchema(*model);
  Check check(*engine, out);
  surroundings(check, path);
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
