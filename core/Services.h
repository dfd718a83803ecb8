#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "core/Advice.h"
#include "text/Moment.h"

namespace bw {

// How far a long work has come (see LongWork).
struct WorkProgress {
  std::string text;
  std::int64_t done = 0;
  std::int64_t total = 0;
  bool ended = false;
};

// What the program asks of its surroundings. The program fills these in at its start, tests put
// their own in their place.
struct Services {
  // Shows a text with an OK button.
  std::function<void(const std::string& text)> message;
  // Asks with OK and Cancel; true for OK.
  std::function<bool(const std::string& text)> confirm;
  // Local time, whole seconds.
  std::function<DateTime()> now;
  // Opens a document in the viewer and does not wait. Raises error 53 when there is no viewer.
  std::function<void(const std::filesystem::path& document)> view;
  // Opens the guide.
  std::function<void()> help;
  // Where documents are written; made when it is not there.
  std::function<std::filesystem::path()> documentFolder;
  // Shows the progress of a long work, until it has ended. Must not throw.
  std::function<void(const WorkProgress&)> progress;
  // How long a work may take before it is shown.
  std::chrono::milliseconds patience{500};
  // Where the user's settings are kept, a file an application.
  std::function<std::filesystem::path()> settingsFolder;
};

// Without a user interface messages go to the standard error stream and questions are answered
// with Cancel.
Services& services();

// A message box with an OK button and the application's title; with advice where there is some.
inline void MsgBox(const std::string& text) { services().message(withAdvice(text)); }

// Today and the present time, local.
inline Date today() { return services().now().date; }

// Title of the program in boxes, and the application's name in settings.
inline constexpr const char* kApplicationTitle = "Brantiwell";

}  // namespace bw
