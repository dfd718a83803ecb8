#pragma once

#include <string>
#include <string_view>

namespace bw {

// Why an engine refused, whichever engine it is.
enum class Refusal {
  duplicateKey,
  missingParent,
  inUse,
  check,         // the detail is the constraint's name
  missingValue,  // the detail is table and column
  locked,
  full,
  readOnly,
  damaged,
  unreadable,
  notOpened,   // the detail is the reason
  notCreated,  // the detail is the reason
  rolledBack,
};

// The sentence for the user. Checks are told in the words of their rule (ColumnRules.h).
std::string refusalSentence(Refusal refusal, std::string_view detail = {});

}  // namespace bw
