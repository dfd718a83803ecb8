#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bw {

// Numbers to text and back, independent of any locale: the decimal sign is ".".

// Text to a number: blanks around, sign, digits, thousands commas, decimals, exponent, &H and &O.
// "" or rubbish raises 13, out of range 6. Halves go to the even number: "12.5" is 12. Hexadecimal
// numbers have the sign of their 16 or 32 bits: &HFFFF is -1.
std::int16_t toInt16(std::string_view text);
std::int32_t toInt32(std::string_view text);
float toSingle(std::string_view text);

// Number to a 16 or 32 bit integer; out of range raises 6. Halves go to the even number.
std::int16_t toInt16(double number);
std::int32_t toInt32(double number);
std::int16_t toInt16(std::int64_t number);
std::int32_t toInt32(std::int64_t number);

// a + b in 16 bits; out of range raises 6.
std::int16_t add16(std::int16_t a, std::int16_t b);

// As much of a number as the text begins with, blanks skipped anywhere; else 0. Never an error.
// "20 03x" is 2003, "1,5" is 1, "&H1F" is 31. What is beyond every number is the largest one.
double Val(std::string_view text) noexcept;

// Default text: up to 7 significant digits (float) or 15 (double), no trailing zeros, "0.5".
std::string textOf(float number);
std::string textOf(double number);

// As the default text, with a blank in front of a number that is not negative.
std::string Str(std::int64_t number);

// Halves to even, at that many decimals; other than 0 to 9 of them raise 5.
double Round(double number, int decimals);

// Text to a number by the grammar of toInt16; nothing when it is none. Infinite when too large.
std::optional<double> parseNumber(std::string_view text) noexcept;

}  // namespace bw
