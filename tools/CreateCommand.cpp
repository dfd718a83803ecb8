#include <ostream>

#include "tools/Commands.h"
#include "tools/NewOffice.h"

namespace bw {

Exit createDatabase(const std::filesystem::path& path, std::ostream& out,
                    const std::string& owner) {
  makeOffice(path, {}, out, owner);
  out << "Made the empty database " << path.string() << ".\n";
  return Exit::done;
}

}  // namespace bw
