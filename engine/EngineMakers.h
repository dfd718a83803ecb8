#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "engine/Engine.h"

namespace bw {

// Which engine a target belongs to, and how it is opened.
struct EngineMaker {
  bool (*takes)(std::string_view target);
  bool guardedByWorkgroup;  // only whom a workgroup file beside it admits may open it
  // Raises DatabaseRefusal.
  std::unique_ptr<Engine> (*open)(const std::string& target, EngineAccess access);
  // The same, but opens what is damaged too, as far as that goes: to tell what is wrong with it.
  std::unique_ptr<Engine> (*openDamaged)(const std::string& target);
};

// Of a target as it is registered: the address of a server (see PostgresAddress.h) or the path of a
// file.
const EngineMaker& makerOf(std::string_view target) noexcept;

std::unique_ptr<Engine> openEngine(const std::string& target,
                                   EngineAccess access = EngineAccess::readWrite);

}  // namespace bw
