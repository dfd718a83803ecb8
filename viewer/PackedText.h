#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace bw {

// Eight bytes of a text as one number, so that a line is told apart from the one before, and placed
// against another, in a few steps.

constexpr std::size_t kPacked = sizeof(std::uint64_t);
constexpr std::uint64_t kEachByte = 0x0101010101010101;

// The first byte lowest. `text` has as many bytes at least.
inline std::uint64_t loaded(std::string_view text) noexcept {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, text.data(), kPacked);
  return std::endian::native == std::endian::little ? bytes : __builtin_bswap64(bytes);
}

// The first byte highest.
inline std::uint64_t packed(std::string_view text) noexcept {
  return __builtin_bswap64(loaded(text));
}

// Marks the first `count` bytes, from 1 to 8, of a text for `commaAmong`.
inline std::uint64_t firstBytes(int count) noexcept {
  return (0x80 * kEachByte) >> (8 * (8 - count));
}

// Whether the text has a comma among the bytes marked.
inline bool commaAmong(std::string_view text, std::uint64_t marked) noexcept {
  const std::uint64_t bytes = loaded(text) ^ (',' * kEachByte);
  // The high bit of the first byte that is 0, and maybe of bytes behind it.
  return ((bytes - kEachByte) & ~bytes & marked) != 0;
}

// The decimal digits that the packed text begins with, one a byte, the last one lowest: of two
// numbers the larger one has the larger packed digits.
inline std::uint64_t leadingDigits(std::uint64_t bytes) noexcept {
  const std::uint64_t values = bytes ^ ('0' * kEachByte);
  // The high bit of every byte above 9.
  const std::uint64_t others =
      (((values & (0x7F * kEachByte)) + 0x76 * kEachByte) | values) & (0x80 * kEachByte);
  const int bits = std::countl_zero(others) / 8 * 8;
  return bits == 0 ? 0 : values >> (64 - bits);
}

inline std::uint64_t packedDigits(std::uint32_t number) noexcept {
  std::uint64_t digits = 0;
  for (int shift = 0; number > 0 && shift < 64; shift += 8, number /= 10) {
    digits |= std::uint64_t{number % 10} << shift;
  }
  return digits;
}

// What following lines are to begin with, up to eight bytes; nothing begins with a longer one.
class LineStart {
 public:
  LineStart() = default;
  explicit LineStart(std::string_view start) noexcept {
    if (start.empty() || start.size() > kPacked) return;
    char bytes[kPacked] = {};
    std::copy(start.begin(), start.end(), bytes);
    size_ = start.size();
    mask_ = ~std::uint64_t{0} >> (64 - 8 * size_);
    bytes_ = loaded({bytes, kPacked});
  }

  std::size_t size() const noexcept { return size_; }
  // `line` has eight bytes at least.
  bool begins(std::string_view line) const noexcept { return (loaded(line) & mask_) == bytes_; }

 private:
  std::size_t size_ = 0;
  std::uint64_t mask_ = 0;
  std::uint64_t bytes_ = 1;
};

}  // namespace bw
