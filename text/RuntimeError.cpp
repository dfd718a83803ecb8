#include "text/RuntimeError.h"

#include <algorithm>
#include <array>
#include <utility>

namespace bw {
namespace {

using Row = std::pair<ErrorNumber, std::string_view>;

// clang-format off
constexpr std::array rows{
    Row{ErrorNumber::invalidCall, "Invalid procedure call or argument"},
    Row{ErrorNumber::overflow, "Overflow"},
    Row{ErrorNumber::outOfMemory, "Out of memory"},
    Row{ErrorNumber::typeMismatch, "Type mismatch"},
    Row{ErrorNumber::internal, "Internal error"},
    Row{ErrorNumber::fileNotFound, "File not found"},
    Row{ErrorNumber::pathNotFound, "Path not found"},
    Row{ErrorNumber::objectNotSet, "Object variable or With block variable not set"},
    Row{ErrorNumber::invalidNull, "Invalid use of Null"},
    Row{ErrorNumber::invalidPropertyValue, "Invalid property value"},
    Row{ErrorNumber::objectRequired, "Object required"},
    Row{ErrorNumber::noSuchOperation, "Object doesn't support this property or method"},
    Row{ErrorNumber::badArguments, "Arguments are of the wrong type, are out of acceptable range, or are in conflict with one another."},
    Row{ErrorNumber::noCurrentRecord, "Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a current record."},
    Row{ErrorNumber::readOnly, "Current Recordset does not support updating. This may be a limitation of the provider, or of the selected locktype."},
    Row{ErrorNumber::noSuchItem, "Item cannot be found in the collection corresponding to the requested name or ordinal."},
    Row{ErrorNumber::wrongType, "Application uses a value of the wrong type for the current operation."},
    Row{ErrorNumber::closed, "Operation is not allowed when the object is closed."},
    Row{ErrorNumber::elementNotFound, "Element not found"},
    Row{ErrorNumber::keyNotUnique, "Key is not unique in collection"},
    Row{ErrorNumber::multipleStep, "Multiple-step operation generated errors. Check each status value."},
    Row{ErrorNumber::noTransaction, "No transaction is active."},
    Row{ErrorNumber::database, "The database refused the operation."},
};
// clang-format on

}  // namespace

std::string_view errorText(ErrorNumber number) noexcept {
  const auto found =
      std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.first == number; });
  return found == rows.end() ? "Application-defined or object-defined error" : found->second;
}

RuntimeError::RuntimeError(ErrorNumber number)
    : RuntimeError(number, std::string(errorText(number))) {}

RuntimeError::RuntimeError(ErrorNumber number, const std::string& text)
    : std::runtime_error(text), number_(number) {}

}  // namespace bw
