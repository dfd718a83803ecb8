#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace bw {

// How the characters of a text file are spelled.
enum class TextCode : std::uint8_t { utf8, windows1252 };

// A file's text in UTF-8, without the mark that some programs begin it with. Raises error 53 when
// it cannot be read, Refused when it is no text in Windows-1252; whether it is UTF-8 isText() says.
std::string readText(const std::filesystem::path& file, TextCode code);

// Whether it is well-formed UTF-8, without zero bytes.
bool isText(std::string_view text) noexcept;

}  // namespace bw
