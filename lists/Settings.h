#pragma once

#include <string>

namespace bw {

// The user's settings: texts, known by application, section and key, names without regard to case.
// Both work on the file at once; nothing is cached.

// The stored text, or the default when there is none.
std::string GetSetting(const std::string& application, const std::string& section,
                       const std::string& key, const std::string& defaultText);

// Creates what is missing. A file that cannot be written raises an error with a sentence.
void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                 const std::string& text);

}  // namespace bw
