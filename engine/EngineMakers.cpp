#include "engine/EngineMakers.h"

#include <algorithm>
#include <array>

#include "engine/PostgresAddress.h"
#include "engine/PostgresEngine.h"
#include "engine/SqliteEngine.h"

namespace bw {
namespace {

constexpr std::array kMakers{
    EngineMaker{
        .takes = isServerAddress,
        .guardedByWorkgroup = false,
        .open = [](const std::string& address,
                   EngineAccess access) { return openPostgres(address, {.access = access}); },
        .openDamaged = [](const std::string& address) { return openPostgres(address); }},
    EngineMaker{
        .takes = [](std::string_view) { return true; },
        .guardedByWorkgroup = true,
        .open = [](const std::string& path,
                   EngineAccess access) { return openSqlite(path, {.access = access}); },
        .openDamaged =
            [](const std::string& path) { return openSqlite(path, {.quickCheck = false}); }},
};

}  // namespace

const EngineMaker& makerOf(std::string_view target) noexcept {
  return *std::ranges::find_if(kMakers,
                               [target](const EngineMaker& maker) { return maker.takes(target); });
}

std::unique_ptr<Engine> openEngine(const std::string& target, EngineAccess access) {
  return makerOf(target).open(target, access);
}

}  // namespace bw
