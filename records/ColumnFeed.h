#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "records/Column.h"

namespace bw {

// Values of one column on their way from an engine. Texts are kept back and handed over many at a
// time: a dictionary that is looked up many times in a row stays in the processor's cache, one that
// takes turns with two dozen others does not.
class ColumnFeed {
 public:
  explicit ColumnFeed(Column& column) : column_(column) {}

  void null();
  void integer(std::int64_t number) {
    if (count_ > 0) flush();
    column_.appendInteger(number);
  }
  void text(std::string_view text);
  // A moment as the raw value that a column keeps of it (see Column.h), to a column declared so.
  void moment(std::int64_t raw) { column_.appendMoment(raw); }
  // Hands over what is kept back.
  void flush();

 private:
  static constexpr std::size_t kBatch = Column::kMostTexts;
  static constexpr std::size_t kFewTexts = 8192;  // so many stay in the cache without help
  static constexpr std::uint32_t kNoValue = 0xffffffffU;

  Column& column_;
  std::string bytes_;
  std::array<std::uint32_t, kBatch> sizes_{};
  std::size_t count_ = 0;
};

}  // namespace bw
