#include "tools/Notification.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

namespace bw {

void notify(const std::string& title, const std::string& text) {
  std::string program = "notify-send";
  std::string urgent = "--urgency=critical";
  std::string icon = "--icon=brantiwell";
  std::string shown = title;
  std::string below = text;
  const std::array<char*, 6> arguments{program.data(), urgent.data(), icon.data(),
                                       shown.data(),   below.data(),  nullptr};
  pid_t child = 0;
  if (posix_spawnp(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ) == 0)
    waitpid(child, nullptr, 0);
}

}  // namespace bw
