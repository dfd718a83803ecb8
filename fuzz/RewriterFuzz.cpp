#include <string>

#include "fuzz/Check.h"
#include "platform/Rewriter.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

// What an engine sees outside quotes and brackets, each of these replaced by a blank.
std::string outsideOf(const std::string& statement) {
  std::string outside;
  std::size_t at = 0;
  while (at < statement.size()) {
    const char c = statement[at];
    if (c != '\'' && c != '[') {
      outside += c;
      ++at;
      continue;
    }
    const std::size_t end = statement.find(c == '[' ? ']' : '\'', at + 1);
    bw::check(end != std::string::npos, "quotes and brackets are closed");
    outside += ' ';
    at = end + 1;
  }
  return outside;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view statement = bw::inputText(data, size);
  std::string rewritten;
  try {
    rewritten = bw::rewriteStatement(statement);
  } catch (const bw::RuntimeError& error) {
    bw::check(error.number() == bw::ErrorNumber::database, "refusals are the database's");
    bw::check(!error.text().empty(), "refusals have a sentence");
    return 0;
  }
  const std::string outside = outsideOf(rewritten);
  for (const char* refused : {"#", "--", "/*", "\"", "`", ";", "?"})
    bw::check(outside.find(refused) == std::string::npos, refused);
  bw::check(rewritten.find('\0') == std::string::npos, "there is no NUL");
  try {
    const std::string again = bw::rewriteStatement(rewritten);
    // A second TOP behind the first is the engine's to refuse.
    if (bw::fold(rewritten).find("top") == std::string::npos)
      bw::check(again == rewritten, "a rewritten statement stays");
  } catch (const bw::RuntimeError&) {
    bw::check(false, "a rewritten statement is accepted");
  }
  return 0;
}
