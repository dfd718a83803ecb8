#pragma once

#include <cstdint>
#include <string>

#include "core/MachineSettings.h"

namespace bw {

// Machine settings, as the rest of the program asks for them. They raise nothing; the result is a
// status: 0 on success.
inline constexpr std::int32_t kRegistrySuccess = 0;
inline constexpr std::int32_t kRegistryNotFound = 2;

// A value below the machine's root. When it is not found, `value` is left as it was.
std::int32_t RegistryReadValue(const std::string& keyName, const std::string& valueName,
                               MachineValue& value);

// A text of this installation: the path of its database, addresses of maker and sponsor. Empty when
// it is missing or no text.
std::string installationText(const std::string& valueName);

}  // namespace bw
