#include <ostream>

#include "data/Schema.h"
#include "tools/Commands.h"
#include "tools/NewOffice.h"

namespace bw {

Exit createDatabase(const std::filesystem::path& path, std::ostream& out, const Access& access,
                    bool keepsChangeLog) {
  makeOffice(
      path, [=](Engine& engine) { keepChangeLog(engine, keepsChangeLog); }, out, access);
  out << "Made the empty database " << path.string() << ".\n";
  return Exit::done;
}

}  // namespace bw
