#pragma once

#include <filesystem>
#include <string>

#include "text/Moment.h"

namespace bw::bench {

struct OfficeSize {
  int patients = 0;
  int charges = 0;
  bool diagnoses = true;  // two or three a charge
};

// 32,000 patients, 1,000,000 charges, 2,500,000 diagnoses. One charge in a thousand is of status 2,
// the others are shown in the unfiltered list.
inline constexpr OfficeSize kGrownOffice{32000, 1000000};

// Numbers of patients, doctors and the like run from 1 to these.
inline constexpr int kDoctors = 300;
inline constexpr int kFacilities = 150;
inline constexpr int kInsurances = 40;
inline constexpr int kConcepts = 90;
inline constexpr int kDiagnoses = 2000;

// Charges are 400 on each day, from the first on; the lot of a day's charges is the day's number,
// from 1. The last 20 days have none.
inline constexpr int kChargesOfDay = 400;
inline constexpr Date kFirstDay{36526};

// The folder that files of a run are made in.
std::filesystem::path folder();

// Makes an office at a path, in place of what is there. The same rows every time.
void makeOffice(const std::filesystem::path& path, OfficeSize size);

// Makes an office in an empty database on a server.
void fillOnServer(const std::string& address, OfficeSize size);

// The office of a size under a name, made when it is not there. Nobody writes to it.
std::filesystem::path keptOffice(const char* name, OfficeSize size);
inline std::filesystem::path grownOffice() { return keptOffice("bench-office", kGrownOffice); }

// The beginning of a statement that has the numbers from 1 to `last` in the column i of n.
std::string numbersTo(int last);

}  // namespace bw::bench
