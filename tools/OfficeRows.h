#pragma once

#include <memory>
#include <string>

#include "data/Tables.h"
#include "engine/Engine.h"

namespace bw {

// The rows of a table in the order of its key.
std::shared_ptr<RowStore> rowsOf(Engine& engine, const SchemaTable& table);

// In what the rows of a table differ from those that are wanted, as a sentence; "" when they are
// equal.
std::string differenceOf(const RowStore& wanted, const RowStore& copied, const SchemaTable& table);

}  // namespace bw
