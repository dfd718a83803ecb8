#include "core/ApoyoRegistry.h"

namespace bw {

std::int32_t RegistryReadValue(const std::string& keyName, const std::string& valueName,
                               MachineValue& value) {
  const auto found = readMachineSetting(keyName, valueName);
  if (!found) return kRegistryNotFound;
  value = *found;
  return kRegistrySuccess;
}

std::string installationText(const std::string& valueName) {
  MachineValue value;
  RegistryReadValue("SOFTWARE\\Fenmoor Systems\\Brantiwell PC", valueName, value);
  const auto* text = std::get_if<std::string>(&value);
  return text == nullptr ? std::string() : *text;
}

}  // namespace bw
