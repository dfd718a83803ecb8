#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "engine/Libpq.h"

namespace bw {

struct FinishConnection {
  void operator()(PGconn* connection) const noexcept { PQfinish(connection); }
};
struct ClearResult {
  void operator()(PGresult* result) const noexcept { PQclear(result); }
};
struct FreeMemory {
  void operator()(void* memory) const noexcept { PQfreemem(memory); }
};
using PostgresConnection = std::unique_ptr<PGconn, FinishConnection>;
using PostgresResult = std::unique_ptr<PGresult, ClearResult>;

inline std::string firstLine(std::string_view text) {
  return std::string(text.substr(0, text.find('\n')));
}

}  // namespace bw
