#include "text/Clock.h"

#include <ctime>

namespace bw {

DateTime systemNow() {
  const std::time_t seconds = std::time(nullptr);
  std::tm local{};
  localtime_r(&seconds, &local);
  // A leap second is counted as the second before it.
  const int second = local.tm_sec > 59 ? 59 : local.tm_sec;
  return {makeDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday).value_or(Date{}),
          makeTime(local.tm_hour, local.tm_min, second).value_or(TimeOfDay{})};
}

}  // namespace bw
