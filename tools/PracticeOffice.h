#pragma once

#include "engine/Engine.h"
#include "text/Moment.h"

namespace bw {

// Fills a new database with a small fictional office: the same rows every time, but for the dates,
// which end with `today`. It has whatever the program's views look for: charges of all statuses, a
// posted lot, admitted patients with visiting doctors, doubles, incomplete records.
// Within the caller's transaction. Raises error `database`.
void fillPractice(Engine& engine, Date today);

}  // namespace bw
