#include "platform/ColumnFeed.h"

namespace bw {

void ColumnFeed::null() {
  if (count_ == 0) return column_.appendNull();
  sizes_[count_++] = kNoValue;
  if (count_ == kBatch) flush();
}

void ColumnFeed::text(std::string_view text) {
  if (!column_.isText()) return column_.appendText(text);
  bytes_ += text;
  sizes_[count_++] = static_cast<std::uint32_t>(text.size());
  if (count_ == kBatch) flush();
}

void ColumnFeed::flush() {
  const char* at = bytes_.data();
  for (std::size_t i = 0; i < count_; ++i) {
    if (sizes_[i] == kNoValue) {
      column_.appendNull();
      continue;
    }
    column_.appendText({at, sizes_[i]});
    at += sizes_[i];
  }
  bytes_.clear();
  count_ = 0;
}

}  // namespace bw
