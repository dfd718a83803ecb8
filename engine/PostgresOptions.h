#pragma once

#include <chrono>

#include "engine/EngineAccess.h"

namespace bw {

struct PostgresOptions {
  std::chrono::milliseconds busyTimeout{5000};
  // So long a server that went away in the midst of a commit is waited for.
  std::chrono::milliseconds returnTimeout{20000};
  EngineAccess access = EngineAccess::readWrite;
};

}  // namespace bw
