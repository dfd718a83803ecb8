#pragma once

#include <string>

namespace bw {

// Take the first piece off a text, up to the first comma or semicolon, which goes too. Without
// one, the piece is the whole text, and the text becomes empty.
std::string TakeToken(std::string& text);
std::string TakeTokenSemicolon(std::string& text);

}  // namespace bw
