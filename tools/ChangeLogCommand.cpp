#include <ostream>

#include "data/Schema.h"
#include "engine/EngineMakers.h"
#include "engine/EngineTransaction.h"
#include "engine/PostgresAddress.h"
#include "tools/Commands.h"
#include "tools/ServerDatabase.h"

namespace bw {

Exit switchChangeLog(const std::filesystem::path& path, bool kept, std::ostream& out) {
  const std::unique_ptr<Engine> engine = openEngine(path.string());
  EngineTransaction transaction(*engine, TransactionKind::writing);
  keepChangeLog(*engine, kept);
  if (isServerAddress(path.string())) letDesksLog(*engine);
  transaction.commit();
  out << (kept ? "Who changes what is written down from now on.\n"
               : "Changes are not written down any more. Lines of before stay.\n")
      << "A Brantiwell that is open now goes on as before until it is started again.\n";
  return Exit::done;
}

}  // namespace bw
