#include "engine/PostgresAddress.h"

#include <algorithm>
#include <array>
#include <memory>

#include "engine/PostgresHandles.h"
#include "engine/Refusals.h"
#include "text/Text.h"

namespace bw {
namespace {

using Settings = std::vector<std::pair<std::string, std::string>>;

struct FreeOptions {
  void operator()(PQconninfoOption* options) const noexcept { PQconninfoFree(options); }
};

// What the address itself says, without what the environment adds.
Settings parsed(const std::string& address) {
  loadLibpq();
  char* complaint = nullptr;
  const std::unique_ptr<PQconninfoOption, FreeOptions> options(
      PQconninfoParse(address.c_str(), &complaint));
  const std::unique_ptr<char, FreeMemory> freed(complaint);
  if (!options)
    throw DatabaseRefusal(Refusal::notConnected, firstLine(complaint == nullptr ? "" : complaint));
  Settings settings;
  for (const PQconninfoOption* one = options.get(); one->keyword != nullptr; ++one)
    if (one->val != nullptr) settings.emplace_back(one->keyword, one->val);
  return settings;
}

std::string settingOf(const Settings& settings, std::string_view name) {
  const auto found = std::ranges::find(settings, name, &Settings::value_type::first);
  return found == settings.end() ? std::string() : found->second;
}

// Sockets and names of this computer.
bool isLocal(std::string_view host) noexcept {
  constexpr std::array<std::string_view, 4> kNames{"", "localhost", "127.0.0.1", "::1"};
  return host.starts_with('/') || host.starts_with('@') ||
         std::ranges::find(kNames, host) != kNames.end();
}

template <class Test>
bool eachHost(std::string_view hosts, Test test) {
  for (;;) {
    const std::size_t end = std::min(hosts.find(','), hosts.size());
    if (!test(hosts.substr(0, end))) return false;
    if (end == hosts.size()) return true;
    hosts.remove_prefix(end + 1);
  }
}

bool isLocalAlone(const Settings& settings) {
  return settingOf(settings, "service").empty() && eachHost(settingOf(settings, "host"), isLocal) &&
         eachHost(settingOf(settings, "hostaddr"), isLocal);
}

bool namesSeveralHosts(const Settings& settings) {
  return settingOf(settings, "host").find(',') != std::string::npos ||
         settingOf(settings, "hostaddr").find(',') != std::string::npos;
}

}  // namespace

bool isServerAddress(std::string_view target) noexcept {
  return target.starts_with("postgresql://") || target.starts_with("postgres://");
}

Settings connectionSettings(const std::string& address) {
  const Settings own = parsed(address);
  // What stands first gives way to what stands behind it. A dead server is noticed in half a
  // minute.
  Settings all{{"connect_timeout", "10"},     {"keepalives_idle", "15"},
               {"keepalives_interval", "5"},  {"keepalives_count", "3"},
               {"tcp_user_timeout", "30000"}, {"application_name", "Brantiwell"}};
  if (!isLocalAlone(own)) all.emplace_back("sslmode", "verify-full");
  if (namesSeveralHosts(own)) all.emplace_back("target_session_attrs", "read-write");
  all.emplace_back("dbname", address);
  all.emplace_back("client_encoding", "UTF8");
  return all;
}

std::string connectionText(const std::string& address, const std::string& database) {
  Settings settings = connectionSettings(address);
  std::erase_if(settings, [](const auto& one) { return one.first == "dbname"; });
  for (const auto& one : parsed(address)) settings.push_back(one);
  if (!database.empty()) settings.emplace_back("dbname", database);
  std::string text;
  for (const auto& [name, value] : settings) {
    text += concat(name, "='");
    for (const char letter : value) {
      if (letter == '\'' || letter == '\\') text += '\\';
      text += letter;
    }
    text += "' ";
  }
  return text;
}

std::string databaseNameOf(const std::string& address) {
  const Settings settings = parsed(address);
  const std::string name = settingOf(settings, "dbname");
  return name.empty() ? settingOf(settings, "user") : name;
}

bool holdsPassword(const std::string& address) {
  try {
    return !settingOf(parsed(address), "password").empty();
  } catch (const DatabaseRefusal&) {
    return false;
  }
}

}  // namespace bw
