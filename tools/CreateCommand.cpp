#include <ostream>

#include "tools/Commands.h"
#include "tools/NewDatabase.h"
#include "tools/StarterOffice.h"

namespace bw {

Exit createDatabase(const std::filesystem::path& path, std::ostream& out, const std::string& owner,
                    Contents contents) {
  const bool starter = contents == Contents::starter;
  makeDatabase(path, starter ? fillStarter : nullptr, owner);
  out << (starter ? "Made the database " : "Made the empty database ") << path.string()
      << (starter ? " with concepts and groups to begin with.\n" : ".\n");
  return Exit::done;
}

}  // namespace bw
