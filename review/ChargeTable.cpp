#include "review/ChargeTable.h"

#include <algorithm>

namespace bw {

bool TableColumn::isBlank(std::size_t row) const {
  return text(row).find_first_not_of(' ') == std::string_view::npos;
}

std::uint64_t chargeKey(std::int64_t patient, std::int64_t day, std::int64_t second) noexcept {
  constexpr unsigned kBitsOfDay = 22;
  constexpr unsigned kBitsOfSecond = 17;
  constexpr std::int64_t kLowestPatient = -32768;
  return static_cast<std::uint64_t>(patient - kLowestPatient) << (kBitsOfDay + kBitsOfSecond) |
         static_cast<std::uint64_t>(day) << kBitsOfSecond | static_cast<std::uint64_t>(second);
}

namespace {

std::vector<std::uint64_t> keysOf(const RowStore& rows) {
  const TableColumn patient(rows, "PatientId");
  const TableColumn date(rows, "ChargeDate");
  const TableColumn time(rows, "ChargeTime");
  std::vector<std::uint64_t> keys(rows.rowCount());
  for (std::size_t row = 0; row < keys.size(); ++row)
    keys[row] = chargeKey(patient(row), date(row), time(row));
  return keys;
}

}  // namespace

ChargeDetails::ChargeDetails(const RowStore& charges, const RowStore& details) {
  const std::vector<std::uint64_t> keys = keysOf(charges);
  const std::vector<std::uint64_t> wanted = keysOf(details);
  const TableColumn code(details, "Code");
  details_.reserve(wanted.size());
  for (std::size_t row = 0; row < wanted.size(); ++row) {
    const auto at = std::lower_bound(keys.begin(), keys.end(), wanted[row]);
    if (at != keys.end() && *at == wanted[row])
      details_.push_back({static_cast<std::size_t>(at - keys.begin()), code(row)});
  }
  std::sort(details_.begin(), details_.end());
}

std::vector<std::int64_t> ChargeDetails::of(std::size_t charge) const {
  std::vector<std::int64_t> codes;
  auto at =
      std::lower_bound(details_.begin(), details_.end(), charge,
                       [](const Detail& one, std::size_t other) { return one.charge < other; });
  for (; at != details_.end() && at->charge == charge; ++at) codes.push_back(at->code);
  return codes;
}

}  // namespace bw
