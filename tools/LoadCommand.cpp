#include <algorithm>
#include <map>
#include <ostream>
#include <vector>

#include "data/Tables.h"
#include "engine/EngineMakers.h"
#include "engine/EngineTransaction.h"
#include "text/Text.h"
#include "tools/Commands.h"
#include "tools/TableFile.h"
#include "tools/TableLoad.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

struct LoadedTable {
  std::string_view name;
  LoadCount count;
};

// The files of a folder by the position of their table. Raises Refused for one without a table.
std::map<std::size_t, fs::path> filesOf(const fs::path& folder) {
  if (!fs::is_directory(folder)) throw Refused("There is no folder " + folder.string());
  std::map<std::size_t, fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const fs::path& file = entry.path();
    if (!tableEnding(file)) continue;
    const auto tables = schemaTables();
    const auto table = std::ranges::find_if(tables, [&file](const SchemaTable& candidate) {
      return sameName(candidate.name, file.stem().string());
    });
    if (table == tables.end())
      throw Refused("The database has no table for the file " + file.string());
    if (!files.emplace(table - tables.begin(), file).second)
      throw Refused(concat("Two files hold rows of the table ", table->name));
  }
  if (files.empty())
    throw Refused("The folder has no files Table.tsv or Table.csv: " + folder.string());
  return files;
}

std::vector<LoadedTable> loadAll(Engine& engine, const std::map<std::size_t, fs::path>& files,
                                 const LoadOptions& options, Refusals& refusals,
                                 std::ostream* progress) {
  std::vector<LoadedTable> loaded;
  for (const auto& [place, file] : files) {
    const SchemaTable& table = schemaTables()[place];
    loaded.push_back({table.name, TableLoad(engine, table, file, options, refusals).run(progress)});
  }
  return loaded;
}

// Tells what was read, and returns the number of all rows.
std::size_t tell(const std::vector<LoadedTable>& loaded, std::ostream& out) {
  std::size_t total = 0;
  for (const auto& [table, count] : loaded) {
    out << table << ": " << count.rows() << " rows";
    if (count.changed + count.same > 0)
      out << " (new: " << count.added << ", changed: " << count.changed
          << ", as they stood: " << count.same << ')';
    out << '\n';
    total += count.rows();
  }
  return total;
}

}  // namespace

Exit loadTables(const fs::path& path, const fs::path& folder, std::ostream& out,
                std::ostream* progress, const LoadOptions& options) {
  const std::map<std::size_t, fs::path> files = filesOf(folder);
  const std::unique_ptr<Engine> engine = openEngine(path.string());
  Refusals refusals(out);
  std::vector<LoadedTable> loaded;
  EngineTransaction transaction(*engine, TransactionKind::writing);
  try {
    loaded = loadAll(*engine, files, options, refusals, progress);
  } catch (const TooManyRefusals& many) {
    out << "There may be more: stopped after " << many.count << ".\n";
  }
  if (progress != nullptr) *progress << "\r\x1b[K" << std::flush;
  if (refusals.count() > 0) {
    transaction.end();
    out << "Nothing was loaded. Refused: " << refusals.count() << ".\n";
    return Exit::refused;
  }
  if (options.dryRun)
    transaction.end();
  else
    transaction.commit();
  const std::size_t total = tell(loaded, out);
  if (options.dryRun)
    out << "Only tried: " << total << " rows from " << folder.string()
        << " would be taken. Nothing was loaded.\n";
  else
    out << "Loaded " << total << " rows from " << folder.string() << ".\n";
  return Exit::done;
}

}  // namespace bw
