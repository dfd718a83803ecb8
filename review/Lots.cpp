#include "review/Lots.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include "review/ChargeTable.h"
#include "review/ResultRows.h"
#include "review/Statements.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr std::size_t kNamed = 3;  // insurances of a lot that stand in its row by their names

struct Lot {
  std::int64_t number = 0;
  std::size_t charges = 0;
  std::size_t patients = 0;
  std::size_t readyAgain = 0;
  std::int64_t firstDay = 0;
  std::int64_t lastDay = 0;
  std::int64_t latestPatient = Column::kNull;
  std::vector<bool> isNoted{};  // the insurance, by the number of its text
  std::vector<std::string_view> insurances{};
};

std::string insurancesOf(Lot& lot) {
  std::vector<std::string_view>& names = lot.insurances;
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  const std::size_t others = names.size() - std::min(kNamed, names.size());
  names.resize(names.size() - others);
  std::string text = joined(names, ", ", [](std::string_view name) { return name; });
  if (others > 0) text += concat(" and ", others, " more");
  return text;
}

class Lots {
 public:
  explicit Lots(const RowStore& charges)
      : number_(charges, "PrintLot"), patient_(charges, "PatientId"),
        day_(charges, "ChargeRealDate"), status_(charges, "Status"),
        insurance_(charges, "Insurance") {
    for (std::size_t row = 0; row < charges.rowCount(); ++row)
      if (!number_.isNull(row) && number_(row) != 0) add(row);
  }

  std::vector<Lot> latestFirst() && {
    std::sort(lots_.begin(), lots_.end(),
              [](const Lot& one, const Lot& other) { return one.number > other.number; });
    return std::move(lots_);
  }

 private:
  Lot& lotOf(std::int64_t number) {
    const auto [place, isNew] = places_.try_emplace(number, lots_.size());
    if (isNew) lots_.push_back({.number = number});
    return lots_[place->second];
  }

  // Charges come patient by patient.
  void add(std::size_t row) {
    Lot& lot = lotOf(number_(row));
    const std::int64_t day = day_(row);
    lot.firstDay = lot.charges == 0 ? day : std::min(lot.firstDay, day);
    lot.lastDay = lot.charges == 0 ? day : std::max(lot.lastDay, day);
    ++lot.charges;
    if (status_(row) == 0) ++lot.readyAgain;
    if (patient_(row) == lot.latestPatient) return;
    lot.latestPatient = patient_(row);
    ++lot.patients;
    if (!insurance_.isNull(row)) note(lot, row);
  }

  // Texts are compared once each in the end.
  void note(Lot& lot, std::size_t row) const {
    const auto text = static_cast<std::size_t>(insurance_(row));
    if (text >= lot.isNoted.size()) lot.isNoted.resize(text + 1);
    if (lot.isNoted[text]) return;
    lot.isNoted[text] = true;
    lot.insurances.push_back(insurance_.text(row));
  }

  TableColumn number_;
  TableColumn patient_;
  TableColumn day_;
  TableColumn status_;
  TableColumn insurance_;
  std::vector<Lot> lots_;
  std::unordered_map<std::int64_t, std::size_t> places_;
};

}  // namespace

std::optional<Date> dayOfLot(std::int64_t lot) noexcept {
  const auto digits = [lot](std::int64_t from, std::int64_t below) {
    return static_cast<int>(lot / from % below);
  };
  return makeDate(digits(100000, 10000), digits(1000, 100), digits(10, 100));
}

Rows findLots(const RowStore& charges) {
  ResultRows rows{{"PrintLot", FieldType::integer},
                  {"Day", FieldType::date},
                  {"Insurances"},
                  {"Charges", FieldType::integer},
                  {"Patients", FieldType::integer},
                  {"FirstDay", FieldType::date},
                  {"LastDay", FieldType::date},
                  {"ReadyAgain", FieldType::integer}};
  for (Lot& lot : Lots(charges).latestFirst()) {
    const std::optional<Date> day = dayOfLot(lot.number);
    rows.add({lot.number, day ? Value(*day) : Value(), insurancesOf(lot), countValue(lot.charges),
              countValue(lot.patients), dayValue(lot.firstDay), dayValue(lot.lastDay),
              countValue(lot.readyAgain)});
  }
  return rows.take();
}

}  // namespace bw
