#pragma once

#include <functional>

namespace bw {

// The title window, modal; it goes by itself after two seconds. `meanwhile` runs once it is shown.
void showSplash(const std::function<void()>& meanwhile);

}  // namespace bw
