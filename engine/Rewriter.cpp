#include "engine/Rewriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "engine/StatementCharacters.h"
#include "text/DateLiterals.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

enum class Fault { quote, bracket, date, missing, comment, sign, parameter, second };

[[noreturn]] void refuse(Fault fault) {
  constexpr std::array<const char*, 8> kSentences{
      "Syntax error in string: a quote is not closed.",
      "Syntax error in name: a bracket is not closed.",
      "Syntax error in date in query expression.",
      kDateMissing,
      "Syntax error in query expression: comments are not allowed.",
      "Syntax error in query expression: a character is not allowed.",
      "No value given for one or more required parameters.",
      "Syntax error: characters found after the end of the statement."};
  throw RuntimeError(ErrorNumber::database, kSentences[static_cast<std::size_t>(fault)]);
}

// Characters outside quotes and brackets that are not simply copied.
constexpr std::array<bool, 256> kSpecial = [] {
  std::array<bool, 256> special{};
  for (const char c : std::string_view("'[#;-/\"`?:@$=\0", 14))
    special[static_cast<unsigned char>(c)] = true;
  return special;
}();

struct Moment {
  std::string_view type;
  std::string iso;
};

Moment momentOf(std::string_view literal) {
  const std::optional<Value> moment = parseDateLiteral(literal);
  if (!moment) refuse(Trim(literal).empty() ? Fault::missing : Fault::date);
  if (const auto* date = std::get_if<Date>(&*moment)) return {"DATE", isoDate(*date)};
  if (const auto* time = std::get_if<TimeOfDay>(&*moment)) return {"TIME", isoTime(*time)};
  return {"TIMESTAMP", isoDateTime(std::get<DateTime>(*moment))};
}

class Scan {
 public:
  Scan(std::string_view text, SqlDialect dialect)
      : text_(text), isPostgres_(dialect == SqlDialect::postgres) {
    out_.text.reserve(text.size() + 16);
  }

  EngineStatement run() {
    copyHead();
    while (at_ < text_.size()) {
      copyPlain();
      if (at_ == text_.size()) break;
      if (at_ == values_)
        copyValues();
      else if (!special())
        break;
    }
    if (!limit_.empty()) {
      put(" LIMIT ");
      put(limit_);
    }
    if (!shares_ || out_.values.empty()) out_.shape.clear();
    return std::move(out_);
  }

 private:
  char peek(std::size_t ahead) const noexcept {
    return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0';
  }

  void put(std::string_view piece) {
    out_.text += piece;
    if (shares_) out_.shape += piece;
  }

  void putValue(StatementValue value, std::string_view literal) {
    out_.text += literal;
    out_.values.push_back(std::move(value));
    out_.shape += isPostgres_ ? concat("$", out_.values.size()) : "?";
  }

  void copy(std::size_t end) {
    put(text_.substr(at_, end - at_));
    at_ = end;
  }

  std::size_t behindBlanks(std::size_t at) const noexcept {
    while (at < text_.size() && isBlank(text_[at])) ++at;
    return at;
  }
  std::size_t behindName(std::size_t at) const noexcept {
    while (at < text_.size() && isNameCharacter(text_[at])) ++at;
    return at;
  }

  // The statement's kind, and the TOP n behind SELECT, which becomes the limit.
  void copyHead() {
    constexpr std::array<std::string_view, 3> kSharing{"SELECT", "UPDATE", "DELETE"};
    const std::size_t select = behindBlanks(0);
    const std::size_t selectEnd = behindName(select);
    values_ = startOfValues(text_.substr(select, selectEnd - select));
    const auto* kind = std::ranges::find_if(kSharing, [&](std::string_view one) {
      return sameName(text_.substr(select, selectEnd - select), one);
    });
    shares_ = kind != kSharing.end();
    if (shares_) out_.shape.reserve(text_.size());
    if (kind != kSharing.begin()) return;
    const std::size_t top = behindBlanks(selectEnd);
    const std::size_t topEnd = behindName(top);
    if (!sameName(text_.substr(top, topEnd - top), "TOP")) return;
    const std::size_t count = behindBlanks(topEnd);
    const std::size_t countEnd = behindName(count);
    const std::string_view digits = text_.substr(count, countEnd - count);
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), isDigit)) return;
    if (countEnd < text_.size() && text_[countEnd] == '.') return;
    copy(selectEnd);
    at_ = countEnd;
    limit_ = digits;
  }

  // Where the values of an insert begin that a server takes once for all of its shape; behind the
  // statement's end for every other statement.
  std::size_t startOfValues(std::string_view word) const {
    constexpr std::string_view kValues = " VALUES (";
    const std::size_t at = text_.find(kValues);
    const bool hasShape = isPostgres_ && sameName(word, "INSERT") && at < text_.find('\'');
    return hasShape ? at + kValues.size() : text_.size();
  }

  // One row of plain values; all else has no shape.
  void copyValues() {
    values_ = text_.size();
    shares_ = true;
    out_.shape = out_.text;
    for (bool more = true; more && shares_; more = takeComma()) {
      copy(behindBlanks(at_));
      const std::size_t before = at_;
      if (sameName(text_.substr(at_, 4), "NULL"))
        copy(at_ + 4);
      else
        value();
      shares_ = shares_ && at_ != before;
      copy(behindBlanks(at_));
    }
    shares_ = shares_ && peek(0) == ')' && text_.find_first_not_of("; ", at_ + 1) == text_.npos;
  }
  bool takeComma() {
    if (peek(0) != ',') return false;
    copy(at_ + 1);
    return true;
  }

  void copyPlain() {
    std::size_t end = at_;
    while (end < text_.size() && end != values_ &&
           !kSpecial[static_cast<unsigned char>(text_[end])])
      ++end;
    copy(end);
  }

  // The closing character's place, from the opening one on.
  std::size_t closing(char close, Fault fault) const {
    const std::size_t end = text_.find(close, at_ + 1);
    if (end == std::string_view::npos) refuse(fault);
    return end;
  }

  // False at the statement's end.
  bool special() {
    switch (text_[at_]) {
      case '\'':  // a doubled quote reads as two texts side by side, which copies the same
        copy(closing('\'', Fault::quote) + 1);
        return true;
      case '[':
        name();
        return true;
      case '#':
        put(literalOf(moment()));
        return true;
      case '=':
        copy(behindBlanks(at_ + 1));
        if (shares_) value();
        return true;
      case ';':
        if (behindBlanks(at_ + 1) != text_.size()) refuse(Fault::second);
        return false;
      case '-':
        if (peek(1) == '-') refuse(Fault::comment);
        break;
      case '/':
        if (peek(1) == '*') refuse(Fault::comment);
        break;
      case '?':
        refuse(Fault::parameter);
      case ':':
      case '@':
      case '$':
        if (isNameCharacter(peek(1))) refuse(Fault::parameter);
        break;
      default:
        refuse(Fault::sign);
    }
    copy(at_ + 1);
    return true;
  }

  void name() {
    const std::size_t end = closing(']', Fault::bracket) + 1;
    if (!isPostgres_) return copy(end);
    std::string name(text_.substr(at_ + 1, end - at_ - 2));
    if (name.find('"') != std::string::npos) refuse(Fault::sign);
    makeLower(name);
    put(concat("\"", name, "\""));
    at_ = end;
  }

  Moment moment() {
    const std::size_t end = closing('#', Fault::date);
    Moment moment = momentOf(text_.substr(at_ + 1, end - at_ - 1));
    at_ = end + 1;
    return moment;
  }

  std::string literalOf(const Moment& moment) const {
    return concat(isPostgres_ ? moment.type : "", isPostgres_ ? " '" : "'", moment.iso, "'");
  }

  // What stands behind an equals sign, unless it is more than a plain value.
  void value() {
    const char first = peek(0);
    if (first == '#') {
      const Moment value = moment();
      putValue(value.iso, literalOf(value));
    } else if (first == '\'') {
      quoted();
    } else if (isDigit(first)) {
      number();
    }
  }

  void quoted() {
    const std::size_t end = closing('\'', Fault::quote) + 1;
    if (end < text_.size() && text_[end] == '\'') {  // a quote within the text
      shares_ = false;
      return;
    }
    putValue(std::string(text_.substr(at_ + 1, end - at_ - 2)), text_.substr(at_, end - at_));
    at_ = end;
  }

  void number() {
    const char* end = text_.data() + text_.size();
    std::int64_t number = 0;
    const auto [behind, error] = std::from_chars(text_.data() + at_, end, number);
    if (error != std::errc()) return;
    const auto next = static_cast<std::size_t>(behind - text_.data());
    // A fraction, an exponent, a name.
    if (behind != end && (*behind == '.' || isNameCharacter(*behind))) return;
    putValue(number, text_.substr(at_, next - at_));
    at_ = next;
  }

  std::string_view text_;
  bool isPostgres_;
  std::size_t at_ = 0;
  EngineStatement out_;
  std::string_view limit_;
  std::size_t values_ = 0;  // of an insert
  bool shares_ = false;
};

}  // namespace

namespace {

// The place of the quote that ends the text begun at `open`.
std::size_t endOfText(std::string_view statement, std::size_t open) {
  std::size_t end = statement.find('\'', open + 1);
  while (end != std::string_view::npos && statement.substr(end + 1).starts_with('\''))
    end = statement.find('\'', end + 2);
  return end;
}

bool followsAValue(std::string_view rest) {
  const std::string_view next = Trim(rest);
  return next.empty() || next.starts_with(',') || next.starts_with(')') ||
         next.starts_with("WHERE ");
}

}  // namespace

bool hasCutText(std::string_view statement) {
  for (std::size_t open = statement.find('\''); open != std::string_view::npos;) {
    const std::size_t end = endOfText(statement, open);
    if (end == std::string_view::npos || !followsAValue(statement.substr(end + 1))) return true;
    open = statement.find('\'', end + 1);
  }
  return false;
}

EngineStatement rewriteStatement(std::string_view statement, SqlDialect dialect) {
  // Within quotes too: the engine would take it for the end of the statement.
  if (statement.find('\0') != std::string_view::npos) refuse(Fault::sign);
  return Scan(statement, dialect).run();
}

}  // namespace bw
