#include <ostream>

#include "data/Schema.h"
#include "tools/Commands.h"
#include "tools/NewDatabase.h"

namespace bw {

Exit createDatabase(const std::filesystem::path& path, std::ostream& out, const std::string& owner,
                    bool keepsChangeLog) {
  makeDatabase(
      path, [=](Engine& engine) { keepChangeLog(engine, keepsChangeLog); }, owner);
  out << "Made the empty database " << path.string() << ".\n";
  return Exit::done;
}

}  // namespace bw
