#include "viewer/TextFit.h"

#include <algorithm>

namespace bw {

namespace {

constexpr char kEllipsis = '\x85';
constexpr int kPercentStep = 5;
constexpr int kSizeStep = 10;

int wholeSteps(double value, int step) { return static_cast<int>(value) / step * step; }

}  // namespace

double LetterWidths::of(std::string_view text, bool isBold) const noexcept {
  const auto& widths = isBold ? bold : plain;
  double sum = 0;
  for (const char letter : text) {
    sum += static_cast<double>(widths[static_cast<unsigned char>(letter)]);
  }
  return sum;
}

Setting settle(const Wanted& wanted) {
  const int most = std::max(wanted.percent, kLeastPercent);
  const double natural = wanted.letters * wanted.size / 100;
  if (natural * most <= wanted.room) return {wanted.size, most};
  const int percent = std::min(most, wholeSteps(wanted.room / natural, kPercentStep));
  if (percent >= kLeastPercent) return {wanted.size, percent};
  const int size = wholeSteps(wanted.room / wanted.letters * 100 / kLeastPercent, kSizeStep);
  if (size >= wanted.leastSize) return {std::min(size, wanted.size), kLeastPercent};
  return {wanted.leastSize, kLeastPercent, false};
}

bool isCode(std::string_view text) noexcept { return !text.empty() && text.find(' ') == text.npos; }

int leastSize(std::string_view text, int size) noexcept {
  return std::min(size, isCode(text) && text.size() <= kShortCode ? kLeastCodeSize : kLeastSize);
}

CutText cutToFit(std::string_view text, const LetterWidths& widths, bool bold, double letters) {
  const auto width = [&](std::string_view part) { return widths.of(part, bold); };
  double left = letters - width({&kEllipsis, 1});
  std::size_t tail = text.size();
  if (const std::size_t code = text.rfind('('); code != text.npos && text.ends_with(')')) {
    const double needed = width(text.substr(code));
    if (needed <= left * 2 / 3) {
      tail = code;
      left -= needed;
    }
  }
  std::size_t kept = 0;
  while (kept < tail && (left -= width(text.substr(kept, 1))) >= 0) ++kept;
  while (kept > 0 && text[kept - 1] == ' ') --kept;
  return {kept, tail};
}

std::size_t breakPoint(std::string_view code) noexcept {
  const std::size_t middle = (code.size() + 1) / 2;
  constexpr std::size_t kNear = 2;
  for (std::size_t off = 0; off <= kNear && off < middle; ++off) {
    for (const std::size_t at : {middle - off, middle + off}) {
      if (at < code.size() && std::string_view("-./_").find(code[at - 1]) != std::string_view::npos)
        return at;
    }
  }
  return middle;
}

}  // namespace bw
