#include "controls/EventGuard.h"

#include <cstdlib>
#include <new>

#include "core/Services.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

int numberOf(const std::exception& error) {
  if (const auto* own = dynamic_cast<const RuntimeError*>(&error))
    return static_cast<int>(own->number());
  const bool noMemory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
  return static_cast<int>(noMemory ? ErrorNumber::outOfMemory : ErrorNumber::internal);
}

void endWithBox(const std::exception& error) {
  MsgBox(concat("Run-time error '", numberOf(error), "':\n\n", error.what()));
  // No unload code may run: settings stay those of the run before. Every transaction that is still
  // open is rolled back when the database is opened next.
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

std::function<void(const std::exception&)>& unhandledError() {
  static std::function<void(const std::exception&)> handler = endWithBox;
  return handler;
}

}  // namespace bw
