#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "review/OfficeSnapshot.h"
#include "text/Moment.h"

namespace bw {

// What is to be put right before the ready charges are posted.

struct ReadyOffice {
  Rows charges;  // ChargesDescriptive, the ready ones
  Rows diagnoses;
  Rows procedures;
  Rows diagnosisCatalogue;
  Rows procedureCatalogue;
  Rows admitted;   // patients
  Rows allOfCare;  // patient, day and concept of every charge, posted ones too
};
ReadyOffice readReadyOffice();

struct PostingQuestion {
  std::int64_t insurance = 0;  // 0: all
  std::optional<Date> day{};   // of care
  Date today;
  std::function<bool(std::string_view cause)> isOn = [](std::string_view) { return true; };
};

// Causes: Part, Cause, Charges, Name (for settings), checked; the first one, with Part 0, is of
// them all. Charges: a row for each charge and cause that is on, Part being the cause's. Every
// cause has its number, whether it is on or not.
struct PostingFindings {
  Rows causes;
  Rows charges;
  std::size_t ready = 0;   // charges that were looked at
  std::size_t faulty = 0;  // of them those with a cause that is on
};
PostingFindings findBeforePosting(const ReadyOffice& office, const PostingQuestion& question);

}  // namespace bw
