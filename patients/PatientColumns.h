#pragma once

#include <vector>

#include "controls/ListModel.h"

namespace bw {

// The columns of a list of patients: in the view, and in the choice of a merge's destination.
inline std::vector<ListColumn> patientColumns() {
  return {{"Names", "Names", 2880},
          {"DateOfBirth", "DOB", 1440},
          {"Description", "Insurance", 2880},
          {"FacilityName", "Facility", 2880},
          {"AccountNumber", "Billing Code", 1440}};
}

}  // namespace bw
