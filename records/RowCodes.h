#pragma once

#include <cstdint>
#include <vector>

#include "records/KeyIndex.h"

namespace bw {

// Small numbers in the place of the values of many rows, each made by `codeOf` of a raw value.
// Where a column is looked up by keys that lie close together, they are made once a key and not
// once a row.
template <class Code, class CodeOf>
class RowCodes {
 public:
  RowCodes(const Column& column, CodeOf codeOf) : column_(column), codeOf_(codeOf) {
    if (column_.lookUp() == nullptr) return;
    for (const std::uint32_t found : column_.lookUp()->rows().rowsByPlace())
      byPlace_.push_back(codeOf_(column_.rawFound(found)));
    if (column_.written().empty()) return;
    written_.resize(column_.size());
    for (const auto& [row, raw] : column_.written()) written_[row] = true;
  }

  std::vector<Code> of(const std::vector<std::uint32_t>& rows) const {
    std::vector<Code> codes(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
      codes[i] = byPlace_.empty() ? codeOf_(column_.raw(rows[i])) : byKey(rows[i]);
    for (std::size_t i = 0; !written_.empty() && i < rows.size(); ++i)
      if (written_[rows[i]]) codes[i] = codeOf_(column_.raw(rows[i]));
    return codes;
  }

 private:
  Code byKey(std::uint32_t row) const {
    const std::int64_t key = column_.lookUp()->key().raw(row);
    return key == Column::kNull ? none_ : byPlace_[column_.lookUp()->rows().place(key)];
  }

  const Column& column_;
  CodeOf codeOf_;
  Code none_ = codeOf_(Column::kNull);
  std::vector<Code> byPlace_;
  std::vector<bool> written_;  // by row; empty when there are none
};

}  // namespace bw
