#include "platform/StatementShape.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "platform/Text.h"

namespace bw {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

bool canShare(std::string_view statement) noexcept {
  constexpr std::array<std::string_view, 3> kKinds{"SELECT ", "UPDATE ", "DELETE "};
  return std::any_of(kKinds.begin(), kKinds.end(), [&](std::string_view kind) {
    return sameName(statement.substr(0, kind.size()), kind);
  });
}

bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }

// Of a number with a fraction or an exponent, of a name.
bool goesOn(char c) noexcept {
  return isDigit(c) || c == '.' || c == '_' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
         (c & 0x80) != 0;
}

class Shaping {
 public:
  explicit Shaping(std::string_view statement) : statement_(statement) {}

  // False when it has no shape.
  bool run(StatementShape& shape) {
    while (at_ < statement_.size()) {
      const std::size_t sign = statement_.find_first_of("='[", at_);
      copyTo(shape, sign);
      if (sign == kNone) return true;
      if (statement_[sign] != '=') {
        const std::size_t end = statement_.find(statement_[sign] == '[' ? ']' : '\'', at_ + 1);
        if (end == kNone) return false;
        copyTo(shape, end + 1);
        continue;
      }
      copyTo(shape, statement_.find_first_not_of(' ', sign + 1));
      if (at_ < statement_.size() && !value(shape)) return false;
    }
    return true;
  }

 private:
  void copyTo(StatementShape& shape, std::size_t end) {
    end = std::min(end, statement_.size());
    shape.text += statement_.substr(at_, end - at_);
    at_ = end;
  }

  bool value(StatementShape& shape) {
    if (statement_[at_] == '\'') return quoted(shape);
    if (isDigit(statement_[at_])) number(shape);
    return true;
  }

  bool quoted(StatementShape& shape) {
    const std::size_t end = statement_.find('\'', at_ + 1);
    const bool doubled = end + 1 < statement_.size() && statement_[end + 1] == '\'';
    if (end == kNone || doubled) return false;
    shape.values.emplace_back(statement_.substr(at_ + 1, end - at_ - 1));
    shape.text += '?';
    at_ = end + 1;
    return true;
  }

  void number(StatementShape& shape) {
    const char* end = statement_.data() + statement_.size();
    std::int64_t number = 0;
    const auto [behind, error] = std::from_chars(statement_.data() + at_, end, number);
    if (error != std::errc() || (behind != end && goesOn(*behind))) return;
    shape.values.emplace_back(number);
    shape.text += '?';
    at_ = static_cast<std::size_t>(behind - statement_.data());
  }

  std::string_view statement_;
  std::size_t at_ = 0;
};

}  // namespace

StatementShape shapeOf(std::string_view statement) {
  StatementShape shape;
  if (!canShare(statement)) return shape;
  shape.text.reserve(statement.size());
  if (!Shaping(statement).run(shape) || shape.values.empty()) return {};
  return shape;
}

}  // namespace bw
