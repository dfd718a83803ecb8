#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <stdexcept>
#include <string>

#include "text/Text.h"

namespace bw::bench {

// bw_fold for the bare engine, as the program's engine has it.
inline void foldFunction(sqlite3_context* context, int, sqlite3_value** arguments) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(arguments[0]));
  const std::string folded = fold(text == nullptr ? "" : text);
  sqlite3_result_text(context, folded.data(), static_cast<int>(folded.size()), SQLITE_TRANSIENT);
}

// The engine without anything of ours above it. Not for use outside this folder.
class Bare {
 public:
  explicit Bare(const std::string& path) {
    if (sqlite3_open_v2(path.c_str(), &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                        nullptr) != SQLITE_OK)
      throw std::runtime_error("The office does not open.");
    sqlite3_create_function_v2(database_, "bw_fold", 1,
                               SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                               foldFunction, nullptr, nullptr, nullptr);
    run("PRAGMA foreign_keys=ON");
    run("PRAGMA synchronous=FULL");
  }
  ~Bare() { sqlite3_close(database_); }
  Bare(const Bare&) = delete;
  Bare& operator=(const Bare&) = delete;

  // Touches every value of every row.
  std::size_t run(const std::string& text) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database_, text.c_str(), -1, &statement, nullptr) != SQLITE_OK)
      throw std::runtime_error(sqlite3_errmsg(database_));
    std::size_t sum = 0;
    int status = SQLITE_ROW;
    while ((status = sqlite3_step(statement)) == SQLITE_ROW)
      for (int i = 0; i < sqlite3_column_count(statement); ++i) {
        if (sqlite3_column_text(statement, i) == nullptr) continue;
        sum += static_cast<std::size_t>(sqlite3_column_bytes(statement, i));
      }
    sqlite3_finalize(statement);
    if (status != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(database_));
    return sum;
  }

 private:
  sqlite3* database_ = nullptr;
};

}  // namespace bw::bench
