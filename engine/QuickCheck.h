#pragma once

#include <string>

struct sqlite3;

namespace bw {

// What is wrong with the ends of an embedded database that every use of it begins at: the file's
// size, and the root and the first leaf of each table and index. A sentence, "" when nothing was
// found. Takes two milliseconds whatever the size of the file.
// Found are pages that are no pages of their tree, rows that are rows of another table, and index
// entries that tell of no row. Tables of like columns that stand in each other's place are told by
// the rows that name theirs, as long as some of these would name none otherwise.
std::string findQuickly(sqlite3& database);

}  // namespace bw
