#include "engine/PostgresRefusals.h"

#include <algorithm>
#include <array>

#include "text/Text.h"

namespace bw {
namespace {

constexpr std::array<std::string_view, 3> kKinds{"INSERT", "UPDATE", "DELETE"};
constexpr std::size_t kDelete = 2;

// The place of the statement's kind.
std::size_t kindOf(std::string_view statement) noexcept {
  const std::string_view word =
      statement.substr(std::min(statement.find_first_not_of(" \t\r\n"), statement.size()), 6);
  const auto* kind =
      std::ranges::find_if(kKinds, [word](std::string_view one) { return sameName(one, word); });
  return static_cast<std::size_t>(kind - kKinds.begin());
}

// The comment on an object that an expression finds, "" without one.
std::string comment(PostgresLink& link, const std::string& object, std::string_view catalogue) {
  const PostgresResult found =
      link.query(concat("SELECT obj_description(", object, ", '", catalogue, "')"));
  return PQntuples(found.get()) == 0 ? std::string() : PQgetvalue(found.get(), 0, 0);
}

std::string lineOf(std::string_view text, std::size_t number) {
  for (; number > 0; --number) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) return {};
    text.remove_prefix(end + 1);
  }
  return std::string(text.substr(0, text.find('\n')));
}

// The sentence of a relation or key for a kind of statement, "" without one.
std::string sentenceOf(PostgresLink& link, const PostgresFailure& failure, std::size_t kind) {
  if (failure.constraint.empty()) return {};
  const std::string object =
      concat("(SELECT oid FROM pg_constraint WHERE conname = ", link.quoted(failure.constraint),
             " AND conrelid = to_regclass(", link.quoted(failure.table), "))");
  return lineOf(comment(link, object, "pg_constraint"), kind);
}

DatabaseRefusal told(const std::string& sentence, Refusal otherwise) {
  return sentence.empty() ? DatabaseRefusal(otherwise) : DatabaseRefusal(Refusal::rule, sentence);
}

// The name in the case in which it stands among others.
std::string inItsCase(std::string_view names, const std::string& name) {
  constexpr std::string_view kBetween = " (),";
  while (!names.empty()) {
    const std::size_t end = std::min(names.find_first_of(kBetween), names.size());
    if (sameName(names.substr(0, end), name)) return std::string(names.substr(0, end));
    names.remove_prefix(std::min(names.find_first_not_of(kBetween, end), names.size()));
  }
  return name;
}

DatabaseRefusal missingValue(PostgresLink& link, const PostgresFailure& failure) {
  const std::string names =
      comment(link, concat("to_regclass(", link.quoted(failure.table), ")"), "pg_class");
  return DatabaseRefusal(Refusal::missingValue, concat(inItsCase(names, failure.table), ".",
                                                       inItsCase(names, failure.column)));
}

struct State {
  std::string_view start;  // of the SQLSTATE
  Refusal refusal;
};
constexpr std::array kStates{
    State{"55P03", Refusal::locked},     State{"40", Refusal::locked},
    State{"53100", Refusal::full},       State{"25006", Refusal::readOnly},
    State{"42501", Refusal::notAllowed}, State{"58", Refusal::unreadable},
    State{"XX", Refusal::damaged},
};

constexpr const char* kNoSuchValue =
    "A number, date or text is not one that its column can hold: it is too large, too small, or "
    "written in another way.";

}  // namespace

DatabaseRefusal refusalOf(PostgresLink& link, const PostgresFailure& failure,
                          std::string_view statement) {
  const std::size_t kind = kindOf(statement);
  if (failure.state == "23505") return told(sentenceOf(link, failure, kind), Refusal::duplicateKey);
  if (failure.state == "23503")
    return told(sentenceOf(link, failure, kind),
                kind == kDelete ? Refusal::inUse : Refusal::missingParent);
  if (failure.state == "23514") return DatabaseRefusal(Refusal::check, failure.constraint);
  if (failure.state == "23502") return missingValue(link, failure);
  if (failure.state.starts_with("22")) return DatabaseRefusal(Refusal::rule, kNoSuchValue);
  const auto* state = std::ranges::find_if(
      kStates, [&](const State& one) { return failure.state.starts_with(one.start); });
  if (state != kStates.end()) return DatabaseRefusal(state->refusal);
  return DatabaseRefusal(Refusal::statement, failure.text);
}

}  // namespace bw
