#include "viewer/Windows1252.h"

#include <array>

namespace bw {

namespace {

// clang-format off
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,
    0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178,
};
// clang-format on

char16_t decode(unsigned char byte) {
  if (byte < 0x20 || byte == 0x7F) return u' ';
  if (byte >= 0x80 && byte < 0xA0) return kHighControls[byte - 0x80U];
  return byte;
}

}  // namespace

std::u16string fromWindows1252(std::string_view bytes) {
  std::u16string text(bytes.size(), u'\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    text[i] = decode(static_cast<unsigned char>(bytes[i]));
  }
  return text;
}

std::string utf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  const auto put = [&out](unsigned int byte) { out += static_cast<char>(byte); };
  for (const char16_t unit : text) {
    if (unit < 0x80) {
      put(unit);
    } else if (unit < 0x800) {
      put(0xC0U | (unit >> 6U));
      put(0x80U | (unit & 0x3FU));
    } else {
      put(0xE0U | (unit >> 12U));
      put(0x80U | ((unit >> 6U) & 0x3FU));
      put(0x80U | (unit & 0x3FU));
    }
  }
  return out;
}

}  // namespace bw
