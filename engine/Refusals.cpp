#include "engine/Refusals.h"

#include <algorithm>
#include <array>

#include "records/ColumnRules.h"
#include "text/Text.h"

namespace bw {
namespace {

std::string columnOf(Refusal refusal, std::string_view detail) {
  if (refusal == Refusal::check) return std::string(columnOfCheck(detail));
  if (refusal == Refusal::missingValue) return std::string(detail.substr(detail.find('.') + 1));
  return {};
}

}  // namespace

std::string refusalSentence(Refusal refusal, std::string_view detail) {
  switch (refusal) {
    case Refusal::duplicateKey:
      return "There is a record with the same key already.";
    case Refusal::missingParent:
      return "The record refers to another record that does not exist (any more).";
    case Refusal::inUse:
      return "This record cannot be deleted or changed: other records use it.";
    case Refusal::rule:
    case Refusal::statement:
      return std::string(detail);
    case Refusal::check:
      return checkSentence(detail);
    case Refusal::missingValue:
      return concat("A value is missing: ", detail, ".");
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
    case Refusal::unconfirmed:
      return "The disk did not confirm that this was stored. It is not known whether it is there "
             "after the next start: please look for it before you enter it again.";
    case Refusal::notOpened:
      return concat("The database file cannot be opened: ", detail);
    case Refusal::foreignPart:
      return concat("A part of the database belongs to another user: ", detail,
                    ". Close the program that this user runs, or give the file to the owner of the "
                    "database.");
    case Refusal::rolledBack:
      return "The database has undone the changes of this step. Nothing was stored.";
    case Refusal::notConnected:
      return concat("The database server cannot be reached: ", detail);
    case Refusal::lost:
      return "The connection to the database server was lost. Nothing of this step was stored: "
             "please try again in a moment.";
    case Refusal::lostSome:
      return "The connection to the database server was lost, and the last changes may be lost "
             "with "
             "it: please read the list anew and repeat what is missing.";
    case Refusal::unknown:
      return "The connection to the database server was lost while this was being stored, and the "
             "server does not answer. It is not known whether it is stored: please look for it "
             "before you enter it again.";
    case Refusal::notAllowed:
      return "The database server does not allow this to the account that this computer uses.";
    case Refusal::notCreated:
      return concat("The database file cannot be made: ", detail);
  }
  return {};
}

DatabaseRefusal::DatabaseRefusal(Refusal why, std::string_view detail)
    : RuntimeError(ErrorNumber::database, refusalSentence(why, detail)), why_(why),
      column_(columnOf(why, detail)) {}

bool isOutage(Refusal refusal) noexcept {
  constexpr std::array kOutages{Refusal::locked,     Refusal::full,         Refusal::readOnly,
                                Refusal::damaged,    Refusal::unreadable,   Refusal::unconfirmed,
                                Refusal::rolledBack, Refusal::notConnected, Refusal::lost,
                                Refusal::lostSome,   Refusal::unknown,      Refusal::notAllowed};
  return std::ranges::find(kOutages, refusal) != kOutages.end();
}

bool isLoss(Refusal refusal) noexcept {
  return refusal == Refusal::lost || refusal == Refusal::lostSome || refusal == Refusal::unknown ||
         refusal == Refusal::notConnected;
}

}  // namespace bw
