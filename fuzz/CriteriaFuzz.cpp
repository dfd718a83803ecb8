#include "fuzz/Check.h"
#include "records/Criteria.h"
#include "text/DateLiterals.h"

namespace {

using enum bw::ErrorNumber;

void checkClause(const bw::Clause& clause) {
  bw::check(!clause.name.empty(), "a clause names a column");
  bw::check(!bw::isNull(clause.value), "a clause has a value");
}

void checkCriteria(const bw::Criteria& criteria, int depth) {
  bw::check(depth <= 32, "the depth is bounded");
  for (const bw::Criteria::Part& part : criteria.parts) {
    const bool first = &part == &criteria.parts.front();
    bw::check(first == (part.joint == bw::Criteria::Joint::first), "only the first is not joined");
    if (part.group.empty())
      checkClause(part.clause);
    else
      checkCriteria(part.group, depth + 1);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = bw::inputText(data, size);
  bw::attempt<badArguments>([&] { checkClause(bw::parseClause(text)); });
  bw::attempt<badArguments>([&] { checkCriteria(bw::parseCriteria(text), 0); });
  bw::attempt<badArguments>([&] {
    for (const bw::SortKey& key : bw::parseSort(text))
      bw::check(!key.name.empty(), "a sort key names a column");
  });
  const auto moment = bw::parseDateLiteral(text);
  if (moment)
    bw::check(bw::parseDateLiteral(bw::textOf(*moment)).has_value(), "default texts are read back");
  return 0;
}
