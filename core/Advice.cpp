#include "core/Advice.h"

#include <array>
#include <utility>

#include "engine/Refusals.h"

namespace bw {

std::string withAdvice(const std::string& message) {
  static const std::array kAdvice{
      std::pair{std::string(kUpdateTouchedNothing),
                "Another station has deleted this record. Close this window and press F5."},
      std::pair{refusalSentence(Refusal::duplicateKey),
                "Another station may have taken the number of this record: Ok draws the next one. "
                "When that does not help, all numbers are in use."},
      std::pair{refusalSentence(Refusal::missingParent),
                "Another station has deleted something that was chosen here. Close this window, "
                "press F5 and choose anew."},
  };
  for (const auto& [text, advice] : kAdvice)
    if (message.ends_with(text)) return withAdvice(message, advice);
  return message;
}

std::string withAdvice(const std::string& message, const std::string& advice) {
  return advice.empty() ? message : message + "\n\n" + advice;
}

}  // namespace bw
