#include "core/MachineSettings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "files/Files.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kRoot = "SOFTWARE\\";
constexpr std::string_view kNumber = "dword:";

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    if (end > 0) parts.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return parts;
}

std::vector<fs::path> settingFolders() {
  std::vector<fs::path> folders;
  const char* set = std::getenv("XDG_CONFIG_DIRS");
  for (const std::string& folder : split(set == nullptr ? "" : set, ':'))
    if (folder.starts_with('/')) folders.emplace_back(folder);
  if (folders.empty()) folders.emplace_back("/etc/xdg");
  return folders;
}

// The names of the folders and of the file below a settings folder; empty when the key is none.
std::vector<std::string> namesOfKey(std::string_view key) {
  if (!sameName(key.substr(0, kRoot.size()), kRoot)) return {};
  std::vector<std::string> names = split(key.substr(kRoot.size()), '\\');
  for (const std::string& name : names)
    if (name == "." || name == ".." || name.find('/') != std::string::npos) return {};
  if (!names.empty()) names.back() += ".ini";
  return names;
}

// The entry of a folder that bears the name, in whatever case; the name itself when there is none.
fs::path entryOf(const fs::path& folder, const std::string& name) {
  std::error_code ignored;
  if (fs::exists(folder / name, ignored)) return folder / name;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored))
    if (sameName(entry.path().filename().string(), name)) return entry.path();
  return folder / name;
}

fs::path fileOf(fs::path folder, const std::vector<std::string>& names) {
  for (const std::string& name : names) folder = entryOf(folder, name);
  return folder;
}

std::vector<std::string> linesOf(std::istream&& stream) {
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(std::move(line));
  }
  return lines;
}

// The text behind "Name=", without blanks around; nothing when the line is another.
std::optional<std::string_view> valueIn(std::string_view line, std::string_view name) {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos || !sameName(Trim(line.substr(0, equals)), name)) return {};
  return Trim(line.substr(equals + 1));
}

MachineValue parsed(std::string_view text) {
  if (sameName(text.substr(0, kNumber.size()), kNumber)) {
    const std::string_view digits = text.substr(kNumber.size());
    std::uint32_t number = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    if (error == std::errc() && end == digits.data() + digits.size()) return number;
  }
  if (text.size() > 1 && text.starts_with('"') && text.ends_with('"'))
    text = text.substr(1, text.size() - 2);
  return std::string(text);
}

// Texts that would be read back differently stand in double quotes.
std::string written(const MachineValue& value) {
  if (const auto* number = std::get_if<std::uint32_t>(&value)) {
    std::array<char, 8> digits{};
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), *number, 16).ptr;
    const auto count = static_cast<std::size_t>(end - digits.data());
    return concat(kNumber, std::string(digits.size() - count, '0'),
                  std::string_view(digits.data(), count));
  }
  const std::string& text = std::get<std::string>(value);
  const bool plain = Trim(text) == text && !text.starts_with('"') &&
                     std::holds_alternative<std::string>(parsed(text));
  return plain ? text : "\"" + text + "\"";
}

bool fitsOnALine(std::string_view text) { return text.find_first_of("\r\n") == text.npos; }

}  // namespace

std::optional<MachineValue> readMachineSetting(std::string_view key, std::string_view name) {
  const std::vector<std::string> names = namesOfKey(key);
  if (names.empty()) return {};
  for (const fs::path& folder : settingFolders())
    for (const std::string& line : linesOf(std::ifstream(fileOf(folder, names))))
      if (const auto text = valueIn(line, name)) return parsed(*text);
  return {};
}

void writeMachineSetting(std::string_view key, std::string_view name, const MachineValue& value) {
  const std::vector<std::string> names = namesOfKey(key);
  const std::string text = written(value);
  if (names.empty() || name.empty() || name.find('=') != name.npos || !fitsOnALine(name) ||
      !fitsOnALine(text))
    throw RuntimeError(ErrorNumber::invalidCall);
  const fs::path file = fileOf(settingFolders().front(), names);
  std::string content;
  bool stored = false;
  for (const std::string& line : linesOf(std::istringstream(textOfFile(file)))) {
    const bool ours = !stored && valueIn(line, name).has_value();
    content += (ours ? concat(name, "=", text) : line) + "\n";
    stored = stored || ours;
  }
  if (!stored) content += concat(name, "=", text, "\n");
  using enum fs::perms;
  makeFolder(file.parent_path(), owner_all | group_read | group_exec | others_read | others_exec);
  writeFileWhole(file, content, owner_read | owner_write | group_read | others_read);
}

}  // namespace bw
