#pragma once

#include <memory>
#include <string_view>

#include "core/LongWork.h"
#include "records/RowStore.h"

namespace bw {

using Rows = std::shared_ptr<const RowStore>;

// Reads the office as of one moment, whatever others write meanwhile; nobody waits for it. What
// takes longer than a moment shows its progress. Raises what the connection raises.
class OfficeSnapshot {
 public:
  explicit OfficeSnapshot(int statements);
  OfficeSnapshot(const OfficeSnapshot&) = delete;
  OfficeSnapshot& operator=(const OfficeSnapshot&) = delete;
  ~OfficeSnapshot();

  Rows read(std::string_view statement);

 private:
  LongWork work_;
};

}  // namespace bw
