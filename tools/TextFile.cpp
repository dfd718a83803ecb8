#include "tools/TextFile.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "text/CodePage.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

std::string wholeText(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  if (!stream)
    throw RuntimeError(ErrorNumber::fileNotFound, "The file cannot be read: " + file.string());
  return std::move(text).str();
}

void appendUtf8(std::string& out, char16_t character) {
  const auto add = [&out](unsigned byte) { out += static_cast<char>(byte); };
  if (character < 0x80) return add(character);
  if (character < 0x800)
    add(0xC0U | character >> 6U);
  else {
    add(0xE0U | character >> 12U);
    add(0x80U | (character >> 6U & 0x3FU));
  }
  add(0x80U | (character & 0x3FU));
}

std::string fromWindows1252(std::string_view name, std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    const char16_t character = byte < 0x80 || byte >= 0xA0 ? byte : kWindows1252.at(byte - 0x80U);
    if (character == 0 && byte != 0)
      throw Refused(concat(name, ", line ", 1 + std::ranges::count(bytes.substr(0, i), '\n'),
                           ": this is no text in Windows-1252."));
    appendUtf8(text, character);
  }
  return text;
}

bool isContinuation(unsigned char byte) noexcept { return (byte & 0xC0U) == 0x80U; }

// Bytes of the well-formed character that a text begins with, 0 when it is none.
std::size_t characterSize(std::string_view text) noexcept {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80U) return lead == 0 ? 0 : 1;
  const std::size_t size = lead < 0xC2U   ? 0
                           : lead < 0xE0U ? 2
                           : lead < 0xF0U ? 3
                           : lead < 0xF5U ? 4
                                          : 0;
  if (size == 0 || text.size() < size) return 0;
  for (std::size_t i = 1; i < size; ++i)
    if (!isContinuation(byte(i))) return 0;
  // Longer than need be, a surrogate, or beyond the last character.
  if ((lead == 0xE0U && byte(1) < 0xA0U) || (lead == 0xEDU && byte(1) > 0x9FU) ||
      (lead == 0xF0U && byte(1) < 0x90U) || (lead == 0xF4U && byte(1) > 0x8FU))
    return 0;
  return size;
}

}  // namespace

std::string readText(const std::filesystem::path& file, TextCode code) {
  std::string text = wholeText(file);
  if (code == TextCode::windows1252) text = fromWindows1252(file.filename().string(), text);
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);
  return text;
}

bool isText(std::string_view cell) noexcept {
  while (!cell.empty()) {
    const std::size_t size = characterSize(cell);
    if (size == 0) return false;
    cell.remove_prefix(size);
  }
  return true;
}

}  // namespace bw
