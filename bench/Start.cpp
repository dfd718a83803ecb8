// From the start of the process to the first view, against an empty window.

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "bench/Measure.h"
#include "bench/Office.h"
#include "platform/Moment.h"
#include "tools/Commands.h"

namespace {

using namespace bw;
namespace fs = std::filesystem;

constexpr double kMostTimesBare = 1.5;
constexpr double kTitle = 2000;  // ms that the title window stays

double run(const char* name) {
  return bench::milliseconds([&] {
    std::string program = (bench::folder() / "bin" / name).string();
    char* arguments[] = {program.data(), nullptr};
    pid_t process = 0;
    int status = 0;
    if (posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ) != 0 ||
        waitpid(process, &status, 0) != process || status != 0)
      throw std::runtime_error(program + " failed.");
  });
}

// A practice database, registered for the processes that are started, and settings of nobody.
void setUp(const fs::path& home) {
  fs::remove_all(home);
  fs::create_directories(home);
  setenv("XDG_CONFIG_DIRS", (home / "xdg").c_str(), 1);
  setenv("XDG_CONFIG_HOME", (home / "config").c_str(), 1);
  setenv("XDG_DATA_HOME", (home / "data").c_str(), 1);
  const fs::path database = home / "brantiwell.db";
  std::ostringstream said;
  if (createPractice(database, *makeDate(2003, 6, 15), said) != Exit::done ||
      registerDatabase(database, said) != Exit::done)
    throw std::runtime_error(said.str());
}

}  // namespace

int main() {
  try {
    setUp(bench::folder() / "bench-start");
    run("bare_window");
    run("first_view");
    bench::compare(
        "start to the first view", kMostTimesBare, [] { return run("first_view") - kTitle; },
        [] { return run("bare_window"); });
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
  return bench::verdict();
}
