#include "viewer/PageFit.h"

#include <algorithm>
#include <array>

namespace bw {

namespace {

// Upright, in inches; of papers that do equally well the first one.
constexpr std::array kPapers = {
    PageSize{8.5, 11},                 // Letter
    PageSize{210 / 25.4, 297 / 25.4},  // A4
    PageSize{8.5, 14},                 // Legal
    PageSize{148 / 25.4, 210 / 25.4},  // A5
    PageSize{7.25, 10.5},              // Executive
    PageSize{11, 17},                  // Tabloid
    PageSize{297 / 25.4, 420 / 25.4},  // A3
};

// A page may be this much larger than the paper that it was made for.
constexpr double kRounding = 0.5;
// What most printers leave blank at an edge.
constexpr double kMargin = 0.25;
constexpr double kLeastNarrowing = 0.75;

double scaleFor(PageSize page, PageSize paper) {
  const auto fit = [](double wanted, double there) {
    return wanted <= there + kRounding ? 1.0 : there / wanted;
  };
  return std::min(fit(page.width, paper.width), fit(page.height, paper.height));
}

PageSize turned(PageSize size) { return {size.height, size.width}; }

PageFit upright(PageSize page) {
  PageFit fit{.paper = paperFor(page)};
  fit.across = fit.down = scaleFor(page, fit.paper);
  fit.used = {std::min(page.width * fit.across, fit.paper.width),
              std::min(page.height * fit.down, fit.paper.height)};
  return fit;
}

// Narrows by what the items stick out. Letters never get narrower than 75 % of their height's.
void narrow(PageFit& fit, double rightEdge) {
  const double room = fit.paperWidth() - kMargin * kTwipsPerInch;
  fit.across = std::min(fit.across, room / rightEdge);
  fit.down = std::min(fit.down, fit.across / kLeastNarrowing);
  fit.bodyRight = rightEdge * fit.across;
  fit.used = fit.paper;
}

}  // namespace

PageSize paperFor(PageSize page) {
  const bool wide = page.width > page.height;
  const PageSize wanted = wide ? turned(page) : page;
  const PageSize* best = &kPapers.front();
  for (const PageSize& paper : kPapers) {
    const double gain = scaleFor(wanted, paper) - scaleFor(wanted, *best);
    const bool smaller = paper.width * paper.height < best->width * best->height;
    if (gain > 0 || (gain == 0 && smaller)) best = &paper;
  }
  return wide ? turned(*best) : *best;
}

PageFit fitToPaper(PageSize page, double rightEdge) {
  PageFit fit = upright(page);
  const double room = fit.paperWidth() - kMargin * kTwipsPerInch;
  const double free = std::max(room, page.width * fit.across * kTwipsPerInch);
  if (rightEdge * fit.across <= std::min(free, fit.paperWidth())) return fit;
  fit.turned =
      fit.paper.width < fit.paper.height && room / rightEdge < kLeastNarrowing * fit.across;
  if (fit.turned) {
    fit.across = fit.down = fit.down * fit.paper.width / fit.paper.height;
    fit.paper = turned(fit.paper);
  }
  narrow(fit, rightEdge);
  return fit;
}

PageFit naturalFit(PageSize page, double rightEdge) {
  PageFit fit = upright(page);
  fit.paper.width = std::max(fit.paper.width, rightEdge * fit.across / kTwipsPerInch + kMargin);
  return fit;
}

std::string sentence(const PageFit& fit) {
  if (fit.bodyRight == 0) return {};
  // Rounded down, as everything that has to fit.
  const std::string percent = std::to_string(static_cast<int>(fit.across * 100));
  return (fit.turned ? "Turned, drawn at " : "Drawn at ") + percent + " %, so that all columns fit";
}

}  // namespace bw
