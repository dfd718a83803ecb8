#pragma once

#include <cstdint>
#include <map>

class QWidget;

namespace bw {

// How many days lie between two visits, for each row of Frequency: a matter of the office, kept in
// Review's settings. A row that is unset is left out.
std::map<std::int64_t, std::int64_t> frequencyDays();

// Asks for them. True when they were confirmed.
bool askFrequencyDays(QWidget* owner);

}  // namespace bw
