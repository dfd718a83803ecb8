#pragma once

#include "engine/Engine.h"

namespace bw {

// Fills an empty database with what an office can begin with: concepts of charges without codes,
// and groups of diagnoses. All words are our own.
void fillStarter(Engine& engine);

}  // namespace bw
