#include <gtest/gtest.h>

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "tests/viewer/SampleDocument.h"
#include "viewer/FittedDocument.h"
#include "viewer/PagePainter.h"

namespace bw {

namespace {

struct DrawnText {
  QRectF rect;  // twips of paper
  QString text;
  int size = 0;  // of the font, twips
  int percent = 100;
};

// Takes down where texts are drawn, and how.
class RecordingEngine : public QPaintEngine {
 public:
  RecordingEngine() : QPaintEngine(AllFeatures) {}

  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  void updateState(const QPaintEngineState&) override {}
  void drawPath(const QPainterPath&) override {}
  void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
  void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
  Type type() const override { return User; }

  void drawTextItem(const QPointF& at, const QTextItem& item) override {
    const int stretch = item.font().stretch();
    texts.push_back(
        {QRectF(at.x(), at.y() - item.ascent(), item.width(), item.ascent() + item.descent()),
         item.text(), item.font().pixelSize(), stretch == 0 ? 100 : stretch});
  }

  std::vector<DrawnText> texts;
};

class RecordingDevice : public QPaintDevice {
 public:
  QPaintEngine* paintEngine() const override { return &engine_; }
  int metric(PaintDeviceMetric metric) const override {
    const bool extent = metric == PdmWidth || metric == PdmHeight;
    return extent ? 100'000 : metric == PdmDepth ? 32 : metric == PdmDevicePixelRatio ? 1 : 96;
  }
  const std::vector<DrawnText>& texts() const { return engine_.texts; }

 private:
  mutable RecordingEngine engine_;
};

std::vector<DrawnText> drawn(const FittedPage& page) {
  RecordingDevice device;
  QPainter painter(&device);
  PagePainter().paint(painter, page, QRectF(-1e6, -1e6, 2e6, 2e6));
  painter.end();
  return device.texts();
}

bool besideEachOther(const QRectF& a, const QRectF& b) {
  const double both = std::min(a.bottom(), b.bottom()) - std::max(a.top(), b.top());
  return both > 0.4 * std::min(a.height(), b.height());
}

FittedDocument fitted(const std::string& text) {
  return {std::make_shared<const Document>(DocumentBytes(text)), paintedLetters()};
}

class GoldenPaper : public ::testing::TestWithParam<std::string> {
 protected:
  GoldenPaper() {
    for (std::size_t page = 1; page <= document_.document().pageCount(); ++page)
      pages_.push_back(document_.make(page));
  }

  std::error_code error_;
  FittedDocument document_{Document::open(GOLDEN_FOLDER "/" + GetParam() + "/expected.myv", error_),
                           paintedLetters()};
  const QRectF paper_{0, 0, document_.fit().paperWidth(), document_.fit().paperHeight()};
  std::vector<FittedPage> pages_;
};

}  // namespace

TEST_P(GoldenPaper, NoTextReachesAnotherOrLeavesThePage) {
  for (const FittedPage& page : pages_) {
    const auto texts = drawn(page);
    ASSERT_GT(texts.size(), 20U);
    for (auto a = texts.begin(); a != texts.end(); ++a) {
      EXPECT_TRUE(paper_.contains(a->rect)) << a->text.toStdString();
      for (auto b = a + 1; b != texts.end(); ++b) {
        const double across = a->rect.intersected(b->rect).width();
        EXPECT_FALSE(across > 2 && besideEachOther(a->rect, b->rect))
            << a->text.toStdString() << " | " << b->text.toStdString();
      }
    }
  }
}

TEST_P(GoldenPaper, NoTextCrossesAFrame) {
  for (const FittedPage& page : pages_) {
    const auto texts = drawn(page);
    for (std::size_t i = 0; i < page.items.size(); ++i) {
      if (page.page->items[i].kind != ItemKind::shape) continue;
      const QRectF shape = rectOf(page.items[i].box);
      for (const DrawnText& text : texts) {
        for (const double edge : {shape.left(), shape.right()}) {
          EXPECT_FALSE(text.rect.left() < edge - 1 && text.rect.right() > edge + 1 &&
                       shape.intersected(text.rect).height() > 0.4 * text.rect.height())
              << text.text.toStdString();
        }
      }
    }
  }
}

TEST_P(GoldenPaper, LettersStayReadable) {
  double all = 0;
  double cut = 0;
  for (const FittedPage& page : pages_) {
    for (const DrawnText& text : drawn(page)) {
      EXPECT_GE(text.percent, 60) << text.text.toStdString();
      EXPECT_GE(text.size, 6 * 20) << text.text.toStdString();
    }
    for (std::size_t i = 0; i < page.items.size(); ++i) {
      const PageItem& item = page.page->items[i];
      const FittedItem& fitted = page.items[i];
      all += static_cast<double>(item.text.size());
      if (fitted.isCut) cut += static_cast<double>(fitted.cut.tail - fitted.cut.kept);
      const bool isShortCode = !item.text.empty() && item.text.size() <= 8 &&
                               item.text.find(' ') == item.text.npos && item.fontSize >= 8;
      EXPECT_FALSE(isShortCode && fitted.size < 8 * 20) << item.text;
    }
  }
  EXPECT_LE(cut / all, 0.02) << "the share of letters that are not drawn";
}

INSTANTIATE_TEST_SUITE_P(Reports, GoldenPaper,
                         ::testing::Values("billing_long_codes", "detail_long_texts",
                                           "list_long_texts", "list_long_texts_wide"),
                         [](const auto& test) { return test.param; });

TEST(PageFit, PagesComeOnPaperThatExists) {
  const PageSize letter{8.5, 11};
  const PageSize letterAcross{11, 8.5};
  const double turned = 8.5 / 11;
  const struct {
    PageSize page;
    double rightEdge;  // inches
    PageSize paper;
    double across;
    double down;
    const char* sentence;
  } cases[] = {
      {{8, 11}, 7.6, letter, 1, 1, ""},
      {{8, 11}, 8.2, letter, 1, 1, ""},
      {{11, 8.2}, 10.6, letterAcross, 1, 1, ""},
      {{8, 12}, 7.6, {210 / 25.4, 297 / 25.4}, 1, 1, ""},
      {{8, 11}, 10.6, letter, 8.25 / 10.6, 1, "Drawn at 77 %, so that all columns fit"},
      {{8, 11},
       12.6,
       letterAcross,
       turned,
       turned,
       "Turned, drawn at 77 %, so that all columns fit"},
      {{34, 22}, 20, {17, 11}, 0.5, 0.5, ""},
  };
  for (const auto& [page, rightEdge, paper, across, down, words] : cases) {
    SCOPED_TRACE(std::to_string(page.width) + ' ' + std::to_string(rightEdge));
    const PageFit fit = fitToPaper(page, rightEdge * kTwipsPerInch);
    EXPECT_NEAR(fit.paper.width, paper.width, 1e-9);
    EXPECT_NEAR(fit.paper.height, paper.height, 1e-9);
    EXPECT_NEAR(fit.across, across, 1e-9);
    EXPECT_NEAR(fit.down, down, 1e-9);
    EXPECT_EQ(sentence(fit), words);
    EXPECT_EQ(naturalFit(page, rightEdge * kTwipsPerInch).bodyRight, 0);
  }
}

TEST(PageFit, RightEdgeIsThatOfWhatIsSeen) {
  std::string text = sampleHead() + sampleShape(1, "720,100,10000,72");
  const auto edge = [&] { return Document(DocumentBytes(text)).rightEdge(); };
  EXPECT_EQ(edge(), 10720);
  // Of a text's box half an inch; nothing of an empty one; nothing that is damaged.
  text += sampleText({.box = "10500,100,9000,360", .text = "wide box"});
  text += sampleText({.box = "12000,100,9000,360"});
  text += sampleShape(1, "900000,100,10000,72") + sampleShape(1, "x,100,20000,72");
  EXPECT_EQ(edge(), 11220);
  text += sampleText({.page = 2, .box = "11300,100,36,360", .text = "narrow"});
  EXPECT_EQ(edge(), 11336);
}

TEST(FittedPage, CutTextKeepsItsCodeAndTellsWhereItsLettersAre) {
  const std::string name(60, 'W');
  const auto document =
      fitted(sampleHead() + sampleText({.box = "1000,1000,100,360", .text = name + " (I10.9)"}) +
             sampleText({.box = "4000,1000,100,360", .text = "next"}));
  const FittedPage page = document.make(1);
  const FittedItem& cut = page.items[0];
  ASSERT_TRUE(cut.isCut);
  EXPECT_TRUE(QString::fromStdU16String(cut.text).endsWith(QString(QChar(0x2026)) + "(I10.9)"));
  EXPECT_LT(cut.box.right(), 4000);
  PagePainter painter;
  const QRectF hidden = painter.partRects(page, 0, 50, 3).front();
  const QRectF code = painter.partRects(page, 0, 62, 5).front();
  EXPECT_GT(hidden.left(), 1000);
  EXPECT_LE(hidden.right(), code.left() + 1e-6);
  EXPECT_LT(code.right(), cut.box.right());
}

TEST(FittedPage, LongCodeBreaksOnlyWhereItsRowHasTheRoom) {
  const std::string code = "WWWWWW-WWWWWWWW";
  const std::string row = sampleText({.box = "1000,1000,100,288", .text = code}) +
                          sampleText({.box = "1600,1000,100,288", .text = "next"});
  const FittedPage free = fitted(sampleHead() + row).make(1);
  EXPECT_EQ(free.items[0].broken, 7U);
  EXPECT_FALSE(free.items[0].isCut);
  PagePainter painter;
  const auto both = painter.partRects(free, 0, 5, 4);
  ASSERT_EQ(both.size(), 2U);
  EXPECT_LT(both[0].top(), both[1].top());
  const auto below = sampleText({.box = "1010,1150,100,288", .text = "below"});
  EXPECT_TRUE(fitted(sampleHead() + row + below).make(1).items[0].isCut);
}

}  // namespace bw
