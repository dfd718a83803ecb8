#include "tools/OtherProgram.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace bw {

bool runProgram(std::vector<std::string> command) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (std::string& argument : command) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t quiet;
  posix_spawn_file_actions_init(&quiet);
  posix_spawn_file_actions_addopen(&quiet, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int failure =
      posix_spawnp(&child, arguments.front(), &quiet, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&quiet);
  if (failure != 0) return false;
  int status = 0;
  while (waitpid(child, &status, 0) < 0)
    if (errno != EINTR) return false;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace bw
