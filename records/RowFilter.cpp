#include "records/RowFilter.h"

#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

bool holds(Comparison comparison, int order) noexcept {
  switch (comparison) {
    case Comparison::equal:
      return order == 0;
    case Comparison::notEqual:
      return order != 0;
    case Comparison::less:
      return order < 0;
    case Comparison::lessOrEqual:
      return order <= 0;
    case Comparison::greater:
      return order > 0;
    case Comparison::greaterOrEqual:
      return order >= 0;
  }
  return false;
}

int order(std::int64_t a, std::int64_t b) noexcept { return a < b ? -1 : static_cast<int>(a > b); }

// Dates, times and both compare as moments: a date is its midnight, a time lies on day zero.
std::int64_t secondsOf(const Value& value) {
  constexpr std::int64_t kDay = 86400;
  if (const auto* date = std::get_if<Date>(&value)) return date->day * kDay;
  if (const auto* time = std::get_if<TimeOfDay>(&value)) return time->second;
  if (const auto* moment = std::get_if<DateTime>(&value))
    return moment->date.day * kDay + moment->time.second;
  throw RuntimeError(ErrorNumber::badArguments);
}

bool isMoment(FieldType type) noexcept {
  return type == FieldType::date || type == FieldType::time || type == FieldType::dateTime;
}

std::int64_t secondsOf(const Column& column, std::int64_t raw) noexcept {
  return column.type() == FieldType::date ? raw * 86400 : raw;
}

}  // namespace

RowFilter::RowFilter(const RowStore& store, const Criteria& criteria) {
  for (const Criteria::Part& part : criteria.parts) {
    Part& bound = parts_.emplace_back();
    bound.joint = part.joint;
    if (part.group.empty())
      bound.test = bind(store, part.clause);
    else
      bound.group = std::make_unique<RowFilter>(store, part.group);
  }
}

RowFilter::RowFilter(const RowStore& store, const Clause& clause) {
  parts_.emplace_back().test = bind(store, clause);
}

RowFilter::Test RowFilter::bind(const RowStore& store, const Clause& clause) {
  Test test;
  test.column = &store.columns[store.indexOf(clause.name)];
  test.comparison = clause.comparison;
  const FieldType type = test.column->type();
  if (type == FieldType::text) {
    test.text = fold(textOf(clause.value));
  } else if (isMoment(type)) {
    test.operand = secondsOf(clause.value);
  } else {
    const auto* number = std::get_if<std::int64_t>(&clause.value);
    if (number == nullptr) throw RuntimeError(ErrorNumber::badArguments);
    test.operand = *number;
  }
  return test;
}

bool RowFilter::Test::passes(std::uint32_t row) const {
  const std::int64_t raw = column->raw(row);
  if (raw == Column::kNull) return false;
  if (!column->isText()) {
    const std::int64_t value = isMoment(column->type()) ? secondsOf(*column, raw) : raw;
    return holds(comparison, order(value, operand));
  }
  const auto number = static_cast<std::size_t>(raw);
  if (number >= byNumber.size()) byNumber.resize(column->dictionary().size(), -1);
  if (byNumber[number] < 0)
    byNumber[number] = holds(comparison, fold(column->textOfRaw(raw)).compare(text)) ? 1 : 0;
  return byNumber[number] == 1;
}

bool RowFilter::passes(std::uint32_t row) const {
  bool result = true;
  for (const Part& part : parts_) {
    if (part.joint == Criteria::Joint::both && !result) continue;
    if (part.joint == Criteria::Joint::either && result) continue;
    result = part.group ? part.group->passes(row) : part.test.passes(row);
  }
  return result;
}

}  // namespace bw
