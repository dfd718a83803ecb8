#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

#include "engine/Rewriter.h"
#include "fuzz/Check.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace {

// What stands at a place of a statement: a text in quotes or brackets, or another sign.
std::string_view pieceAt(std::string_view statement, std::size_t at) {
  const char c = statement[at];
  if (c != '\'' && c != '[') return statement.substr(at, 1);
  const std::size_t end = statement.find(c == '[' ? ']' : '\'', at + 1);
  bw::check(end != std::string_view::npos, "quotes and brackets are closed");
  return statement.substr(at, end + 1 - at);
}

// What an engine sees outside quotes and brackets, each of these replaced by a blank.
std::string outsideOf(std::string_view statement) {
  std::string outside;
  for (std::size_t at = 0; at < statement.size();) {
    const std::string_view piece = pieceAt(statement, at);
    outside += piece.size() == 1 ? piece.front() : ' ';
    at += piece.size();
  }
  return outside;
}

std::string literalOf(const bw::StatementValue& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  return bw::concat("'", std::get<std::string>(value), "'");
}

// The statement that a shape was taken from, but for zeros in front of its numbers.
std::string statementOf(const bw::EngineStatement& shared) {
  std::string statement;
  std::size_t used = 0;
  for (std::size_t at = 0; at < shared.shape.size();) {
    const std::string_view piece = pieceAt(shared.shape, at);
    at += piece.size();
    if (piece != "?") {
      statement += piece;
      continue;
    }
    bw::check(used < shared.values.size(), "every place has a value");
    statement += literalOf(shared.values[used++]);
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
