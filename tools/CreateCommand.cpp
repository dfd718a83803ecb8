#include <ostream>

#include "data/Schema.h"
#include "tools/Commands.h"
#include "tools/NewOffice.h"
#include "tools/StarterOffice.h"

namespace bw {

Exit createDatabase(const std::filesystem::path& path, std::ostream& out, const Access& access,
                    Beginning beginning) {
  const auto fill = [beginning](Engine& engine) {
    if (beginning.starter) fillStarter(engine);
    keepChangeLog(engine, beginning.changeLog);
  };
  makeOffice(path, fill, out, access);
  out << (beginning.starter ? "Made the database " : "Made the empty database ") << path.string()
      << (beginning.starter ? " with concepts and groups to begin with.\n" : ".\n");
  return Exit::done;
}

}  // namespace bw
