#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "engine/Libpq.h"
#include "records/ColumnFeed.h"
#include "records/RowStore.h"

namespace bw {

// Rows in the binary form of the server on their way into columns.
class PostgresRows {
 public:
  // Takes what a result holds: rows, one or none. The first tells the columns.
  void take(const PGresult& result);
  // What was read, its texts included. nullptr when there was no result with columns.
  std::shared_ptr<RowStore> finish();

  // Where the first column that is shown comes from: its table, and of each column of the store its
  // number there (0 when it comes from elsewhere).
  Oid table() const noexcept { return table_; }
  const std::vector<int>& numbers() const noexcept { return numbers_; }

 private:
  enum class Form : std::uint8_t { int16, int32, int64, truth, date, time, stamp, text };

  struct Kind {
    Oid type;
    Form form;
    FieldType field;
  };
  static Kind kindOf(Oid type);

  void begin(const PGresult& result);
  void feed(const PGresult& result, int row);

  std::shared_ptr<RowStore> store_;
  std::vector<ColumnFeed> feeds_;
  std::vector<int> places_;  // in the result
  std::vector<Form> forms_;
  std::vector<int> numbers_;
  Oid table_ = 0;
};

}  // namespace bw
