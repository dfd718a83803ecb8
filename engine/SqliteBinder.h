#pragma once

#include <sqlite3.h>

#include <string>
#include <variant>

#include "text/Moment.h"
#include "text/RuntimeError.h"

namespace bw {

// Where a value goes in a statement.
struct Binder {
  sqlite3_stmt* statement;
  int place;
  sqlite3_destructor_type lifetime;  // of texts

  int operator()(std::monostate) const { return sqlite3_bind_null(statement, place); }
  int operator()(std::int64_t number) const { return sqlite3_bind_int64(statement, place, number); }
  int operator()(const std::string& text) const {
    return sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()),
                             lifetime);
  }
  int operator()(Date date) const { return (*this)(isoDate(date)); }
  int operator()(TimeOfDay time) const { return (*this)(isoTime(time)); }
  int operator()(DateTime moment) const { return (*this)(isoDateTime(moment)); }
};

template <class AnyValue>
void bind(const Binder& binder, const AnyValue& value) {
  if (std::visit(binder, value) != SQLITE_OK) throw RuntimeError(ErrorNumber::outOfMemory);
}

}  // namespace bw
