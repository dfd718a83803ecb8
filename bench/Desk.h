#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "text/Moment.h"

namespace bw::bench {

using Statements = std::vector<std::string>;

// Stores charges with three details through DatabaseConnection, one a second of a clock of its own.
class Desk {
 public:
  // Each charge is stored for good before the next. Throws what the data layer says.
  void store(int count);
  void nextDay() {
    ++day_.day;
    second_ = 0;
  }
  Date day() const noexcept { return day_; }  // that the charges are stored on

 private:
  Date day_{40000};
  std::int32_t second_ = 0;
};

// What was issued on one day for another one, so that the keys are new.
void onDay(Statements& statements, Date from, Date to);

}  // namespace bw::bench
