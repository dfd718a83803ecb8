#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace bw {

// The workgroup file stands beside the database, under the same path with the last character
// replaced by "w". It holds the name of one account and a verifier of its password.

std::string workgroupPathOf(std::string_view databasePath);

// The file's content for an account.
std::string workgroupText(const std::string& account, const std::string& password);

// Whether the file names that account with that password. A missing, unreadable or damaged file
// raises error `database` with a sentence that says so.
bool workgroupAdmits(const std::filesystem::path& file, const std::string& account,
                     const std::string& password);

}  // namespace bw
