#include "viewer/ViewerWindow.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QScrollBar>
#include <QSettings>
#include <QSpinBox>
#include <QTest>
#include <QWheelEvent>
#include <algorithm>

#include "tests/tools/TemporaryFolder.h"
#include "tests/viewer/SampleDocument.h"
#include "viewer/Saving.h"

namespace bw {

namespace {

constexpr int kPages = 5;
constexpr int kPatience = 5000;  // milliseconds

class Viewer : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    static const TemporaryFolder settings;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       QString::fromStdString(settings.path()));
  }
  Viewer() {
    write(sampleList(57 * kPages, "~"));
    window_.openDocument(path());
    window_.resize(900, 700);
    window_.show();
  }

  QString path(const char* name = "list.myv") const {
    return QString::fromStdString(folder_ / name);
  }
  void write(const std::string& text) { folder_.write("list.myv", text); }

  template <class T>
  T* part(const char* name) {
    T* found = window_.findChild<T*>(name);
    EXPECT_NE(found, nullptr) << name;
    return found;
  }

  void run(const char* command) { part<QAction>(command)->trigger(); }

  QString trouble() {
    auto* label = part<QLabel>("trouble");
    return label->isHidden() ? QString() : label->text();
  }

  QString copied() {
    QApplication::clipboard()->clear();
    run("copy");
    return QApplication::clipboard()->text();
  }

  QLineEdit* edit() { return part<QLineEdit>("findText"); }
  // What the find bar says in the end.
  testing::AssertionResult says(const QString& text) {
    const auto* note = part<QLabel>("findNote");
    const bool said = QTest::qWaitFor([&] { return note->text() == text; }, kPatience);
    return testing::AssertionResult(said) << note->text().toStdString();
  }

  void drag(const QPoint& from, const QPoint& to) {
    QWidget* area = view()->viewport();
    QTest::mousePress(area, Qt::LeftButton, {}, from);
    QTest::mouseMove(area, (from + to) / 2);
    QTest::mouseMove(area, to);
    QTest::mouseRelease(area, Qt::LeftButton, {}, to);
  }

  // Where a place of page 1 is on the viewport, from twips; the view stands at its top.
  QPoint place(double x, double y) {
    const double scale = view()->zoom() * view()->logicalDpiX() / kTwipsPerInch;
    const int left = (view()->viewport()->width() - qRound(11520 * scale)) / 2;
    return {qRound(x * scale) + left, qRound(y * scale) + PageLayout::kGap};
  }

  PageView* view() { return part<PageView>("pageView"); }

  TemporaryFolder folder_;
  ViewerWindow window_;
};

}  // namespace

TEST_F(Viewer, PageBoxAndPagesFollowEachOther) {
  auto* box = part<QSpinBox>("pageBox");
  EXPECT_EQ(box->maximum(), kPages);
  EXPECT_EQ(box->text(), "1 / 5");
  run("typePage");
  QTest::keyClicks(box, "4");
  QTest::keyClick(box, Qt::Key_Return);
  EXPECT_EQ(view()->currentPage(), 4U);
  run("nextPage");
  EXPECT_EQ(box->value(), 5);
  run("nextPage");
  EXPECT_EQ(box->value(), 5);
  QTest::keyClick(view(), Qt::Key_Home);
  EXPECT_EQ(box->value(), 1);
  QTest::keyClick(view(), Qt::Key_End);
  EXPECT_EQ(box->value(), 5);
  QWheelEvent notch(QPointF(5, 5), box->mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QTest::keyClick(view(), Qt::Key_Home);
  QApplication::sendEvent(box, &notch);
  EXPECT_EQ(box->value(), 1) << "the wheel, without the focus";
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  run("typePage");
  QApplication::sendEvent(box, &notch);
  EXPECT_EQ(box->value(), 2);
}

TEST_F(Viewer, ZoomKeepsThePageAndFitEndsWithIt) {
  run("fitPage");
  EXPECT_TRUE(part<QAction>("fitPage")->isChecked());
  const double whole = view()->zoom();
  window_.resize(900, 500);
  EXPECT_LT(view()->zoom(), whole);
  view()->goToPage(3);
  run("naturalSize");
  EXPECT_EQ(view()->zoom(), 1);
  EXPECT_FALSE(part<QAction>("fitPage")->isChecked());
  EXPECT_EQ(view()->currentPage(), 3U);
  QWheelEvent wheel(QPointF(100, 100), view()->mapToGlobal(QPointF(100, 100)), {}, {0, 240},
                    Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(view()->viewport(), &wheel);
  EXPECT_NEAR(view()->zoom(), 1.15 * 1.15, 1e-9);
  run("fitWidth");
  const double wide = view()->zoom();
  QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2,
                            QPointF(100, 100), QPointF(100, 100), QPointF(100, 100), 0.25, {});
  QApplication::sendEvent(view()->viewport(), &pinch);
  EXPECT_NEAR(view()->zoom(), wide * 1.25, 1e-9);
  EXPECT_EQ(view()->fit(), PageView::Fit::none);
  for (int i = 0; i < 30; ++i) run("zoomIn");
  EXPECT_EQ(view()->zoom(), PageLayout::kMaxZoom);
  for (int i = 0; i < 30; ++i) run("zoomOut");
  EXPECT_EQ(view()->zoom(), PageLayout::kMinZoom);
}

TEST_F(Viewer, FittingStaysWhereItIs) {
  for (const std::size_t page : {4U, 2U}) {
    view()->goToPage(page);
    for (const char* fit : {"fitPage", "fitWidth"}) {
      run(fit);
      EXPECT_EQ(view()->currentPage(), page) << fit;
      const int shown = view()->verticalScrollBar()->value();
      view()->goToPage(page);
      EXPECT_NEAR(shown, view()->verticalScrollBar()->value(), PageLayout::kGap) << fit;
    }
  }
}

TEST_F(Viewer, FindGoesForwardBackwardAndRound) {
  run("find");
  QTest::keyClicks(edit(), "MOIRA 228");
  EXPECT_TRUE(says("Match 1 of 1, 1 on this page"));
  EXPECT_EQ(view()->currentPage(), 4U);
  EXPECT_EQ(copied(), "Aldern, Moira 228");
  edit()->setText("Moira 57");
  for (const Qt::KeyboardModifier way : {Qt::NoModifier, Qt::ShiftModifier}) {
    EXPECT_TRUE(says("Match 1 of 1, 1 on this page; went on from the other end"));
    EXPECT_EQ(view()->currentPage(), 1U);
    part<QLabel>("findNote")->clear();
    QTest::keyClick(edit(), Qt::Key_Return, way);
  }
  EXPECT_TRUE(says("Match 1 of 1, 1 on this page; went on from the other end"));
  edit()->setText("nobody of this name");
  EXPECT_TRUE(says("Not in this document"));
  EXPECT_FALSE(view()->match().has_value());
  run("backToPages");
  EXPECT_TRUE(edit()->parentWidget()->isHidden());
  EXPECT_TRUE(view()->needle().isEmpty());
}

TEST_F(Viewer, FindSaysWhichOfHowManyItIs) {
  view()->goToPage(2);
  run("find");
  edit()->setText("aldern, moira 11");  // 11, 110 to 119
  EXPECT_TRUE(says("Match 2 of 11, 5 on this page"));
  QTest::keyClick(edit(), Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_TRUE(says("Match 1 of 11, 1 on this page"));
  QTest::keyClick(edit(), Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_TRUE(says("Match 11 of 11, 5 on this page; went on from the other end"));
  write(sampleList(57 * kPages));
  run("reload");
  QTest::keyClick(edit(), Qt::Key_Return);
  EXPECT_TRUE(says("Match 7 of 11, 5 on this page"));
}

TEST_F(Viewer, MatchesOfAPageComeInTheOrderOfReading) {
  const Document document{
      DocumentBytes(sampleHead() + sampleText({.box = "100,900,1,1", .text = "abAB"}) +
                    sampleText({.box = "900,400,1,1", .text = "ab"}) +
                    sampleText({.box = "90,400,1,1", .look = "6,0,0", .text = "Caption ab"}) +
                    sampleText({.box = "100,404,1,1", .text = "xab"}))};
  const auto matches = matchesOnPage(document.parse(1), 1, 1, "Ab");
  const std::vector<Match> expected = {
      {1, 2, 8, 2}, {1, 3, 1, 2}, {1, 1, 0, 2}, {1, 0, 0, 2}, {1, 0, 2, 2}};
  EXPECT_EQ(matches, expected);
  EXPECT_EQ(countMatches(document.parse(1), 1, "Ab"), expected.size());
}

TEST_F(Viewer, DragCopiesTheTextsThatItTouches) {
  // Rows stand 216 twips apart in boxes of 360: the middle of the first row's text is at 2268.
  drag(place(1000, 2250), place(4100, 2500));
  EXPECT_EQ(copied(), "100001\tAldern, Moira 1\t6/15/1961~\n100002\tAldern, Moira 2\t6/15/1961~\n");
  drag(place(4100, 2500), place(1800, 2480));
  EXPECT_EQ(copied(), "Aldern, Moira 2\t6/15/1961~\n");
  QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, place(4100, 2500));
  EXPECT_FALSE(part<QAction>("copy")->isEnabled());
  QTest::mouseDClick(view()->viewport(), Qt::LeftButton, {}, place(1800, 2270));
  EXPECT_EQ(copied(), "Aldern, Moira 1\n");
}

TEST_F(Viewer, DocumentWrittenAnewKeepsPageAndZoom) {
  view()->setZoom(1.5);
  view()->goToPage(3);
  write(sampleList(57 * 8));
  auto* box = part<QSpinBox>("pageBox");
  ASSERT_TRUE(QTest::qWaitFor([&] { return box->maximum() == 8; }, kPatience));
  EXPECT_EQ(box->value(), 3);
  EXPECT_EQ(view()->zoom(), 1.5);
  view()->goToPage(8);
  ASSERT_TRUE(QFile::remove(path()));  // replaced by another file
  write(sampleList(57 * 2));
  ASSERT_TRUE(QTest::qWaitFor([&] { return box->maximum() == 2; }, kPatience));
  EXPECT_EQ(box->value(), 2);
}

TEST_F(Viewer, TroubleNamesTheLineOnOpenAndOnSaveAndGoesAway) {
  EXPECT_EQ(trouble(), "");
  const std::string list = sampleList(57 * kPages);
  const auto lines = std::count(list.begin(), list.end(), '\n');
  write(list + sampleText({.page = kPages, .look = "nan,0,1"}));
  const QString named = QString("Line %1 ").arg(lines + 1);
  run("reload");
  ASSERT_TRUE(window_.exportCsvTo(path("out.csv")));  // before the last page was looked at
  EXPECT_TRUE(trouble().contains("out.csv") && trouble().contains(named));
  run("reload");
  ASSERT_TRUE(QTest::qWaitFor([&] { return trouble().startsWith(named); }, kPatience));
  ASSERT_TRUE(window_.savePdfAs(path("out.pdf")));
  EXPECT_TRUE(trouble().contains("out.pdf") && trouble().contains(named));
  window_.openDocument(path("none.myv"));
  EXPECT_TRUE(trouble().contains("none.myv"));
  EXPECT_EQ(part<QSpinBox>("pageBox")->maximum(), kPages);
  write(list);
  window_.openDocument(path());
  EXPECT_EQ(trouble(), "");
}

TEST_F(Viewer, WideDocumentIsFittedAndSaysSoUntilShownAtFullWidth) {
  auto* fitting = part<QLabel>("fitting");
  EXPECT_EQ(fitting->text(), "");
  EXPECT_FALSE(part<QAction>("fullWidth")->isEnabled());
  write(sampleList(3) + sampleShape(1, "11000,1800,4264,360"));
  window_.openDocument(path());
  EXPECT_EQ(fitting->text(), "Drawn at 77 %, so that all columns fit");
  EXPECT_EQ(view()->fitted()->paper().width, 8.5);
  run("fullWidth");
  EXPECT_TRUE(part<QAction>("fullWidth")->isChecked());
  EXPECT_EQ(fitting->text(),
            "Shown at full width. On paper: drawn at 77 %, so that all columns fit");
  EXPECT_GT(view()->fitted()->paper().width, 10.6);
  run("fullWidth");
  EXPECT_EQ(view()->fitted()->paper().width, 8.5);
}

TEST_F(Viewer, DocumentWithoutPagesOffersNothing) {
  write("");
  run("reload");
  for (const char* command : {"print", "savePdf", "exportCsv", "find", "zoomIn", "copy"})
    EXPECT_FALSE(part<QAction>(command)->isEnabled()) << command;
  EXPECT_TRUE(part<QAction>("open")->isEnabled());
  EXPECT_FALSE(trouble().isEmpty());
}

TEST_F(Viewer, SavedFilesAreWholeAndPrivate) {
  ASSERT_TRUE(window_.savePdfAs(path("out.pdf")));
  EXPECT_TRUE(folder_.read("out.pdf").starts_with("%PDF-"));
  ASSERT_TRUE(window_.exportCsvTo(path("out.csv")));
  EXPECT_NE(folder_.read("out.csv").find("100001,\"Aldern, Moira 1\",6/15/1961~"),
            std::string::npos);
  EXPECT_FALSE(QFile::permissions(path("out.csv")) & (QFile::ReadGroup | QFile::ReadOther));
}

TEST_F(Viewer, WhatCannotBeWrittenSaysWhyAndLeavesWhatIsThere) {
  ASSERT_EQ(::mkfifo((folder_ / "pipe.csv").c_str(), S_IRUSR | S_IWUSR), 0);
  std::filesystem::create_directory(folder_ / "folder.csv");
  std::filesystem::create_symlink(folder_ / "pipe.csv", folder_ / "link.csv");
  for (const auto& [name, reason] : {std::pair{"no/such/folder.csv", "No such file"},
                                     {"folder.csv", "a folder"},
                                     {"pipe.csv", "no file"},
                                     {"link.csv", "no file"}})
    for (const auto save : {&ViewerWindow::exportCsvTo, &ViewerWindow::savePdfAs}) {
      EXPECT_FALSE((window_.*save)(path(name)));
      EXPECT_TRUE(trouble().contains(name) && trouble().contains(reason))
          << trouble().toStdString();
    }
  EXPECT_TRUE(std::filesystem::is_fifo(folder_ / "pipe.csv"));
}

TEST_F(Viewer, FilesAreNamedByWhatTheReportSays) {
  const auto centred = [](const std::string& text) {
    return sampleText({.flags = ",0,1,0", .look = "12,1,1", .text = text});
  };
  const std::string date = sampleText({.text = "Date:"}) + sampleText({.text = "06/15/03"});
  const auto named = [](const std::string& text) {
    return reportName(Document{DocumentBytes(sampleHead() + text)});
  };
  EXPECT_EQ(named(date + centred("Billing (All)(B)") + centred("Patient: Moira Aldern") +
                  centred(" Insurance: Harrow/East: \"A\"") + centred(" Lot: 200306151")),
            "Billing (All)(B), Harrow-East- -A-, Lot 200306151, 2003-06-15");
  EXPECT_EQ(named(centred("Patients (All)")), "Patients (All)");
  EXPECT_EQ(named(sampleText({.text = "a"})), "Report");
  EXPECT_EQ(named(centred(std::string(5000, 'x'))).size(), 120);
}

TEST_F(Viewer, ZoomAndSidePaneOutliveTheWindow) {
  view()->setZoom(1.75);
  run("thumbnailPane");
  EXPECT_FALSE(part<QAction>("thumbnailPane")->isChecked());
  window_.close();
  ViewerWindow next;
  EXPECT_EQ(next.findChild<PageView*>("pageView")->zoom(), 1.75);
  EXPECT_TRUE(next.findChild<QWidget*>("side")->isHidden());
  next.openDocument(path());
  next.findChild<QAction*>("fitWidth")->trigger();
  next.findChild<QAction*>("thumbnailPane")->trigger();
  next.close();
  EXPECT_EQ(ViewerWindow().findChild<PageView*>("pageView")->fit(), PageView::Fit::width);
}

TEST(PageLayout, MillionsOfTallPagesStayCountable) {
  const double zoom = PageLayout::maxZoom(DocumentIndex::kMaxPage, 100 * 96);
  PageLayout layout;
  layout.pages = static_cast<int>(DocumentIndex::kMaxPage);
  layout.pageHeight = qRound(100 * 96 * zoom);
  EXPECT_GT(layout.height(), 0);
  EXPECT_EQ(layout.pageAt(layout.top(9'999'999)), 9'999'999);
  EXPECT_EQ(layout.pageAt(layout.height()), layout.pages);
  EXPECT_EQ(layout.pageAt(-50), 1);
}

}  // namespace bw
