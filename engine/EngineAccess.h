#pragma once

#include <cstdint>

namespace bw {

// What a connection may do. With readOnly the engine itself refuses every write
// (Refusal::readOnly).
enum class EngineAccess : std::uint8_t { readWrite, readOnly };

}  // namespace bw
