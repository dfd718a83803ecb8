#include "engine/Libpq.h"

#include <dlfcn.h>

#include "engine/Refusals.h"

namespace bw {
namespace {

[[noreturn]] void refuse() {
  throw DatabaseRefusal(Refusal::notConnected,
                        "the library libpq is missing. On Debian: apt install libpq5");
}

template <class Function>
void load(Function& function, void* library, const char* name) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  if (function == nullptr) refuse();
}

}  // namespace

#define BW_DEFINE(function) decltype(&::function) function = nullptr;
BW_LIBPQ_FUNCTIONS(BW_DEFINE)
#undef BW_DEFINE

void loadLibpq() {
  static void* library = nullptr;
  if (library != nullptr) return;
  void* const opened = dlopen("libpq.so.5", RTLD_NOW | RTLD_LOCAL);
  if (opened == nullptr) refuse();
#define BW_LOAD(function) load(function, opened, #function);
  BW_LIBPQ_FUNCTIONS(BW_LOAD)
#undef BW_LOAD
  library = opened;
}

}  // namespace bw
