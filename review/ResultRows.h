#pragma once

#include <initializer_list>
#include <memory>
#include <span>
#include <string_view>

#include "records/RowStore.h"

namespace bw {

// Rows that are worked out, to be shown as those of a table are.
class ResultRows {
 public:
  struct Field {
    std::string_view name;
    FieldType type = FieldType::text;
  };
  explicit ResultRows(std::span<const Field> fields);
  ResultRows(std::initializer_list<Field> fields) : ResultRows(std::span(fields)) {}

  // A value a field, each of the field's type or none.
  void add(std::span<const Value> values);
  void add(std::initializer_list<Value> values) { add(std::span(values)); }

  std::shared_ptr<const RowStore> take();

 private:
  std::shared_ptr<RowStore> rows_ = std::make_shared<RowStore>();
};

}  // namespace bw
