#include "bench/Desk.h"

#include <stdexcept>

#include "core/Services.h"
#include "data/BWSQLCharges.h"

namespace bw::bench {

void Desk::store(int count) {
  services().now = [this] { return DateTime{day_, {second_}}; };
  for (int i = 0; i < count; ++i) {
    ++second_;
    Date date;
    TimeOfDay time;
    std::string message;
    if (ChargeInsert(static_cast<std::int16_t>(1 + i), date, time, day_, 1 + i % 90, 7, 8,
                     static_cast<std::int16_t>(1 + i % 150), ";12;7;305;", ";", 0, message) != 0)
      throw std::runtime_error(message);
  }
}

void onDay(Statements& statements, Date from, Date to) {
  const std::string before = isoDate(from);
  for (std::string& text : statements)
    for (std::size_t at = text.find(before); at != std::string::npos; at = text.find(before, at))
      text.replace(at, before.size(), isoDate(to));
}

}  // namespace bw::bench
