#include "records/Criteria.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "text/DateLiterals.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr int kDeepest = 32;  // parentheses within parentheses

[[noreturn]] void refuse() { throw RuntimeError(ErrorNumber::badArguments); }

bool isNameCharacter(char c) noexcept {
  return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

constexpr std::array kSigns{std::pair{std::string_view("<>"), Comparison::notEqual},
                            std::pair{std::string_view("<="), Comparison::lessOrEqual},
                            std::pair{std::string_view(">="), Comparison::greaterOrEqual},
                            std::pair{std::string_view("="), Comparison::equal},
                            std::pair{std::string_view("<"), Comparison::less},
                            std::pair{std::string_view(">"), Comparison::greater}};

// What of a text has not been read yet. Each take skips blanks, reads one thing and raises 3001
// when something else is there.
class Rest {
 public:
  explicit Rest(std::string_view text) : text_(text) {}

  bool atEnd() noexcept {
    skipBlanks();
    return text_.empty();
  }

  // Takes that word or sign if it is there.
  bool takeSign(std::string_view sign) noexcept {
    skipBlanks();
    if (!text_.starts_with(sign)) return false;
    text_.remove_prefix(sign.size());
    return true;
  }
  bool takeWord(std::string_view word) noexcept {
    skipBlanks();
    if (!sameName(text_.substr(0, nameLength()), word)) return false;
    text_.remove_prefix(word.size());
    return true;
  }

  std::string takeName() {
    if (takeSign("[")) return std::string(notEmpty(takeUpTo(']')));
    return std::string(notEmpty(take(nameLength())));
  }

  Comparison takeComparison() {
    const auto* found = std::find_if(kSigns.begin(), kSigns.end(),
                                     [&](const auto& row) { return takeSign(row.first); });
    if (found == kSigns.end()) refuse();
    return found->second;
  }

  Value takeValue() {
    if (takeSign("'")) return takeQuoted();
    if (!takeSign("#")) return takeInteger();
    const std::optional<Value> moment = parseDateLiteral(takeUpTo('#'));
    if (!moment) refuse();
    return *moment;
  }

 private:
  void skipBlanks() noexcept {
    while (!text_.empty() && text_.front() == ' ') text_.remove_prefix(1);
  }

  std::size_t nameLength() const noexcept {
    const auto* end = std::find_if_not(text_.begin(), text_.end(), isNameCharacter);
    return static_cast<std::size_t>(end - text_.begin());
  }

  std::string_view take(std::size_t count) noexcept {
    const std::string_view taken = text_.substr(0, count);
    text_.remove_prefix(taken.size());
    return taken;
  }

  // What stands in front of that character, which is taken too.
  std::string_view takeUpTo(char end) {
    const std::size_t at = text_.find(end);
    if (at == std::string_view::npos) refuse();
    const std::string_view taken = take(at);
    text_.remove_prefix(1);
    return taken;
  }

  static std::string_view notEmpty(std::string_view text) {
    if (text.empty()) refuse();
    return text;
  }

  std::string takeQuoted() {
    std::string quoted(takeUpTo('\''));
    while (text_.starts_with('\'')) {
      text_.remove_prefix(1);
      quoted += '\'';
      quoted += takeUpTo('\'');
    }
    return quoted;
  }

  // Decimals are allowed as long as they are zeros.
  std::int64_t takeInteger() {
    if (text_.starts_with('+')) {
      text_.remove_prefix(1);
      if (text_.starts_with('-')) refuse();
    }
    std::int64_t number = 0;
    const auto [end, status] = std::from_chars(text_.data(), text_.data() + text_.size(), number);
    if (status != std::errc()) refuse();
    text_.remove_prefix(static_cast<std::size_t>(end - text_.data()));
    if (text_.starts_with('.')) {
      text_.remove_prefix(1);
      text_.remove_prefix(std::min(text_.find_first_not_of('0'), text_.size()));
    }
    if (!text_.empty() && (isNameCharacter(text_.front()) || text_.front() == '.')) refuse();
    return number;
  }

  std::string_view text_;
};

Clause takeClause(Rest& rest) {
  Clause clause;
  clause.name = rest.takeName();
  clause.comparison = rest.takeComparison();
  clause.value = rest.takeValue();
  return clause;
}

bool hasOr(const Criteria& criteria) noexcept {
  return std::any_of(criteria.parts.begin(), criteria.parts.end(), [](const Criteria::Part& part) {
    return part.joint == Criteria::Joint::either || hasOr(part.group);
  });
}

void refuseOrGroupsBesideAnd(const Criteria& criteria) {
  for (std::size_t i = 1; i < criteria.parts.size(); ++i) {
    if (criteria.parts[i].joint != Criteria::Joint::both) continue;
    if (hasOr(criteria.parts[i - 1].group) || hasOr(criteria.parts[i].group)) refuse();
  }
}

Criteria takeGroup(Rest& rest, int depth) {
  if (depth > kDeepest) refuse();
  Criteria criteria;
  auto joint = Criteria::Joint::first;
  while (true) {
    Criteria::Part part;
    part.joint = joint;
    if (rest.takeSign("(")) {
      part.group = takeGroup(rest, depth + 1);
      if (!rest.takeSign(")")) refuse();
    } else {
      part.clause = takeClause(rest);
    }
    criteria.parts.push_back(std::move(part));
    if (rest.takeWord("AND"))
      joint = Criteria::Joint::both;
    else if (rest.takeWord("OR"))
      joint = Criteria::Joint::either;
    else
      break;
  }
  refuseOrGroupsBesideAnd(criteria);
  return criteria;
}

}  // namespace

Clause parseClause(std::string_view text) {
  Rest rest(text);
  Clause clause = takeClause(rest);
  if (!rest.atEnd()) refuse();
  return clause;
}

Criteria parseCriteria(std::string_view text) {
  Rest rest(text);
  if (rest.atEnd()) return {};
  Criteria criteria = takeGroup(rest, 0);
  if (!rest.atEnd()) refuse();
  return criteria;
}

std::vector<SortKey> parseSort(std::string_view text) {
  Rest rest(text);
  std::vector<SortKey> keys;
  if (rest.atEnd()) return keys;
  do {
    SortKey& key = keys.emplace_back();
    key.name = rest.takeName();
    key.descending = rest.takeWord("DESC");
    if (!key.descending) rest.takeWord("ASC");
  } while (rest.takeSign(","));
  if (!rest.atEnd()) refuse();
  return keys;
}

}  // namespace bw
