#pragma once

namespace bw {

// The title window, modal; it goes by itself after two seconds.
void showSplash();

}  // namespace bw
