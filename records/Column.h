#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "records/TextDictionary.h"
#include "text/Value.h"

namespace bw {

class RowLookUp;

static_assert(std::endian::native == std::endian::little, "Column packs the low bytes of numbers.");

// One column of a row store. Every value is kept as one whole number, its raw value: the integer
// itself, the day of a date, the second of a time, day * 86400 + second of both, the dictionary's
// number of a text. Blocks of rows are packed to as many bits a value as their range needs.
//
// A looked-up column holds the values of another store's rows; a row has that of the row which its
// key names. Everything else about it is like in a column that holds a value for each row.
class Column {
 public:
  static constexpr std::int64_t kNull = std::numeric_limits<std::int64_t>::min();

  Column(std::string name, FieldType type) : name_(std::move(name)), declared_(type) {}

  const std::string& name() const noexcept { return name_; }
  FieldType declared() const noexcept { return declared_; }
  // The declared type; of an untyped column integer or text, by its first value.
  FieldType type() const noexcept { return type_; }
  bool isText() const noexcept { return type_ == FieldType::text; }
  std::size_t size() const noexcept;

  // Appends what the engine delivers. What stands in a date or time column must be a text of the
  // database's form; if it is not, it is kept as no value.
  void appendNull() {
    if (lookUp_ == nullptr) append(kNull);
  }
  void appendInteger(std::int64_t number);
  void appendText(std::string_view text);
  // A date, time or both as its raw value, to a column declared so.
  void appendMoment(std::int64_t raw) { append(raw); }
  // At most kMostTexts, to a column of texts. One without data stands for Null.
  void appendTexts(std::span<const std::string_view> texts);
  static constexpr std::size_t kMostTexts = 256;
  void finish();  // gives back what was reserved for further rows

  // The column with its rows in that order.
  Column ordered(const std::vector<std::uint32_t>& rows) &&;

  // Makes the values so far those of the rows that `rows` finds. From then on the column is as long
  // as the one with the keys, and values can only be written over.
  void lookUp(std::string name, std::shared_ptr<const RowLookUp> rows);
  bool isLookedUpBy(const Column& key) const noexcept;
  // Lets a row of a looked-up column keep its value when its key changes.
  void keep(std::size_t row) { written_.try_emplace(static_cast<std::uint32_t>(row), raw(row)); }

  // Of a looked-up column: null for one that holds a value for each row.
  const RowLookUp* lookUp() const noexcept { return lookUp_.get(); }
  // What the row of the other store has.
  std::int64_t rawFound(std::uint32_t found) const noexcept;
  // What stands over that, by row.
  const std::unordered_map<std::uint32_t, std::int64_t>& written() const noexcept {
    return written_;
  }

  Value value(std::size_t row) const;
  bool isNull(std::size_t row) const noexcept { return raw(row) == kNull; }
  std::int64_t raw(std::size_t row) const noexcept {
    return lookUp_ == nullptr ? held(row) : lookedUp(row);
  }
  std::string_view textOfRaw(std::int64_t raw) const { return dictionary_.text(raw); }

  static DateTime momentOfRaw(std::int64_t raw) noexcept;

  // Stores a value that fits the column's type already (see convertedTo).
  void set(std::size_t row, const Value& value);

  // No value lies beyond these; of texts the ranks do not.
  struct Bounds {
    std::int64_t lowest = std::numeric_limits<std::int64_t>::max();
    std::int64_t highest = std::numeric_limits<std::int64_t>::min();
  };
  Bounds bounds() const noexcept;
  // False when no row is without a value, for sure.
  bool mayHoldNull() const noexcept;

  // Keys that order like the values, without regard to the case of texts; Null is the lowest.
  // Ranks stay valid until the column grows or changes.
  std::int64_t rank(std::int64_t raw) const noexcept {
    return raw == kNull || !isText() ? raw : dictionary_.rank(raw);
  }
  void prepareRanks() const {
    if (isText()) dictionary_.prepareRanks();
  }

  const TextDictionary& dictionary() const noexcept { return dictionary_; }
  std::size_t bytes() const noexcept;

 private:
  static constexpr std::size_t kBlockRows = 1U << 14U;

  // Values less `base`, packed bit behind bit; the highest code stands for Null.
  struct Block {
    std::int64_t base = 0;
    std::uint64_t nullCode = 0;  // all bits of a code
    std::uint8_t width = 0;      // bits a value: up to kMostShifted, or kWhole
    bool mayHoldNull = false;
    std::vector<std::uint8_t> bytes;  // and a word behind the last value

    static constexpr unsigned kWhole = 64;
    static constexpr unsigned kMostShifted = 57;  // wherever it begins in a byte, a word holds it

    std::int64_t raw(std::size_t index) const noexcept {
      const std::size_t bit = index * width;
      std::uint64_t word = 0;
      std::memcpy(&word, bytes.data() + bit / 8, sizeof word);
      const std::uint64_t code = (word >> bit % 8) & nullCode;
      if (code == nullCode) return kNull;
      return static_cast<std::int64_t>(static_cast<std::uint64_t>(base) + code);
    }
    std::int64_t highest() const noexcept;  // that fits
    void pack(const std::vector<std::int64_t>& values);
    // Overwrites one value; false when it does not fit the block's base and width.
    bool store(std::size_t index, std::int64_t raw) noexcept;

   private:
    std::uint64_t codeOf(std::int64_t raw) const noexcept {
      return raw == kNull ? nullCode
                          : static_cast<std::uint64_t>(raw) - static_cast<std::uint64_t>(base);
    }
    void fit(const std::vector<std::int64_t>& values);
  };

  std::int64_t held(std::size_t index) const noexcept {
    const std::size_t block = index / kBlockRows;
    return block < sealed_ ? blocks_[block].raw(index % kBlockRows) : open_[index % kBlockRows];
  }
  std::size_t heldSize() const noexcept { return sealed_ * kBlockRows + open_.size(); }
  std::int64_t lookedUp(std::size_t row) const noexcept;
  std::int64_t foundByKey(std::size_t row) const noexcept;

  void append(std::int64_t raw) {
    open_.push_back(raw);
    if (open_.size() == kBlockRows) seal();
  }
  void seal();
  std::int64_t rawOf(const Value& value);
  void becomeText();

  std::string name_;
  FieldType declared_;
  FieldType type_ = declared_;
  std::vector<Block> blocks_;
  std::size_t sealed_ = 0;
  std::vector<std::int64_t> open_;
  TextDictionary dictionary_;
  std::shared_ptr<const RowLookUp> lookUp_;  // of a looked-up column
  std::unordered_map<std::uint32_t, std::int64_t> written_;
};

}  // namespace bw
