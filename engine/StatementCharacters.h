#pragma once

#include "text/Text.h"

namespace bw {

// Of the characters of a statement, outside of its texts.
constexpr bool isBlank(char c) noexcept {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

constexpr bool isNameCharacter(char c) noexcept {
  return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' ||
         static_cast<unsigned char>(c) >= 0x80;
}

}  // namespace bw
