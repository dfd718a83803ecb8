#include "engine/Workgroup.h"

#include <crypt.h>

#include <fstream>
#include <random>

#include "text/RuntimeError.h"

namespace bw {
namespace {

constexpr std::string_view kHead = "workgroup 1";

// The account's password stands in the program for everybody to read; the verifier tells a wrong
// file from a right one and needs no slow hash.
std::string verifierOf(const std::string& password, const std::string& setting) {
  crypt_data data{};
  const char* hash = crypt_r(password.c_str(), setting.c_str(), &data);
  return hash != nullptr && hash[0] != '*' ? hash : std::string();
}

std::string randomSalt() {
  constexpr std::string_view letters =
      "./0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  std::random_device random;
  std::string salt(16, '.');
  for (char& letter : salt) letter = letters[random() % letters.size()];
  return salt;
}

}  // namespace

std::string workgroupPathOf(std::string_view databasePath) {
  return std::string(databasePath.substr(0, databasePath.empty() ? 0 : databasePath.size() - 1)) +
         "w";
}

std::string workgroupText(const std::string& account, const std::string& password) {
  const std::string verifier = verifierOf(password, "$5$rounds=1000$" + randomSalt() + "$");
  return std::string(kHead) + "\n" + account + "\n" + verifier + "\n";
}

bool workgroupAdmits(const std::filesystem::path& file, const std::string& account,
                     const std::string& password) {
  std::ifstream stream(file);
  if (!stream)
    throw RuntimeError(ErrorNumber::database,
                       "The workgroup file cannot be read: " + file.string());
  std::string head;
  std::string storedAccount;
  std::string verifier;
  if (!std::getline(stream, head) || head != kHead || !std::getline(stream, storedAccount) ||
      !std::getline(stream, verifier) || verifier.empty())
    throw RuntimeError(ErrorNumber::database, "The workgroup file is damaged: " + file.string());
  return storedAccount == account && verifierOf(password, verifier) == verifier;
}

}  // namespace bw
