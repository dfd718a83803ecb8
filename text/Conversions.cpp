#include "text/Conversions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

// Reads a text character by character; '\0' stands for its end.
class Reader {
 public:
  enum class Blanks { matter, skipped };
  Reader(std::string_view text, Blanks blanks) : text_(text), blanks_(blanks) { settle(); }

  char peek() const noexcept { return at_ < text_.size() ? text_[at_] : '\0'; }
  bool atEnd() const noexcept { return at_ >= text_.size(); }
  void next() noexcept {
    ++at_;
    settle();
  }
  bool take(char lower) noexcept {
    if (atEnd() || (peek() | 0x20) != (lower | 0x20)) return false;
    next();
    return true;
  }

 private:
  void settle() noexcept {
    if (blanks_ == Blanks::matter) return;
    while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t' || text_[at_] == '\n'))
      ++at_;
  }

  std::string_view text_;
  Blanks blanks_;
  std::size_t at_ = 0;
};

// Collects the digits of a decimal number, however many, in a form that from_chars reads.
class Decimal {
 public:
  void negate() noexcept { put('-'); }
  void digit(char c, bool behindPoint) noexcept {
    any_ = true;
    if (behindPoint) --exponent_;
    if (significant_ == 0 && c == '0') return;
    if (significant_ < kKept) {
      put(c);
      ++significant_;
    } else {
      ++exponent_;
    }
  }
  bool hasDigits() const noexcept { return any_; }
  void scale(int exponent) noexcept { exponent_ += exponent; }

  // Infinite when it is too large for a double.
  double value() noexcept {
    if (significant_ == 0) return 0;
    put('e');
    char* end =
        std::to_chars(buffer_.data() + used_, buffer_.data() + buffer_.size(), exponent_).ptr;
    double number = 0;
    const auto status = std::from_chars(buffer_.data(), end, number).ec;
    if (status != std::errc::result_out_of_range) return number;
    if (exponent_ + significant_ < 0) return 0;
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    return buffer_[0] == '-' ? -kInfinity : kInfinity;
  }

 private:
  static constexpr std::int64_t kKept = 40;

  void put(char c) noexcept { buffer_[used_++] = c; }

  std::array<char, 72> buffer_{};
  std::size_t used_ = 0;
  std::int64_t significant_ = 0;
  std::int64_t exponent_ = 0;
  bool any_ = false;
};

int digitValue(char c) noexcept {
  if (isDigit(c)) return c - '0';
  const char lower = static_cast<char>(c | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 99;
}

// What follows "&": H or O and digits. Four hexadecimal digits are a 16-bit number, eight a 32-bit
// one, with their sign: &HFFFF is -1.
std::optional<double> readBased(Reader& reader) noexcept {
  int base = 0;
  if (reader.take('h'))
    base = 16;
  else if (reader.take('o'))
    base = 8;
  else
    return std::nullopt;
  std::uint64_t number = 0;
  bool any = false;
  for (; !reader.atEnd() && digitValue(reader.peek()) < base; reader.next()) {
    any = true;
    if (number > std::numeric_limits<std::uint32_t>::max()) continue;
    number = number * static_cast<std::uint64_t>(base) +
             static_cast<std::uint64_t>(digitValue(reader.peek()));
  }
  if (!any) return std::nullopt;
  if (number <= std::numeric_limits<std::uint16_t>::max()) return static_cast<std::int16_t>(number);
  if (number <= std::numeric_limits<std::uint32_t>::max()) return static_cast<std::int32_t>(number);
  return std::numeric_limits<double>::infinity();
}

// "e5", "D-3"; without digits it is no exponent, and the reader stays where it is.
int readExponent(Reader& reader) noexcept {
  constexpr int kEnough = 100000;
  Reader ahead = reader;
  if (!ahead.take('e') && !ahead.take('d')) return 0;
  const bool negative = ahead.peek() == '-';
  if (negative || ahead.peek() == '+') ahead.next();
  if (!isDigit(ahead.peek())) return 0;
  int exponent = 0;
  for (; isDigit(ahead.peek()); ahead.next())
    if (exponent < kEnough) exponent = exponent * 10 + (ahead.peek() - '0');
  reader = ahead;
  return negative ? -exponent : exponent;
}

// Digits of the whole part; with `commas`, also those behind a comma.
void readWhole(Reader& reader, bool commas, Decimal& decimal) noexcept {
  while (isDigit(reader.peek()) || (commas && decimal.hasDigits() && reader.peek() == ',')) {
    if (reader.peek() == ',') {
      Reader ahead = reader;
      ahead.next();
      if (!isDigit(ahead.peek())) return;
      reader = ahead;
    }
    decimal.digit(reader.peek(), false);
    reader.next();
  }
}

// As long a number as there is; nothing when there is none.
std::optional<double> readNumber(Reader& reader, bool commas) noexcept {
  if (reader.peek() == '&') {
    reader.next();
    return readBased(reader);
  }
  Decimal decimal;
  if (reader.peek() == '-') decimal.negate();
  if (reader.peek() == '-' || reader.peek() == '+') reader.next();
  readWhole(reader, commas, decimal);
  if (reader.peek() == '.')
    for (reader.next(); isDigit(reader.peek()); reader.next()) decimal.digit(reader.peek(), true);
  if (!decimal.hasDigits()) return std::nullopt;
  decimal.scale(readExponent(reader));
  return decimal.value();
}

double requireNumber(std::string_view text) {
  const std::optional<double> number = parseNumber(text);
  if (!number) throw RuntimeError(ErrorNumber::typeMismatch);
  return *number;
}

template <class Integer, class Number>
Integer inRange(Number number) {
  // Written so that what is no number fails too.
  if (!(number >= std::numeric_limits<Integer>::min() &&
        number <= std::numeric_limits<Integer>::max()))
    throw RuntimeError(ErrorNumber::overflow);
  return static_cast<Integer>(number);
}

std::string significant(double number, int digits) {
  if (number == 0) return "0";  // a negative zero too
  std::array<char, 40> buffer{};
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                     std::chars_format::general, digits);
  std::string text(buffer.data(), written.ptr);
  if (const std::size_t exponent = text.find('e'); exponent != std::string::npos)
    text[exponent] = 'E';
  return text;
}

}  // namespace

std::int16_t toInt16(std::string_view text) { return toInt16(requireNumber(text)); }
std::int32_t toInt32(std::string_view text) { return toInt32(requireNumber(text)); }

float toSingle(std::string_view text) {
  const double number = requireNumber(text);
  if (std::abs(number) > static_cast<double>(std::numeric_limits<float>::max()))
    throw RuntimeError(ErrorNumber::overflow);
  return static_cast<float>(number);
}

std::int16_t toInt16(double number) { return inRange<std::int16_t>(std::nearbyint(number)); }
std::int32_t toInt32(double number) { return inRange<std::int32_t>(std::nearbyint(number)); }
std::int16_t toInt16(std::int64_t number) { return inRange<std::int16_t>(number); }
std::int32_t toInt32(std::int64_t number) { return inRange<std::int32_t>(number); }

std::int16_t add16(std::int16_t a, std::int16_t b) {
  return toInt16(std::int64_t{a} + std::int64_t{b});
}

double Val(std::string_view text) noexcept {
  Reader reader(text, Reader::Blanks::skipped);
  constexpr double kMost = std::numeric_limits<double>::max();
  return std::clamp(readNumber(reader, false).value_or(0), -kMost, kMost);
}

std::optional<double> parseNumber(std::string_view text) noexcept {
  Reader reader(Trim(text), Reader::Blanks::matter);
  const std::optional<double> number = readNumber(reader, true);
  return reader.atEnd() ? number : std::nullopt;
}

std::string textOf(float number) { return significant(static_cast<double>(number), 7); }
std::string textOf(double number) { return significant(number, 15); }

std::string Str(std::int64_t number) { return concat(number < 0 ? "" : " ", number); }

double Round(double number, int decimals) {
  if (decimals < 0 || decimals > 9) throw RuntimeError(ErrorNumber::invalidCall);
  constexpr double kAllWhole = 9007199254740992.0;  // from here on a double has no decimals
  const double scale = std::pow(10.0, decimals);
  const double scaled = number * scale;
  return std::abs(scaled) < kAllWhole ? std::nearbyint(scaled) / scale : number;
}

}  // namespace bw
