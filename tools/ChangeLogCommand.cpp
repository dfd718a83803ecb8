#include <ostream>

#include "data/Schema.h"
#include "engine/EngineMakers.h"
#include "tools/Commands.h"

namespace bw {

Exit switchChangeLog(const std::filesystem::path& path, bool kept, std::ostream& out) {
  keepChangeLog(*openEngine(path.string()), kept);
  out << (kept ? "Who changes what is written down from now on.\n"
               : "Changes are not written down any more. Lines of before stay.\n")
      << "A Brantiwell that is open now goes on as before until it is started again.\n";
  return Exit::done;
}

}  // namespace bw
