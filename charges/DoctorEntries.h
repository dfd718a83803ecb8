#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "records/RecordSet.h"

namespace bw {

// The doctors whom a charge can be booked under. Behind the doctors themselves a covering doctor
// stands once more for each colleague whom he covers, as "Names (Covering Names)": under his own
// code, with the colleague's attention type. That he was covering is not stored.
// Doctors are read at each call, who covers whom at the first one.
class DoctorEntries {
 public:
  // What it reads.
  static constexpr std::array kStatements{"select * from DoctorsDescriptive",
                                          "select * from PatientDoctorsDescriptive where "
                                          "PatientId=0",
                                          "select * from Coverage"};

  // 0, or 1 with `doctors` as it was and the error in `message`. Coverage that cannot be read is
  // told by nothing: there are no such entries then.
  int read(RecordSetRef& doctors, std::string& message);
  // For whom each of the covering doctors at the end of that list stands there, by code.
  const std::vector<std::int32_t>& covered() const noexcept { return covered_; }

 private:
  struct Covering {
    Value code;
    std::string names;
  };
  void readCoverage();
  void addEntriesOf(const RecordSetRef& doctor);

  bool coverageRead_ = false;
  std::map<std::int32_t, std::vector<Covering>> coverage_;  // by the code of who is covered
  std::vector<std::int32_t> covered_;
  RecordSetRef entries_;  // a working set of the right shape; empty between the calls
};

}  // namespace bw
