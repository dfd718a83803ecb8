#include "core/ApoyoRegistry.h"

namespace bw {

std::int32_t RegistryReadValue(const std::string& keyName, const std::string& valueName,
                               MachineValue& value) {
  const auto found = readMachineSetting(keyName, valueName);
  if (!found) return kRegistryNotFound;
  value = *found;
  return kRegistrySuccess;
}

}  // namespace bw
