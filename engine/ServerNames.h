#pragma once

#include <string_view>

namespace bw {

// What an office's database on a server has besides the tables of an office.

// Begins the names of columns that no result shows.
inline constexpr std::string_view kHiddenColumn = "bw_";

// A row a station that has stored something: the latest step that is stored, which tells what
// became of a commit whose answer was lost.
inline constexpr std::string_view kDesksStatement =
    "CREATE TABLE bw_desks (token text PRIMARY KEY, step bigint NOT NULL, "
    "used timestamptz NOT NULL)";

// On which the stations tell each other the tables that a commit has changed, parted by blanks.
inline constexpr std::string_view kNewsChannel = "bw_changes";

}  // namespace bw
