#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace bw {

// The line feeds of a text one after the other, 64 bytes looked at together: lines of a report are
// so short that a search from each to the next would spend its time on setting out.
class LineEnds {
 public:
  LineEnds(std::string_view bytes, std::size_t begin) noexcept : bytes_(bytes), block_(begin) {
    look();
  }

  // Offset of the next line feed; the end of the text when there is none.
  std::size_t next() noexcept {
    while (found_ == 0) {
      if (bytes_.size() - block_ <= kBlock) return bytes_.size();
      block_ += kBlock;
      look();
    }
    const std::size_t at = block_ + static_cast<std::size_t>(std::countr_zero(found_));
    found_ &= found_ - 1;
    return at;
  }

 private:
  static constexpr std::size_t kBlock = 64;

  void look() noexcept {
    const char* const at = bytes_.data() + block_;
    const std::size_t left = bytes_.size() - block_;
    found_ = left < kBlock ? lineFeeds(at, left) : lineFeeds(at);
  }

  static std::uint64_t lineFeeds(const char* at, std::size_t count) noexcept {
    std::uint64_t found = 0;
    for (std::size_t i = 0; i < count; ++i) found |= std::uint64_t{at[i] == '\n'} << i;
    return found;
  }

#ifdef __SSE2__
  static std::uint64_t lineFeeds(const char* at) noexcept {
    const __m128i feed = _mm_set1_epi8('\n');
    std::uint64_t found = 0;
    for (unsigned part = 0; part < 4; ++part) {
      const auto bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at) + part);
      const auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, feed)));
      found |= std::uint64_t{mask} << (16 * part);
    }
    return found;
  }
#else
  static std::uint64_t lineFeeds(const char* at) noexcept { return lineFeeds(at, kBlock); }
#endif

  std::string_view bytes_;
  std::size_t block_ = 0;
  std::uint64_t found_ = 0;
};

}  // namespace bw
