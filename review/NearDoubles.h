#pragma once

#include <cstdint>

#include "review/OfficeSnapshot.h"

namespace bw {

// Patients who may be one person.

struct DoublesOffice {
  Rows patients;  // PatientsDescriptive
  Rows moments;   // patient, date and time of entry of every charge
};
DoublesOffice readDoublesOffice();

enum class Doubles : std::uint8_t {
  near,  // without the pairs that share name and date of birth, or the account, as they stand
  all,
};

// Groups, the surest first: Part (from 1), Names, Patients, Reason (the surest one among them).
// Patients: a row for each patient of a group: Part, PatientId, Names, AccountNumber, DateOfBirth,
// Insurance, Admitted (the facility), Reason (his own), Charges, Moving (charges that a merge into
// him would move), Collisions (of the group: seconds in which more than one of them has a charge
// entered, which stop a merge). A group is whoever is linked by pairs; of a key that very many
// patients share only neighbours are compared.
struct DoublesFound {
  Rows groups;
  Rows patients;
};
DoublesFound findDoubles(const DoublesOffice& office, Doubles wanted);

}  // namespace bw
