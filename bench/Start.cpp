// From the start of the process to the first view, and what memory that takes, against an empty
// window.

#include <poll.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "bench/Measure.h"
#include "bench/Office.h"
#include "text/Moment.h"
#include "tools/Commands.h"

namespace {

using namespace bw;
namespace fs = std::filesystem;

constexpr double kMostTimesBare = 1.5;
constexpr double kMostTimesBareMemory = 1.6;
constexpr int kTitle = 2000;  // ms that the title window stays

struct Cost {
  double milliseconds = 0;
  double megabytes = 0;  // the most that was resident
};

Cost run(const char* name) {
  std::string program = (bench::folder() / "bin" / name).string();
  char* arguments[] = {program.data(), nullptr};
  rusage used{};
  const double time = bench::milliseconds([&] {
    pid_t process = 0;
    int status = 0;
    if (posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ) != 0 ||
        wait4(process, &status, 0, &used) != process || status != 0)
      throw std::runtime_error(program + " failed.");
  });
  return {time, static_cast<double>(used.ru_maxrss) / 1024};
}

// ms that a wait for the title takes here: the system may end one a thousandth late.
double waitForTitle() {
  return bench::milliseconds([] { poll(nullptr, 0, kTitle); });
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
    const double bareMemory = run("bare_window").megabytes;
    bench::report("memory at the first view", "MB", run("first_view").megabytes,
                  kMostTimesBareMemory * bareMemory);
    bench::compare(
        "start to the first view", kMostTimesBare,
        [] { return run("first_view").milliseconds - waitForTitle(); },
        [] { return run("bare_window").milliseconds; });
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
  return bench::verdict();
}
