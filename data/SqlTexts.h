#pragma once

#include <string_view>

namespace bw {

// The files queries.sql and lookups.sql as they stand.
extern const std::string_view kQueriesText;
extern const std::string_view kLookupsText;

}  // namespace bw
