#pragma once

#include "text/RuntimeError.h"

namespace bw {

// Runs one statement whose errors are to be passed over, where the program says so.
template <class Statement>
void passOver(Statement statement) {
  try {
    statement();
  } catch (const RuntimeError&) {  // passed over
  }
}

}  // namespace bw
