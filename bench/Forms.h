#pragma once

#include <cstdlib>
#include <exception>
#include <iostream>

#include "bench/Office.h"
#include "controls/EventGuard.h"
#include "core/Services.h"
#include "records/KeptMemory.h"
#include "text/Clock.h"

namespace bw::bench {

// What forms need of their surroundings: memory as the program has it, a clock, settings of nobody,
// and an end at the first error.
inline void setUpForms() {
  keepFreedMemory();
  services().now = systemNow;
  services().settingsFolder = [] { return folder() / "bench-settings"; };
  unhandledError() = [](const std::exception& error) {
    std::cerr << error.what() << '\n';
    std::_Exit(EXIT_FAILURE);
  };
}

}  // namespace bw::bench
