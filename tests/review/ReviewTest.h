#pragma once

#include "records/RowStore.h"
#include "tests/data/DataFixture.h"
#include "text/Text.h"

namespace bw {

// Rows as texts, their fields parted by "|".
inline Strings linesOf(const RowStore& rows, const Strings& fields) {
  Strings lines;
  for (std::size_t row = 0; row < rows.rowCount(); ++row)
    lines.push_back(joined(fields, "|", [&](const std::string& field) {
      return textOrEmpty(rows.columns[rows.indexOf(field)].value(row));
    }));
  return lines;
}

struct NewCharge {
  int patient = 25000;
  const char* care = "06/01/2003";
  int doctor = 1;
  int status = 0;
  const char* lot = "NULL";
  int facility = 1;
  int kind = 1;
  const char* entered = "06/02/2003";
};

// The small office, in which tests write further charges.
class ReviewTest : public DataTest {
 protected:
  ReviewTest() { seedOffice(); }

  void charge(const NewCharge& charge) {
    run(concat("INSERT INTO PatientCharges VALUES (", charge.patient, ", #", charge.entered,
               "#, #09:00:", 10 + ++charges_, "#, #", charge.care, "#, ", charge.facility, ", ",
               charge.kind, ", ", charge.doctor, ", 2, ", charge.status, ", ", charge.lot, ")"));
  }

 private:
  int charges_ = 0;
};

}  // namespace bw
