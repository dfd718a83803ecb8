#include "platform/FoldedTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "platform/Text.h"

namespace bw {
namespace {

// Texts that agree for long, end early, contain zeros or letters that fold to more bytes.
std::string randomText(std::mt19937& random) {
  static const std::string kPieces[] = {
      "a", "A", std::string(1, '\0'), "Group of doctors ", "ß", "É", "é", "\xff"};
  std::string text;
  for (std::size_t left = random() % 7; left > 0; --left)
    text += kPieces[random() % std::size(kPieces)];
  return text;
}

TEST(FoldedTexts, RanksAreTheOrderOfTheFoldings) {
  for (std::uint32_t seed = 0; seed < 50; ++seed) {
    std::mt19937 random(seed);
    std::vector<std::string> foldings;
    FoldedTexts texts(0, 0);
    for (std::size_t left = random() % 300; left > 0; --left) {
      const std::string text = randomText(random);
      texts.add(text);
      foldings.push_back(fold(text));
    }
    const std::set<std::string> distinct(foldings.begin(), foldings.end());
    const std::vector<std::uint32_t> ranks = texts.ranks();
    ASSERT_EQ(ranks.size(), foldings.size());
    for (std::size_t i = 0; i < ranks.size(); ++i)
      ASSERT_EQ(ranks[i], std::distance(distinct.begin(), distinct.find(foldings[i])))
          << "seed " << seed << ", text " << i;
  }
}

}  // namespace
}  // namespace bw
