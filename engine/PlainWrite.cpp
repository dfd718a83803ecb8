#include "engine/PlainWrite.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "engine/StatementCharacters.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

// Words that no write of the program has behind its first two.
constexpr std::array<std::string_view, 16> kForeign{
    "SELECT", "UNION",     "INTERSECT", "EXCEPT",  "WITH",   "TABLE",  "JOIN", "FROM",
    "USING",  "RETURNING", "ON",        "REPLACE", "EXISTS", "PRAGMA", "IN",   "ATTACH"};

// Words that may stand in front of a bracket; any other would be the name of a function.
constexpr std::array<std::string_view, 5> kBeforeBracket{"VALUES", "AND", "OR", "NOT", "WHERE"};

[[noreturn]] void refuse(std::string_view what) {
  throw RuntimeError(ErrorNumber::database,
                     concat("Syntax error: ", what, " cannot stand in a statement that writes."));
}

bool isOneOf(std::string_view word, std::span<const std::string_view> words) {
  return std::ranges::any_of(words, [word](std::string_view one) { return sameName(one, word); });
}

// Reads a statement word by word, over texts, dates and bracketed names.
class WriteReader {
 public:
  explicit WriteReader(std::string_view text) : text_(text) {}

  void check() {
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (isNameCharacter(c))
        word();
      else if (c == '\'')
        pass('\'');
      else if (c == '#')
        pass('#');
      else if (c == '[')
        name();
      else
        sign(c);
    }
  }

 private:
  void word() {
    std::size_t end = at_;
    while (end < text_.size() && isNameCharacter(text_[end])) ++end;
    const std::string_view word = text_.substr(at_, end - at_);
    at_ = end;
    if (end < text_.size() && text_[end] == '\'') refuse(concat("a text behind ", word));
    if (isEnded_) refuse(word);
    if (++words_ > 2 && isOneOf(word, kForeign)) refuse(word);
    if (sameName(word, "VALUES") && std::exchange(hasValues_, true)) refuse("a second VALUES");
    word_ = word;
  }

  void pass(char close) {
    if (isEnded_) refuse("a text behind the values");
    const std::size_t end = text_.find(close, at_ + 1);
    at_ = end == std::string_view::npos ? text_.size() : end + 1;
    word_ = {};
  }

  void name() {
    pass(']');
    word_ = kName;
    ++words_;
  }

  void sign(char c) {
    ++at_;
    if (isBlank(c)) return;
    if (isEnded_ && c != ';') refuse("more than one row");
    if (c == '(')
      open();
    else if (c == ')' && --depth_ == 0 && hasValues_)
      isEnded_ = true;
    word_ = {};
  }

  // Behind the table of an insert stand its columns.
  void open() {
    constexpr int kTable = 3;
    const bool isFunction =
        !word_.empty() && words_ != kTable && !isOneOf(word_, kBeforeBracket) && !isNumber(word_);
    if (isFunction) refuse(concat("the function ", word_));
    ++depth_;
  }

  static bool isNumber(std::string_view word) { return std::ranges::all_of(word, isDigit); }

  static constexpr std::string_view kName = "in brackets";

  std::string_view text_;
  std::size_t at_ = 0;
  int words_ = 0;
  std::string_view word_;  // right in front, but for blanks
  int depth_ = 0;
  bool hasValues_ = false;
  bool isEnded_ = false;  // behind the row of an insert
};

}  // namespace

void requirePlainWrite(std::string_view statement) { WriteReader(statement).check(); }

}  // namespace bw
