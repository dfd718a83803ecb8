#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "review/OfficeSnapshot.h"
#include "text/Moment.h"

namespace bw {

// Rows by name of their columns, without a lookup for each row.
class TableColumn {
 public:
  // Raises 3265 when the rows have no such column.
  TableColumn(const RowStore& rows, std::string_view name)
      : column_(rows.columns[rows.indexOf(name)]) {}

  // The number, the day of a date, the second of a time; Column::kNull for no value.
  std::int64_t operator()(std::size_t row) const noexcept { return column_.raw(row); }
  bool isNull(std::size_t row) const noexcept { return column_.isNull(row); }
  std::string_view text(std::size_t row) const {
    const std::int64_t raw = column_.raw(row);
    return raw == Column::kNull ? std::string_view() : column_.textOfRaw(raw);
  }
  // No value, or nothing but blanks.
  bool isBlank(std::size_t row) const;
  Value value(std::size_t row) const { return column_.value(row); }

 private:
  const Column& column_;
};

// The key of a charge as one number, in whose order charges come.
std::uint64_t chargeKey(std::int64_t patient, std::int64_t day, std::int64_t second) noexcept;

// The details of charges: of each charge, the codes that it has.
class ChargeDetails {
 public:
  // `charges` in the order of their key; a detail of another charge is left out.
  ChargeDetails(const RowStore& charges, const RowStore& details);

  std::vector<std::int64_t> of(std::size_t charge) const;

 private:
  struct Detail {
    std::size_t charge;
    std::int64_t code;
    auto operator<=>(const Detail&) const = default;
  };
  std::vector<Detail> details_;
};

inline Value textValue(std::string_view text) { return std::string(text); }
inline Value dayValue(std::int64_t day) {
  return day == Column::kNull ? Value() : Value(Date{static_cast<std::int32_t>(day)});
}
inline Value countValue(std::size_t count) { return static_cast<std::int64_t>(count); }

}  // namespace bw
