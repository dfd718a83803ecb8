#include "viewer/Windows1252.h"

#include "text/CodePage.h"

namespace bw {
namespace {

constexpr char16_t kNoCharacter = 0xFFFD;

char16_t decode(unsigned char byte) {
  if (byte < 0x20 || byte == 0x7F) return u' ';
  if (byte < 0x80 || byte >= 0xA0) return byte;
  const char16_t character = kWindows1252[byte - 0x80U];
  return character == 0 ? kNoCharacter : character;
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
