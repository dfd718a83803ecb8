#pragma once

#include <string>
#include <vector>

#include "data/Dialect.h"
#include "data/Tables.h"

namespace bw {

// The statements that make the tables of an empty database with their indexes and guards.
std::vector<std::string> definitionOf(const Dialect& dialect);

// What a column's rows meet, as a condition on its name.
std::string conditionOf(const Dialect& dialect, const SchemaColumn& column);

}  // namespace bw
