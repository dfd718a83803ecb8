#include "core/Services.h"

#include <cstdlib>
#include <iostream>

#include "text/Clock.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

// A folder of the XDG rules: the variable when it is set and absolute, else below the home.
std::filesystem::path userFolder(const char* variable, const char* belowHome) {
  const char* set = std::getenv(variable);
  if (set != nullptr && set[0] == '/') return set;
  const char* home = std::getenv("HOME");
  return std::filesystem::path(home == nullptr ? "." : home) / belowHome;
}

}  // namespace

Services& services() {
  static Services instance{
      .message = [](const std::string& text) { std::cerr << text << '\n'; },
      .confirm =
          [](const std::string& text) {
            std::cerr << text << '\n';
            return false;
          },
      .now = systemNow,
      .view = [](const std::filesystem::path&) { throw RuntimeError(ErrorNumber::fileNotFound); },
      .help = [] {},
      .documentFolder = [] { return userFolder("XDG_DATA_HOME", ".local/share") / "brantiwell"; },
      .progress = [](const WorkProgress&) {},
      .settingsFolder = [] { return userFolder("XDG_CONFIG_HOME", ".config") / "brantiwell"; }};
  return instance;
}

}  // namespace bw
