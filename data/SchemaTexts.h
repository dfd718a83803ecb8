#pragma once

#include <string_view>

namespace bw {

// The files schema.sql and lookups.sql as they stand.
extern const std::string_view kSchemaText;
extern const std::string_view kLookupsText;

}  // namespace bw
