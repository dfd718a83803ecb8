#include "engine/ChangeLog.h"

#include <pwd.h>
#include <unistd.h>

#include <array>

#include "text/Clock.h"
#include "text/Text.h"

namespace bw {
namespace {

// Of this process on this computer; its number when it has no name.
std::string userName() {
  const passwd* user = getpwuid(geteuid());
  return user != nullptr ? user->pw_name : std::to_string(geteuid());
}

std::string stationName() {
  std::array<char, 256> name{};
  return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

bool onlyReads(std::string_view statement) {
  return sameName(Trim(statement).substr(0, 6), "SELECT");
}

}  // namespace

std::unique_ptr<ChangeLog> ChangeLog::of(Engine& engine) {
  if (!engine.hasTable(kChangeLogTable) || engine.hasTable(kChangeLogStopped)) return nullptr;
  return std::make_unique<ChangeLog>(engine);
}

ChangeLog::ChangeLog(Engine& engine)
    : engine_(engine), user_(userName()), station_(stationName()),
      lines_(engine.prepareInsert(kChangeLogTable,
                                  {"Moment", "UserName", "Station", "RowCount", "Statement"},
                                  RowsAre::unknown)) {}

std::int64_t ChangeLog::execute(const EngineStatement& statement, std::string_view written,
                                int level) {
  if (onlyReads(written)) return engine_.execute(statement);
  begin(level);
  try {
    const std::int64_t rows = engine_.execute(statement);
    write(written, rows);
    keep(level);
    return rows;
  } catch (const RuntimeError&) {
    if (engine_.inTransaction()) undo(level);
    throw;
  }
}

void ChangeLog::begin(int level) {
  if (level == 0)
    engine_.begin();
  else
    engine_.beginLevel(level + 1);
}

void ChangeLog::keep(int level) {
  if (level > 0) return engine_.keepLevel(level + 1);
  engine_.commit().require();
}

void ChangeLog::undo(int level) {
  if (level == 0)
    engine_.rollback();
  else
    engine_.undoLevel(level + 1);
}

void ChangeLog::write(std::string_view statement, std::int64_t rows) {
  const std::array<Value, 5> line{systemNow(), user_, station_, rows, std::string(statement)};
  lines_->row(line);
}

}  // namespace bw
