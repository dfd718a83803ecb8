#include "engine/Refusals.h"

#include "records/ColumnRules.h"

namespace bw {

std::string refusalSentence(Refusal refusal, std::string_view detail) {
  switch (refusal) {
    case Refusal::duplicateKey:
      return "There is a record with the same key already.";
    case Refusal::missingParent:
      return "The record refers to another record that does not exist (any more).";
    case Refusal::inUse:
      return "This record cannot be deleted or changed: other records use it.";
    case Refusal::check:
      return checkSentence(detail);
    case Refusal::missingValue:
      return "A value is missing: " + std::string(detail) + ".";
    case Refusal::locked:
      return "The database is locked by another station. Please try again in a moment.";
    case Refusal::full:
      return "The disk is full. Nothing was stored.";
    case Refusal::readOnly:
      return "The database cannot be written: its file or folder is read-only.";
    case Refusal::damaged:
      return "The database file is damaged or is no database.";
    case Refusal::unreadable:
      return "The database file cannot be read or written.";
    case Refusal::notOpened:
      return "The database file cannot be opened: " + std::string(detail);
    case Refusal::rolledBack:
      return "The database has undone the changes of this step. Nothing was stored.";
    case Refusal::notCreated:
      return "The database file cannot be made: " + std::string(detail);
  }
  return {};
}

}  // namespace bw
