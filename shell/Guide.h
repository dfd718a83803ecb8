#pragma once

#include <QString>

namespace bw {

// What is installed with the program, by its place below the folder that holds bin/.
QString besideProgram(const char* path);

// Opens the guide in the desktop's web browser, or says why not and where the guide is.
void openGuide();

}  // namespace bw
