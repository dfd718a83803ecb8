#pragma once

#include <string>
#include <string_view>

namespace bw {

// Windows-1252 bytes as UTF-16, one unit a byte. Control characters become blanks, and the five
// bytes that the code page leaves open become U+FFFD.
std::u16string fromWindows1252(std::string_view bytes);

std::string utf8(std::u16string_view text);  // of the characters above

}  // namespace bw
