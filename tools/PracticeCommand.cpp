#include <ostream>

#include "tools/Commands.h"
#include "tools/NewDatabase.h"
#include "tools/PracticeOffice.h"

namespace bw {

Exit createPractice(const std::filesystem::path& path, Date today, std::ostream& out) {
  makeDatabase(path, [today](Engine& engine) { fillPractice(engine, today); });
  out << "Made " << path.string() << " with a fictional office to practise on.\n";
  return Exit::done;
}

}  // namespace bw
