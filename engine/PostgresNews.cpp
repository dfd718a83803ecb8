#include "engine/PostgresNews.h"

#include <array>
#include <utility>

#include "text/Text.h"

namespace bw {
namespace {

constexpr std::array<std::string_view, 3> kChanges{"INSERT INTO ", "UPDATE ", "DELETE FROM "};

}  // namespace

void PostgresNews::note(std::string_view statement) {
  for (const std::string_view change : kChanges) {
    if (!sameName(statement.substr(0, change.size()), change)) continue;
    std::string_view table = statement.substr(change.size());
    if (table.starts_with('"')) table.remove_prefix(1);
    std::string name(table.substr(0, table.find_first_of("\" (")));
    makeLower(name);
    noted_.insert(std::move(name));
  }
}

std::string PostgresNews::noted() const {
  return joined(noted_, " ", [](const std::string& table) { return table; });
}

ChangesOfOthers PostgresNews::heard(PostgresLink& link) {
  const int session = std::exchange(session_, link.session());
  ChangesOfOthers changes{.any = session != 0 && session != link.session()};
  std::set<std::string> tables;
  link.takeNews([&](std::string_view news) {
    changes.any = changes.any || news.empty();
    while (!news.empty()) {
      const std::size_t end = std::min(news.find(' '), news.size());
      tables.emplace(news.substr(0, end));
      news.remove_prefix(std::min(end + 1, news.size()));
    }
  });
  if (changes.any) return changes;
  return {.any = !tables.empty(), .tables = {tables.begin(), tables.end()}};
}

}  // namespace bw
