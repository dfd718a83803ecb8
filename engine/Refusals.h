#pragma once

#include <string>
#include <string_view>

#include "text/RuntimeError.h"

namespace bw {

// Why an engine refused, whichever engine it is.
enum class Refusal {
  duplicateKey,
  missingParent,
  inUse,
  rule,          // of the description: the detail is its sentence
  check,         // the detail is the constraint's name
  missingValue,  // the detail is table and column
  locked,
  full,
  readOnly,
  damaged,
  unreadable,
  unconfirmed,  // it failed so late that it may be found stored after the next start
  notOpened,    // the detail is the reason
  notCreated,   // the detail is the reason
  foreignPart,  // of the database, which another user owns: the detail is its path
  rolledBack,
  notConnected,  // the detail is the reason
  lost,          // the connection to a server; nothing of the step is stored
  lostSome,      // the same, and the last of what was stored may have gone with it
  unknown,       // it was lost at a commit, and nothing tells what became of that
  notAllowed,    // to the account
  statement,     // it cannot be understood: the detail is the engine's text
};

// The sentence for the user. Checks are told in the words of their rule (ColumnRules.h).
std::string refusalSentence(Refusal refusal, std::string_view detail = {});

// What an engine refuses (error `database`), with its sentence. Names are spelled as in the
// description of the tables.
class DatabaseRefusal : public RuntimeError {
 public:
  explicit DatabaseRefusal(Refusal why, std::string_view detail = {});

  Refusal why() const noexcept { return why_; }
  // That a check or a missing value is about; "" for none.
  const std::string& column() const noexcept { return column_; }

 private:
  Refusal why_;
  std::string column_;
};

// Whether it is the fault of no statement: others would be refused as well.
bool isOutage(Refusal refusal) noexcept;
// Whether the connection to a server broke or could not be made.
bool isLoss(Refusal refusal) noexcept;

}  // namespace bw
