#include "platform/RowStore.h"

#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace bw {

std::optional<std::size_t> RowStore::find(std::string_view name) const noexcept {
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (sameName(columns[i].name(), name)) return i;
  return std::nullopt;
}

std::size_t RowStore::indexOf(std::string_view name) const {
  const auto found = find(name);
  if (!found) throw RuntimeError(ErrorNumber::noSuchItem);
  return *found;
}

std::size_t RowStore::bytes() const noexcept {
  std::size_t total = 0;
  for (const Column& column : columns) total += column.bytes();
  return total;
}

}  // namespace bw
