// Reads any bytes as numbers and dates, and as a number itself: conversions succeed or raise the
// errors that they may raise, and their texts are read back.

#include <cmath>
#include <cstring>

#include "fuzz/Check.h"
#include "text/Conversions.h"
#include "text/Moment.h"
#include "text/Text.h"
#include "text/TypedDate.h"

namespace {

using enum bw::ErrorNumber;

void checkText(std::string_view text) {
  bw::check(std::isfinite(bw::Val(text)), "Val is a number");
  const std::optional<double> number = bw::parseNumber(text);
  bw::attempt<typeMismatch, overflow>([&] {
    const double whole = bw::toInt32(text);
    bw::check(number && std::abs(whole - *number) <= 0.5, "the nearest whole number");
    bw::check(bw::toInt32(bw::Str(bw::toInt32(text))) == whole, "a whole number is read back");
  });
  bw::attempt<typeMismatch, overflow>(
      [&] { bw::check(bw::toInt16(text) == bw::toInt32(text), "16 bits as 32"); });
  bw::attempt<typeMismatch, overflow>(
      [&] { bw::check(std::isfinite(bw::toSingle(text)), "a single is a number"); });
}

void checkNumber(double number) {
  constexpr double kMost = 1.7e308;  // what is larger may be rounded beyond all numbers
  if (!(std::abs(number) < kMost)) return;
  const std::optional<double> again = bw::parseNumber(bw::textOf(number));
  bw::check(again && std::abs(*again - number) <= std::abs(number) * 1e-14 + 1e-300,
            "a number is read back");
  bw::attempt<typeMismatch, overflow>(
      [&] { bw::check(bw::toInt16(number) == bw::toInt32(number), "16 bits as 32"); });
  for (int decimals = 0; decimals < 10; ++decimals)
    bw::check(!std::isnan(bw::Round(number, decimals)), "a rounded number is one");
}

void checkDate(std::string_view text) {
  const bw::DateRules rules{.today = *bw::makeDate(2026, 3, 9),
                            .first = *bw::makeDate(1900, 1, 1),
                            .last = *bw::makeDate(2100, 1, 1)};
  const bw::TypedDate typed = bw::readTypedDate(text, rules);
  bw::check(typed.date.has_value() == typed.reason.empty(), "a date or a reason");
  if (!typed.date) return;
  bw::check(*typed.date >= rules.first && *typed.date <= rules.last, "a date that can be taken");
  bw::check(bw::readTypedDate(bw::isoDate(*typed.date), rules).date == typed.date,
            "a date is read back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = bw::inputText(data, size);
  checkText(text);
  checkDate(text);
  double number = 0;
  std::memcpy(&number, data, std::min(size, sizeof number));
  if (size > 0) checkNumber(number);
  return 0;
}
