#include "engine/LookedUpConditions.h"

#include <algorithm>
#include <array>

#include "records/Criteria.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

// Takes a word, and the blanks before it, off the front of a text.
bool takeWord(std::string_view& text, std::string_view word) {
  const std::size_t from = std::min(text.find_first_not_of(kBlanks), text.size());
  const std::string_view rest = text.substr(from);
  if (!sameName(rest.substr(0, word.size()), word)) return false;
  const std::string_view behind = rest.substr(word.size());
  if (!behind.empty() && kBlanks.find(behind.front()) == std::string_view::npos) return false;
  text = behind;
  return true;
}

// What stands behind WHERE, "" without one.
std::optional<std::string_view> conditionsOf(const LookedUpQuery& query, std::string_view text) {
  for (const std::string_view word :
       {std::string_view("SELECT"), std::string_view("*"), std::string_view("FROM"), query.name})
    if (!takeWord(text, word)) return std::nullopt;
  if (text.find_first_not_of(kBlanks) == std::string_view::npos) return std::string_view();
  if (!takeWord(text, "WHERE")) return std::nullopt;
  return text;
}

std::string momentLiteral(std::string iso) {
  std::replace(iso.begin(), iso.end(), '-', '/');
  return concat("#", iso, "#");
}

// Nothing for texts: the engine compares them by rules of each column.
struct Literal {
  std::optional<std::string> operator()(std::monostate) const { return std::nullopt; }
  std::optional<std::string> operator()(const std::string&) const { return std::nullopt; }
  std::optional<std::string> operator()(std::int64_t number) const { return concat(number); }
  std::optional<std::string> operator()(Date date) const { return momentLiteral(isoDate(date)); }
  std::optional<std::string> operator()(TimeOfDay time) const {
    return momentLiteral(isoTime(time));
  }
  std::optional<std::string> operator()(DateTime moment) const {
    return momentLiteral(isoDateTime(moment));
  }
};

std::string_view signOf(Comparison comparison) {
  constexpr std::array<std::string_view, 6> kSigns{"=", "<>", "<", "<=", ">", ">="};
  return kSigns[static_cast<std::size_t>(comparison)];
}

const LookUpTable* tableOf(const LookedUpQuery& query, std::string_view alias) {
  const auto found = std::find_if(query.tables.begin(), query.tables.end(),
                                  [&](const LookUpTable& table) { return table.alias == alias; });
  return found == query.tables.end() ? nullptr : &*found;
}

// A condition on a column that is looked up becomes one on the key.
std::optional<std::string> conditionOf(const LookedUpQuery& query, const Clause& clause) {
  const auto field =
      std::find_if(query.fields.begin(), query.fields.end(),
                   [&](const LookUpField& one) { return sameName(one.shown(), clause.name); });
  const std::optional<std::string> literal = std::visit(Literal{}, clause.value);
  if (field == query.fields.end() || !literal) return std::nullopt;
  const std::string compared =
      concat("[", field->column, "] ", signOf(clause.comparison), " ", *literal);
  if (field->from == query.alias) return compared;
  const LookUpTable* table = tableOf(query, field->from);
  if (table == nullptr || table->from != query.alias) return std::nullopt;
  return concat("[", table->foreign, "] IN (SELECT [", table->key, "] FROM [", table->table,
                "] WHERE ", compared, ")");
}

bool namesKeysFront(const LookedUpQuery& query, const Criteria& criteria) {
  return std::any_of(criteria.parts.begin(), criteria.parts.end(), [&](const auto& part) {
    return part.clause.comparison == Comparison::equal &&
           sameName(part.clause.name, query.key.front());
  });
}

std::optional<Criteria> parsed(std::string_view conditions) {
  try {
    return parseCriteria(conditions);
  } catch (const RuntimeError&) {
    return std::nullopt;  // the engine knows more than criteria do
  }
}

std::optional<std::string> onBase(const LookedUpQuery& query, const Criteria& criteria) {
  if (namesKeysFront(query, criteria)) return std::nullopt;
  std::string conditions;
  for (const Criteria::Part& part : criteria.parts) {
    if (!part.group.empty() || part.joint == Criteria::Joint::either) return std::nullopt;
    const std::optional<std::string> condition = conditionOf(query, part.clause);
    if (!condition) return std::nullopt;
    conditions += concat(conditions.empty() ? " WHERE " : " AND ", *condition);
  }
  return conditions;
}

}  // namespace

std::optional<LookedUpStatement> parseLookedUp(const LookedUpQuery& query,
                                               std::string_view statement) {
  const std::optional<std::string_view> text = conditionsOf(query, statement);
  const std::optional<Criteria> criteria = text ? parsed(*text) : std::nullopt;
  if (!criteria) return std::nullopt;
  return LookedUpStatement{onBase(query, *criteria)};
}

}  // namespace bw
