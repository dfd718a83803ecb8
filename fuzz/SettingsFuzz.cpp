// Reads any bytes as the settings of the machine, and writes one into them: it is read back, and
// the others stay.

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "core/MachineSettings.h"
#include "fuzz/Check.h"

namespace {

constexpr const char* kKey = "SOFTWARE\\Maker\\Program";

// The settings of this process, in memory: a disk would take its time to sync each.
struct Settings {
  Settings() {
    setenv("XDG_CONFIG_DIRS", folder.c_str(), 1);
    std::filesystem::create_directories(file.parent_path());
  }
  ~Settings() { std::filesystem::remove_all(folder); }

  const std::filesystem::path folder = "/dev/shm/settings" + std::to_string(getpid());
  const std::filesystem::path file = folder / "Maker/Program.ini";
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = bw::inputText(data, size);
  static const Settings settings;
  std::ofstream(settings.file, std::ios::binary) << text;
  const auto other = bw::readMachineSetting(kKey, "Other");
  const bw::MachineValue value = std::string(text.substr(0, text.find_first_of("\r\n")));
  bw::writeMachineSetting(kKey, "Mine", value);
  bw::check(bw::readMachineSetting(kKey, "mine") == value, "what is written is read back");
  bw::check(bw::readMachineSetting(kKey, "Other") == other, "the others stay");
  return 0;
}
