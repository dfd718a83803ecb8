#include <cstddef>
#include <string>
#include <variant>

#include "engine/Rewriter.h"
#include "fuzz/Check.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

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

std::string literalOf(const bw::StatementValue& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  return bw::concat("'", std::get<std::string>(value), "'");
}

// The statement that a shape was taken from, but for zeros in front of its numbers.
std::string statementOf(const bw::EngineStatement& shared) {
  const std::string& shape = shared.shape;
  std::string statement;
  std::size_t used = 0;
  std::size_t at = 0;
  while (at < shape.size()) {
    const char c = shape[at];
    if (c == '?') {
      bw::check(used < shared.values.size(), "every place has a value");
      statement += literalOf(shared.values[used++]);
      ++at;
      continue;
    }
    const bool opens = c == '\'' || c == '[';
    const std::size_t end = opens ? shape.find(c == '[' ? ']' : '\'', at + 1) : at;
    bw::check(end != std::string::npos, "quotes and brackets of a shape are closed");
    statement += shape.substr(at, end + 1 - at);
    at = end + 1;
  }
  bw::check(used == shared.values.size(), "every value has a place");
  return statement;
}

void checkShape(const bw::EngineStatement& shared) {
  if (shared.shape.empty()) return;
  const std::string statement = statementOf(shared);
  const bw::EngineStatement again = bw::rewriteStatement(statement, bw::SqlDialect::sqlite);
  bw::check(again.shape == shared.shape && again.values == shared.values,
            "the shape is the same again");
  const auto withoutZeros = [](std::string text) {
    std::erase(text, '0');
    return text;
  };
  bw::check(withoutZeros(statement) == withoutZeros(shared.text), "nothing else is lost");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view statement = bw::inputText(data, size);
  bw::EngineStatement accepted;
  try {
    accepted = bw::rewriteStatement(statement, bw::SqlDialect::sqlite);
  } catch (const bw::RuntimeError& error) {
    bw::check(error.number() == bw::ErrorNumber::database, "refusals are the database's");
    bw::check(!error.text().empty(), "refusals have a sentence");
    return 0;
  }
  const std::string& rewritten = accepted.text;
  const std::string outside = outsideOf(rewritten);
  for (const char* refused : {"#", "--", "/*", "\"", "`", ";", "?"})
    bw::check(outside.find(refused) == std::string::npos, refused);
  bw::check(rewritten.find('\0') == std::string::npos, "there is no NUL");
  try {
    const std::string again = bw::rewriteStatement(rewritten, bw::SqlDialect::sqlite).text;
    // A second TOP behind the first is the engine's to refuse.
    if (bw::fold(rewritten).find("top") != std::string::npos) return 0;
    bw::check(again == rewritten, "a rewritten statement stays");
    checkShape(accepted);
  } catch (const bw::RuntimeError&) {
    bw::check(false, "a rewritten statement is accepted");
  }
  return 0;
}
