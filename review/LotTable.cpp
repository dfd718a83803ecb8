#include <string>
#include <vector>

#include "data/ChargeCodes.h"
#include "records/KeyIndex.h"
#include "review/ChargeTable.h"
#include "review/Lots.h"
#include "review/ResultRows.h"
#include "review/Statements.h"
#include "text/Text.h"

namespace bw {
namespace {

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

// What a column of the table shows of a charge: a field, or what is worked out.
class LotTable {
 public:
  explicit LotTable(const LotCharges& read)
      : charges_(*read.charges), diagnoses_(charges_, *read.diagnoses),
        procedures_(charges_, *read.procedures), diagnosisCodes_(*read.diagnosisCatalogue),
        procedureCodes_(*read.procedureCatalogue) {}

  Rows rows() const {
    std::vector<ResultRows::Field> heads;
    for (const Source& source : kSources) heads.push_back({source.head, typeOf(source)});
    ResultRows rows(heads);
    for (std::size_t row = 0; row < charges_.rowCount(); ++row) {
      std::vector<Value> values;
      for (const Source& source : kSources) values.push_back(valueOf(source, row));
      rows.add(values);
    }
    return rows.take();
  }

 private:
  struct Source {
    std::string_view head;
    std::string_view field{};
    std::string_view outpatients{};  // the field of charges of outpatients, where it is another
    Value (LotTable::*worked)(std::size_t row) const = nullptr;
  };
  static const Source kSources[21];

  FieldType typeOf(const Source& source) const {
    return source.worked ? FieldType::text
                         : charges_.columns[charges_.indexOf(source.field)].type();
  }
  Value valueOf(const Source& source, std::size_t row) const {
    if (source.worked) return (this->*source.worked)(row);
    const bool other = !source.outpatients.empty() && !isInpatient(row);
    return TableColumn(charges_, other ? source.outpatients : source.field).value(row);
  }

  bool isInpatient(std::size_t row) const { return type_(row) == kInpatient; }
  Value patientStatus(std::size_t row) const {
    return textValue(isInpatient(row) ? "Inpatient" : "Outpatient");
  }
  Value realDiagnoses(std::size_t row) const { return diagnosisCodes_.real(diagnoses_.of(row)); }
  Value billingDiagnoses(std::size_t row) const {
    return diagnosisCodes_.billing(diagnoses_.of(row));
  }
  Value realProcedures(std::size_t row) const { return procedureCodes_.real(procedures_.of(row)); }
  Value billingProcedures(std::size_t row) const {
    return procedureCodes_.billing(procedures_.of(row));
  }

  const RowStore& charges_;
  ChargeDetails diagnoses_;
  ChargeDetails procedures_;
  DetailCodes diagnosisCodes_;
  DetailCodes procedureCodes_;
  TableColumn type_{charges_, "ChargeTypeCode"};
};

const LotTable::Source LotTable::kSources[] = {
    {.head = "Lot", .field = "PrintLot"},
    {.head = "Account", .field = "AccountNumber"},
    {.head = "Patient", .field = "Names"},
    {.head = "Date of birth", .field = "DateOfBirth"},
    {.head = "Insurance", .field = "Insurance"},
    {.head = "Date of service", .field = "ChargeRealDate"},
    {.head = "Facility", .field = "Facility"},
    {.head = "Facility billing code",
     .field = "BillingFacilityCode",
     .outpatients = "BillingFacilityCodeOut"},
    {.head = "Patient status", .worked = &LotTable::patientStatus},
    {.head = "Doctor", .field = "Doctor"},
    {.head = "Doctor billing code", .field = "BillingDoctorCode"},
    {.head = "Referring doctor", .field = "ReferDoctor"},
    {.head = "Referring billing code", .field = "BillingReferDoctorCode"},
    {.head = "E&M", .field = "EMDescription"},
    {.head = "E&M real code", .field = "RealEMCode"},
    {.head = "E&M billing code", .field = "BillingEMCode"},
    {.head = "Diagnosis real codes", .worked = &LotTable::realDiagnoses},
    {.head = "Diagnosis billing codes", .worked = &LotTable::billingDiagnoses},
    {.head = "Procedure real codes", .worked = &LotTable::realProcedures},
    {.head = "Procedure billing codes", .worked = &LotTable::billingProcedures},
    {.head = "Status", .field = "StatusDescription"},
};

}  // namespace

Rows readLotTable(std::int64_t lot) { return LotTable(readLot(lot)).rows(); }

}  // namespace bw
