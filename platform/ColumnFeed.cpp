#include "platform/ColumnFeed.h"

namespace bw {

template <class OnText, class OnNull>
void ColumnFeed::eachText(OnText onText, OnNull onNull) const {
  const char* at = bytes_.data();
  for (std::size_t i = 0; i < count_; ++i) {
    if (sizes_[i] == kNoValue) {
      onNull();
      continue;
    }
    onText(std::string_view(at, sizes_[i]));
    at += sizes_[i];
  }
}

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
  eachText([this](std::string_view text) { column_.dictionary().prefetch(text); }, [] {});
  eachText([this](std::string_view text) { column_.appendText(text); },
           [this] { column_.appendNull(); });
  bytes_.clear();
  count_ = 0;
}

}  // namespace bw
