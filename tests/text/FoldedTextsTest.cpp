#include "text/FoldedTexts.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "text/Text.h"

namespace bw {
namespace {

// Texts that agree for long, end early, contain zeros and, from the fifth piece on, letters that
// fold to more bytes or none at all.
std::string randomText(std::mt19937& random, std::size_t pieces) {
  static const std::string kPieces[] = {
      "a", "A", std::string(1, '\0'), "Group of doctors ", "ß", "É", "é", "\xff"};
  std::string text;
  for (std::size_t left = random() % 7; left > 0; --left) text += kPieces[random() % pieces];
  return text;
}

TEST(FoldedTexts, RanksAreTheOrderOfTheFoldings) {
  for (std::uint32_t seed = 0; seed < 50; ++seed) {
    std::mt19937 random(seed);
    std::vector<std::string> foldings;
    std::string texts;
    std::vector<std::size_t> starts{0};
    for (std::size_t left = random() % 600; left > 0; --left) {
      const std::string text = randomText(random, seed % 2 == 0 ? 4 : 8);
      texts += text;
      starts.push_back(texts.size());
      foldings.push_back(fold(text));
    }
    const std::set<std::string> distinct(foldings.begin(), foldings.end());
    const std::vector<std::uint32_t> ranks = FoldedTexts(texts, starts).ranks();
    ASSERT_EQ(ranks.size(), foldings.size());
    for (std::size_t i = 0; i < ranks.size(); ++i)
      ASSERT_EQ(ranks[i], std::distance(distinct.begin(), distinct.find(foldings[i])))
          << "seed " << seed << ", text " << i;
  }
}

}  // namespace
}  // namespace bw
