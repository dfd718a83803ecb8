#include "viewer/Printing.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QLineEdit>
#include <QPageRanges>
#include <QPainter>
#include <QPrinter>
#include <QRadioButton>
#include <QRegularExpression>

#include "tests/tools/TemporaryFolder.h"
#include "tests/viewer/SampleDocument.h"
#include "viewer/FittedDocument.h"
#include "viewer/PagePainter.h"
#include "viewer/PrintDialog.h"

namespace bw {

namespace {

bool goOn(std::size_t, std::size_t) { return true; }

qsizetype pagesIn(const QByteArray& pdf) {
  static const QRegularExpression page("/Type /Page\\b");
  return QString::fromLatin1(pdf).count(page);
}

class Printed : public ::testing::Test {
 protected:
  Printed() {
    printer_.setOutputFormat(QPrinter::PdfFormat);
    printer_.setOutputFileName(QString::fromStdString(folder_ / "out.pdf"));
    printer_.setPageSize(QPageSize(QPageSize::Letter));
    buffer_.open(QIODevice::WriteOnly);
  }

  TemporaryFolder folder_;
  QBuffer buffer_;
  QPrinter printer_{QPrinter::HighResolution};
  Document document_{DocumentBytes(sampleList(57 * 5))};  // five pages
};

}  // namespace

TEST_F(Printed, PagesOfTheRangeTimesTheCopies) {
  printer_.setPrintRange(QPrinter::PageRange);
  printer_.setPageRanges(QPageRanges::fromString("2-3,5,9"));
  printer_.setCopyCount(2);
  EXPECT_EQ(printPages(printer_, document_, chosenPages(printer_, 5, 4), goOn), Outcome::done);
  const int copiesMade = printer_.supportsMultipleCopies() ? 1 : 2;
  EXPECT_EQ(pagesIn(QByteArray::fromStdString(folder_.read("out.pdf"))), 3 * copiesMade);
}

TEST_F(Printed, ChoiceOfPages) {
  EXPECT_EQ(chosenPages(printer_, 3, 2), (std::vector<std::size_t>{1, 2, 3}));
  printer_.setPageOrder(QPrinter::LastPageFirst);
  EXPECT_EQ(chosenPages(printer_, 3, 2), (std::vector<std::size_t>{3, 2, 1}));
  printer_.setPrintRange(QPrinter::CurrentPage);
  EXPECT_EQ(chosenPages(printer_, 3, 2), (std::vector<std::size_t>{2}));
  printer_.setPrintRange(QPrinter::PageRange);
  printer_.setFromTo(2, 3);
  EXPECT_EQ(chosenPages(printer_, 3, 1), (std::vector<std::size_t>{3, 2}));
  printer_.setPageRanges(QPageRanges::fromString("7-9"));
  EXPECT_TRUE(chosenPages(printer_, 3, 2).empty());
}

TEST_F(Printed, SeveralRangesOfTheDialogReachThePrinter) {
  PrintDialog dialog(&printer_);
  dialog.setMinMax(1, 5);
  dialog.findChild<QRadioButton*>("pagesRadioButton")->setChecked(true);
  dialog.findChild<QLineEdit*>("pagesLineEdit")->setText("2-3,5");
  dialog.accept();
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(chosenPages(printer_, 5, 1), (std::vector<std::size_t>{2, 3, 5}));
}

TEST_F(Printed, PaperIsTheOneThatTheDocumentWasMadeFor) {
  preparePrinter(printer_, Document(DocumentBytes(sampleHead("11,8.2"))), "x");
  EXPECT_EQ(printer_.pageLayout().orientation(), QPageLayout::Landscape);
  EXPECT_EQ(printer_.pageLayout().pageSize().id(), QPageSize::Letter);
  preparePrinter(printer_, Document(DocumentBytes(sampleHead("8,12"))), "x");
  EXPECT_EQ(printer_.pageLayout().orientation(), QPageLayout::Portrait);
  EXPECT_EQ(printer_.pageLayout().pageSize().id(), QPageSize::A4);
}

TEST_F(Printed, StoppedWorkSaysSo) {
  const auto stopAtTwo = [](std::size_t done, std::size_t) { return done < 2; };
  EXPECT_EQ(printPages(printer_, document_, {1, 2, 3}, stopAtTwo), Outcome::stopped);
  EXPECT_EQ(writePdf(buffer_, document_, "x", stopAtTwo), Outcome::stopped);
}

TEST_F(Printed, PdfHasAllPagesOnTheirPaperAndItsFontsWithin) {
  ASSERT_EQ(writePdf(buffer_, document_, "Patients", goOn), Outcome::done);
  const QByteArray pdf = buffer_.data();
  EXPECT_EQ(pagesIn(pdf), 5);
  EXPECT_TRUE(pdf.contains("/MediaBox [0 0 612 792]") || pdf.contains("612.000000 792.000000"))
      << pdf.mid(pdf.indexOf("/MediaBox"), 60).toStdString();
  EXPECT_TRUE(pdf.contains("/FontFile2"));
  EXPECT_TRUE(pdf.contains("/ToUnicode"));
}

TEST(PagePainter, ExtremesAreDrawnWithoutFailure) {
  const FittedDocument document(
      std::make_shared<const Document>(DocumentBytes(
          sampleHead() + sampleShape(1, "-1440000,-1440000,1440000,1440000") +
          sampleShape(1, "1000,1000,-72,360") +
          sampleShape(1, "0,0,0,0", "4294967295,-1", "1440000") +
          sampleText(
              {.box = "1440000,1440000,-1440000,1440000", .look = "500,1,1", .text = "huge"}) +
          sampleText({.look = "0.01,0,1", .text = std::string(30'000, 'W')}))),
      paintedLetters());
  EXPECT_EQ(document.make(1).items.size(), 5U);
  PagePainter pagePainter;
  for (const double scale : {1e-3, 0.0667, 0.53}) {
    QImage image(200, 200, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.scale(scale, scale);
    pagePainter.paint(painter, document.make(1), QRectF(-1e7, -1e7, 2e7, 2e7));
    EXPECT_TRUE(painter.end());
  }
}

}  // namespace bw
