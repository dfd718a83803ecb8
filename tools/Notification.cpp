#include "tools/Notification.h"

#include "tools/OtherProgram.h"

namespace bw {

void notify(const std::string& title, const std::string& text) {
  runProgram({"notify-send", "--urgency=critical", "--icon=brantiwell", title, text});
}

}  // namespace bw
