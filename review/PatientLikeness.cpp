#include "review/PatientLikeness.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "text/Formats.h"
#include "text/Text.h"
#include "text/TextSearch.h"

namespace bw {
namespace {

using Take = std::function<void(std::uint64_t)>;

// Code points of a text; an ill-formed byte counts as one.
std::u32string codePoints(std::string_view text) {
  std::u32string points;
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const std::size_t size = lead < 0xc0 ? 1 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
    char32_t point = lead;
    for (std::size_t next = i + 1; next < std::min(i + size, text.size()); ++next)
      point = point << 8U | static_cast<unsigned char>(text[next]);
    points += point;
    i += size;
  }
  return points;
}

bool isSign(char32_t point) {
  return point < 0x80 && !(point >= U'a' && point <= U'z') && !(point >= U'0' && point <= U'9');
}

std::vector<std::u32string> wordsOf(std::string_view text) {
  std::vector<std::u32string> words(1);
  for (const char32_t point : codePoints(searchText(text))) {
    if (!isSign(point))
      words.back() += point;
    else if (point != U'\'' && !words.back().empty())
      words.emplace_back();
  }
  if (words.back().empty()) words.pop_back();
  return words;
}

std::u32string joinedWords(const std::vector<std::u32string>& words) {
  std::u32string text;
  for (const std::u32string& word : words) text += (text.empty() ? U"" : U" ") + word;
  return text;
}

std::string lettersAndDigits(std::string_view text) {
  std::string plain;
  for (const char c : fold(text))
    if ((static_cast<unsigned char>(c) & 0x80U) != 0 || !isSign(static_cast<unsigned char>(c)))
      plain += c;
  return plain;
}

std::string withoutEndBlanks(std::string_view text) {
  const std::size_t end = text.find_last_not_of(' ');
  return end == text.npos ? std::string() : fold(text.substr(0, end + 1));
}

// A hash of what it is given, piece by piece.
class Key {
 public:
  explicit Key(std::uint64_t seed) : hash_(seed * 0x9e3779b97f4a7c15U + 1) {}
  Key& add(std::uint64_t number) noexcept {
    hash_ = (hash_ ^ number) * 0xff51afd7ed558ccdU;
    hash_ ^= hash_ >> 32U;
    return *this;
  }
  template <class Text>
  Key& addText(const Text& text) noexcept {
    for (const auto letter : text) add(static_cast<std::uint64_t>(letter));
    return *this;
  }
  std::uint64_t value() const noexcept { return hash_; }

 private:
  std::uint64_t hash_;
};

Key keyOfDay(const LikenessOf& one) { return Key(1).add(static_cast<std::uint64_t>(one.birth)); }

bool sameBirth(const LikenessOf& one, const LikenessOf& other) {
  return one.birth != Column::kNull && one.birth == other.birth;
}
bool sameExactName(const LikenessOf& one, const LikenessOf& other) {
  return !one.exactName.empty() && one.exactName == other.exactName;
}
bool sameName(const LikenessOf& one, const LikenessOf& other) {
  return !one.sorted.empty() && one.sorted == other.sorted;
}

// The day as eight digits, year first.
using Digits = std::array<char, 8>;
Digits digitsOf(std::int64_t day) {
  const std::string text = Format(Date{static_cast<std::int32_t>(day)}, "yyyymmdd");
  Digits digits{};
  std::copy_n(text.begin(), digits.size(), digits.begin());
  return digits;
}

Digits monthAndDaySwapped(Digits digits) {
  std::swap_ranges(digits.begin() + 4, digits.begin() + 6, digits.begin() + 6);
  return digits;
}

bool isOneSwapOfDigitsAway(const Digits& one, const Digits& other) {
  if (one == other) return false;
  const auto first = std::mismatch(one.begin(), one.end(), other.begin());
  const auto place = first.first - one.begin();
  Digits swapped = one;
  if (place + 1 < std::ssize(swapped))
    std::swap(swapped[static_cast<std::size_t>(place)],
              swapped[static_cast<std::size_t>(place) + 1]);
  return swapped == other || monthAndDaySwapped(one) == other;
}

std::size_t digitsThatDiffer(const Digits& one, const Digits& other) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < one.size(); ++i) count += one[i] != other[i] ? 1U : 0U;
  return count;
}

bool bothBorn(const LikenessOf& one, const LikenessOf& other) {
  return one.birth != Column::kNull && other.birth != Column::kNull;
}

// The keys. What is missing has none.

void accountKeys(const LikenessOf& one, const Take& take) {
  if (!one.account.empty()) take(Key(2).addText(one.account).value());
}
void birthAndNameKeys(const LikenessOf& one, const Take& take) {
  if (one.birth != Column::kNull && !one.sorted.empty())
    take(keyOfDay(one).addText(one.sorted).value());
}

// The name, and the name without each of its letters: two that are one edit apart share one.
void editedNameKeys(const LikenessOf& one, const Take& take) {
  if (one.birth == Column::kNull || one.name.empty()) return;
  take(keyOfDay(one).addText(one.name).value());
  for (std::size_t left = 0; left < one.name.size(); ++left) {
    if (left > 0 && one.name[left] == one.name[left - 1]) continue;
    take(keyOfDay(one)
             .addText(std::u32string_view(one.name).substr(0, left))
             .addText(std::u32string_view(one.name).substr(left + 1))
             .value());
  }
}

void birthDigitKeys(const LikenessOf& one, const Take& take) {
  if (one.birth == Column::kNull || one.sorted.empty()) return;
  const Digits digits = digitsOf(one.birth);
  const std::uint64_t name = Key(3).addText(one.sorted).value();
  for (std::size_t masked = 0; masked < digits.size(); ++masked) {
    Digits rest = digits;
    rest[masked] = '?';
    take(Key(name).addText(rest).value());
  }
}

// Whichever of two texts that are swapped comes first stands for both.
template <class Text>
void swapKeys(const Text& text, std::uint64_t with, const Take& take) {
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] == text[i + 1]) continue;
    Text swapped = text;
    std::swap(swapped[i], swapped[i + 1]);
    take(Key(with).add(i).addText(std::min(text, swapped)).value());
  }
}

void birthSwapKeys(const LikenessOf& one, const Take& take) {
  if (one.birth == Column::kNull || one.sorted.empty()) return;
  const Digits digits = digitsOf(one.birth);
  const std::uint64_t name = Key(4).addText(one.sorted).value();
  swapKeys(digits, name, take);
  take(Key(name).add(digits.size()).addText(std::min(digits, monthAndDaySwapped(digits))).value());
}

void accountSwapKeys(const LikenessOf& one, const Take& take) {
  if (one.birth != Column::kNull)
    swapKeys(one.account, Key(5).add(static_cast<std::uint64_t>(one.birth)).value(), take);
  if (!one.sorted.empty()) swapKeys(one.account, Key(6).addText(one.sorted).value(), take);
}

bool accountsSwapped(const LikenessOf& one, const LikenessOf& other) {
  return isOneSwapAway(codePoints(one.account), codePoints(other.account));
}

constexpr Likeness kLikenesses[] = {
    {.words = "Same account",
     .isExact = true,
     .holds =
         [](const LikenessOf& a, const LikenessOf& b) {
           return !a.exactAccount.empty() && a.exactAccount == b.exactAccount;
         },
     .keys =
         [](const LikenessOf& one, const Take& take) {
           if (!one.exactAccount.empty()) take(Key(7).addText(one.exactAccount).value());
         }},
    {.words = "Same name and date of birth",
     .isExact = true,
     .holds = [](const LikenessOf& a,
                 const LikenessOf& b) { return sameBirth(a, b) && sameExactName(a, b); },
     .keys =
         [](const LikenessOf& one, const Take& take) {
           if (one.birth != Column::kNull && !one.exactName.empty())
             take(keyOfDay(one).addText(one.exactName).value());
         }},
    {.words = "Accounts differ in blanks or signs alone",
     .holds =
         [](const LikenessOf& a, const LikenessOf& b) {
           return !a.account.empty() && a.account == b.account && a.exactAccount != b.exactAccount;
         },
     .keys = accountKeys},
    {.words = "Same date of birth, names differ in accents or signs alone",
     .holds =
         [](const LikenessOf& a, const LikenessOf& b) {
           return sameBirth(a, b) && !a.name.empty() && a.name == b.name &&
                  a.exactName != b.exactName;
         },
     .keys = birthAndNameKeys},
    {.words = "Same date of birth, names in another order",
     .holds =
         [](const LikenessOf& a, const LikenessOf& b) {
           return sameBirth(a, b) && sameName(a, b) && a.name != b.name;
         },
     .keys = birthAndNameKeys},
    {.words = "Same date of birth, two letters of the name swapped",
     .holds = [](const LikenessOf& a,
                 const LikenessOf& b) { return sameBirth(a, b) && isOneSwapAway(a.name, b.name); },
     .keys = editedNameKeys},
    {.words = "Same name, digits of the date of birth swapped",
     .holds =
         [](const LikenessOf& a, const LikenessOf& b) {
           return bothBorn(a, b) && sameName(a, b) &&
                  isOneSwapOfDigitsAway(digitsOf(a.birth), digitsOf(b.birth));
         },
     .keys = birthSwapKeys},
    {.words = "Same name, one digit of the date of birth differs",
     .holds =
         [](const LikenessOf& a, const LikenessOf& b) {
           return bothBorn(a, b) && sameName(a, b) &&
                  digitsThatDiffer(digitsOf(a.birth), digitsOf(b.birth)) == 1;
         },
     .keys = birthDigitKeys},
    {.words = "Same date of birth, one letter of the name differs",
     .holds = [](const LikenessOf& a,
                 const LikenessOf& b) { return sameBirth(a, b) && isOneEditAway(a.name, b.name); },
     .keys = editedNameKeys},
    {.words = "Digits of the account swapped, same name or date of birth",
     .holds =
         [](const LikenessOf& a, const LikenessOf& b) {
           return (sameBirth(a, b) || sameName(a, b)) && accountsSwapped(a, b);
         },
     .keys = accountSwapKeys},
};

}  // namespace

LikenessOf likenessOf(std::string_view name, std::int64_t birth, std::string_view account) {
  std::vector<std::u32string> words = wordsOf(name);
  LikenessOf one;
  one.name = joinedWords(words);
  std::sort(words.begin(), words.end());
  one.sorted = joinedWords(words);
  one.exactName = withoutEndBlanks(name);
  one.birth = birth;
  one.account = lettersAndDigits(account);
  one.exactAccount = withoutEndBlanks(account);
  return one;
}

std::span<const Likeness> likenesses() { return kLikenesses; }

bool isOneSwapAway(std::u32string_view one, std::u32string_view other) noexcept {
  if (one.size() != other.size()) return false;
  const auto [at, there] = std::mismatch(one.begin(), one.end(), other.begin());
  return one.end() - at >= 2 && at[0] == there[1] && at[1] == there[0] &&
         std::equal(at + 2, one.end(), there + 2);
}

bool isOneEditAway(std::u32string_view one, std::u32string_view other) noexcept {
  if (one.empty() || other.empty()) return false;
  if (one.size() > other.size()) std::swap(one, other);
  if (other.size() - one.size() > 1 || one == other) return false;
  const auto at = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
  const bool isLonger = other.size() > one.size();
  return std::equal(at.first + (isLonger ? 0 : 1), one.end(), at.second + 1, other.end()) ||
         isOneSwapAway(one, other);
}

}  // namespace bw
