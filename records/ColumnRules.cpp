#include "records/ColumnRules.h"

#include <algorithm>
#include <array>

#include "text/Text.h"

namespace bw {
namespace {

constexpr ColumnRule range(FieldType type, std::string_view limit) {
  return {.type = type,
          .ending = "Range",
          .refusal = " is out of range: the number is too large or too small to be stored.",
          .complaint = "no number, or one out of range",
          .form = "a whole number",
          .limit = limit};
}

// clang-format off
constexpr std::array kRules{
    range(FieldType::smallint, " from -32768 to 32767"),
    range(FieldType::integer, " from -2147483648 to 2147483647"),
    ColumnRule{.type = FieldType::text,
               .ending = "Size",
               .refusal = " is too long: at most 255 characters can be stored.",
               .complaint = "a text of more than 255 characters",
               .form = "a text in UTF-8",
               .limit = " of at most 255 characters"},
    ColumnRule{.type = FieldType::date,
               .ending = "Date",
               .refusal = " is not a date that can be stored.",
               .complaint = "no date",
               .form = "a date like 2021-03-09"},
    ColumnRule{.type = FieldType::time,
               .ending = "Time",
               .refusal = " is not a time that can be stored.",
               .complaint = "no time",
               .form = "a time like 14:05:59"},
    ColumnRule{.type = FieldType::dateTime,
               .ending = "Stamp",
               .refusal = " is not a date and time that can be stored.",
               .complaint = "no date and time",
               .form = "a date and time like 2021-03-09 14:05:59"},
};
// clang-format on

const ColumnRule* ruleOfCheck(std::string_view check) noexcept {
  const auto* rule = std::ranges::find_if(
      kRules, [check](const ColumnRule& one) { return check.ends_with(one.ending); });
  return rule == kRules.end() ? nullptr : rule;
}

}  // namespace

const ColumnRule& ruleOf(FieldType type) noexcept {
  return *std::ranges::find(kRules, type, &ColumnRule::type);
}

std::string checkSentence(std::string_view check) {
  const ColumnRule* rule = ruleOfCheck(check);
  if (rule == nullptr) return concat("A value is not allowed here (", check, ").");
  return concat(columnOfCheck(check), rule->refusal);
}

std::string_view columnOfCheck(std::string_view check) noexcept {
  const ColumnRule* rule = ruleOfCheck(check);
  return rule == nullptr ? "" : check.substr(0, check.size() - rule->ending.size());
}

}  // namespace bw
