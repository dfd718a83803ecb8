#pragma once

namespace bw {

// Makes the program's messages and questions appear in windows.
void installMessageBoxes();

}  // namespace bw
