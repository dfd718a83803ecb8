#include "records/ColumnFeed.h"

namespace bw {

void ColumnFeed::null() {
  if (count_ == 0) return column_.appendNull();
  sizes_[count_++] = kNoValue;
  if (count_ == kBatch) flush();
}

void ColumnFeed::text(std::string_view text) {
  if (!column_.isText() || column_.dictionary().size() < kFewTexts) return column_.appendText(text);
  bytes_ += text;
  sizes_[count_++] = static_cast<std::uint32_t>(text.size());
  if (count_ == kBatch) flush();
}

void ColumnFeed::flush() {
  std::array<std::string_view, kBatch> texts;
  const char* at = bytes_.data();
  for (std::size_t i = 0; i < count_; ++i) {
    if (sizes_[i] == kNoValue) continue;
    texts[i] = {at, sizes_[i]};
    at += sizes_[i];
  }
  column_.appendTexts({texts.data(), count_});
  bytes_.clear();
  count_ = 0;
}

}  // namespace bw
