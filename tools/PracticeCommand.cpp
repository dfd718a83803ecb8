#include <ostream>

#include "tools/Commands.h"
#include "tools/NewOffice.h"
#include "tools/PracticeOffice.h"

namespace bw {

Exit createPractice(const std::filesystem::path& path, Date today, std::ostream& out) {
  makeOffice(
      path, [today](Engine& engine) { fillPractice(engine, today); }, out);
  out << "Made " << path.string() << " with a fictional office to practise on.\n";
  return Exit::done;
}

}  // namespace bw
