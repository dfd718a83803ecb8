#pragma once

#include <cstdint>
#include <map>

#include "review/OfficeSnapshot.h"
#include "text/Moment.h"

namespace bw {

// Who is admitted, who sees them, and who is due.

struct RoundsOffice {
  Rows patients;  // those admitted, with the names of their facilities
  Rows wards;
  Rows doctors;
  Rows visits;  // visiting doctors of all patients, with their attention type and frequency
  Rows care;    // patient, doctor and day of every charge
};
RoundsOffice readRoundsOffice();

struct RoundsQuestion {
  enum class Show : std::uint8_t {
    due,      // visits due today or before
    all,      // every visiting and attending doctor of each patient
    noCharge  // a row a patient for whom nobody has written a charge for kQuietDays
  };
  Show show = Show::due;
  std::int64_t doctor = 0;  // 0: all
  Date today;
  std::map<std::int64_t, std::int64_t> days{};  // between visits, by frequency; none or 0: unset
};
inline constexpr int kQuietDays = 30;

// Places: Part, Facility, Ward, Patients, Visits; the first one, with Part 0, is of them all.
// Visits, by place, patient and doctor: Part, Facility, Ward, Names, AccountNumber, DateOfBirth,
// Doctor, Role, Attention, Frequency, LastVisit, DueSince, State. LastVisit is the last day of care
// by that doctor, where a row is a patient's by anybody. DueSince is so many days later, as the
// frequency has; a doctor who has them set and never came is due without such a day.
struct RoundsFound {
  Rows places;
  Rows visits;
};
RoundsFound findRounds(const RoundsOffice& office, const RoundsQuestion& question);

}  // namespace bw
