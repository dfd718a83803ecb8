#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace bw {

// Settings of the machine, written at installation. The key SOFTWARE\Maker\Program is the file
// "Maker/Program.ini" in the folders for system-wide settings ($XDG_CONFIG_DIRS, by default
// /etc/xdg); a line "Name=value" a value. A value is text, or a number written dword:0000002a.
// Keys and names go without regard to the case of ASCII letters.

using MachineValue = std::variant<std::string, std::uint32_t>;

// From the first folder that has it; nothing when none has, or when the file cannot be read.
std::optional<MachineValue> readMachineSetting(std::string_view key, std::string_view name);

// Into the first folder, readable by all; the file's other lines stay as they are. Raises error 76
// when it cannot be written, 5 when the key is none or a name or text does not fit on a line.
void writeMachineSetting(std::string_view key, std::string_view name, const MachineValue& value);

}  // namespace bw
