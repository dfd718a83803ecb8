#include "review/Lots.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "records/KeyIndex.h"
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
  std::set<std::string, std::less<>> insurances;
};

std::string insurancesOf(const Lot& lot) {
  std::vector<std::string_view> names;
  for (const std::string& name : lot.insurances)
    if (names.size() < kNamed) names.push_back(name);
  std::string text = joined(names, ", ", [](std::string_view name) { return name; });
  if (lot.insurances.size() > kNamed)
    text += concat(" and ", lot.insurances.size() - kNamed, " more");
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
    if (const auto name = insurance_.text(row); !lot.insurances.contains(name))
      lot.insurances.emplace(name);
  }

  TableColumn number_;
  TableColumn patient_;
  TableColumn day_;
  TableColumn status_;
  TableColumn insurance_;
  std::vector<Lot> lots_;
  std::unordered_map<std::int64_t, std::size_t> places_;
};

// The codes of a charge's details, parted by ";".
class DetailCodes {
 public:
  explicit DetailCodes(const RowStore& catalogue)
      : index_(catalogue.columns[catalogue.indexOf("Code")]), real_(catalogue, "RealCode"),
        billing_(catalogue, "BillingCode") {}

  Value real(const std::vector<std::int64_t>& codes) const { return list(real_, codes); }
  Value billing(const std::vector<std::int64_t>& codes) const { return list(billing_, codes); }

 private:
  Value list(const TableColumn& column, const std::vector<std::int64_t>& codes) const {
    return joined(codes, ";", [&](std::int64_t code) {
      const std::uint32_t row = index_.row(code);
      return row == KeyIndex::kNone ? std::string_view() : column.text(row);
    });
  }

  KeyIndex index_;
  TableColumn real_;
  TableColumn billing_;
};

struct LotCharges {
  Rows charges;
  Rows diagnoses;
  Rows procedures;
  Rows diagnosisCatalogue;
  Rows procedureCatalogue;
};

LotCharges readLot(std::int64_t lot) {
  OfficeSnapshot snapshot(5);
  LotCharges read;
  read.charges = snapshot.read(statements::chargesOfLot(lot));
  read.diagnoses = snapshot.read(statements::diagnosesWhere(statements::ofLot(lot)));
  read.procedures = snapshot.read(statements::proceduresWhere(statements::ofLot(lot)));
  read.diagnosisCatalogue = snapshot.read(statements::kDiagnoses);
  read.procedureCatalogue = snapshot.read(statements::kProcedures);
  return read;
}

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
  for (const Lot& lot : Lots(charges).latestFirst()) {
    const std::optional<Date> day = dayOfLot(lot.number);
    rows.add({lot.number, day ? Value(*day) : Value(), insurancesOf(lot), countValue(lot.charges),
              countValue(lot.patients), dayValue(lot.firstDay), dayValue(lot.lastDay),
              countValue(lot.readyAgain)});
  }
  return rows.take();
}

Rows readLotTable(std::int64_t lot) {
  const LotCharges read = readLot(lot);
  const RowStore& charges = *read.charges;
  const ChargeDetails diagnoses(charges, *read.diagnoses);
  const ChargeDetails procedures(charges, *read.procedures);
  const DetailCodes diagnosisCodes(*read.diagnosisCatalogue);
  const DetailCodes procedureCodes(*read.procedureCatalogue);
  const TableColumn status(charges, "ChargeTypeCode");
  ResultRows rows{{"Lot", FieldType::integer},
                  {"Account"},
                  {"Patient"},
                  {"Date of birth", FieldType::date},
                  {"Insurance"},
                  {"Date of service", FieldType::date},
                  {"Facility"},
                  {"Facility billing code"},
                  {"Patient status"},
                  {"Doctor"},
                  {"Doctor billing code"},
                  {"Referring doctor"},
                  {"Referring billing code"},
                  {"E&M"},
                  {"E&M real code"},
                  {"E&M billing code"},
                  {"Diagnosis real codes"},
                  {"Diagnosis billing codes"},
                  {"Procedure real codes"},
                  {"Procedure billing codes"},
                  {"Status"}};
  for (std::size_t row = 0; row < charges.rowCount(); ++row) {
    const auto field = [&](std::string_view name) { return TableColumn(charges, name).value(row); };
    const bool inside = status(row) == 1;
    const std::vector<std::int64_t> diagnosed = diagnoses.of(row);
    const std::vector<std::int64_t> done = procedures.of(row);
    rows.add({lot,
              field("AccountNumber"),
              field("Names"),
              field("DateOfBirth"),
              field("Insurance"),
              field("ChargeRealDate"),
              field("Facility"),
              field(inside ? "BillingFacilityCode" : "BillingFacilityCodeOut"),
              textValue(inside ? "Inpatient" : "Outpatient"),
              field("Doctor"),
              field("BillingDoctorCode"),
              field("ReferDoctor"),
              field("BillingReferDoctorCode"),
              field("EMDescription"),
              field("RealEMCode"),
              field("BillingEMCode"),
              diagnosisCodes.real(diagnosed),
              diagnosisCodes.billing(diagnosed),
              procedureCodes.real(done),
              procedureCodes.billing(done),
              field("StatusDescription")});
  }
  return rows.take();
}

}  // namespace bw
