// How long a big document takes to open and paint, and what it costs in memory: 100,000 rows of
// seven columns.

#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "tests/viewer/SampleDocument.h"
#include "viewer/CsvExport.h"
#include "viewer/Document.h"
#include "viewer/PageView.h"

namespace {

using namespace bw::bench;

constexpr int kRows = 100'000;
constexpr double kMegabyte = 1024.0 * 1024.0;

// Memory of the process that belongs to no file, in bytes.
double anonymousBytes() {
  std::ifstream status("/proc/self/status");
  std::string word;
  double kilobytes = 0;
  while (status >> word) {
    if (word == "RssAnon:") status >> kilobytes;
  }
  return kilobytes * 1024;
}

std::shared_ptr<const bw::Document> open(const std::string& path) {
  std::error_code error;
  auto document = bw::Document::open(path, error);
  if (document == nullptr) throw std::runtime_error(path + ": " + error.message());
  return document;
}

void paintAt(bw::PageView& view, std::size_t page, QImage& image) {
  view.goToPage(page);
  view.viewport()->render(&image);
}

// The bare work: every line end found in the bytes of the file.
std::size_t countLines(std::string_view bytes) {
  std::size_t lines = 0;
  for (const char* at = bytes.data(); at < bytes.data() + bytes.size(); ++lines) {
    const auto left = static_cast<std::size_t>(bytes.data() + bytes.size() - at);
    const void* found = std::memchr(at, '\n', left);
    if (found == nullptr) break;
    at = static_cast<const char*>(found) + 1;
  }
  return lines;
}

// The other way to be safe from a writer: everything in memory of the process.
void readIntoMemory(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY);
  const auto size = static_cast<std::size_t>(::lseek(file, 0, SEEK_END));
  const std::unique_ptr<char[]> bytes(new char[size]);
  if (::pread(file, bytes.get(), size, 0) != static_cast<ssize_t>(size))
    throw std::runtime_error(path + " is not read.");
  ::close(file);
}

void measureOpening(const std::string& path, QImage& image) {
  std::error_code error;
  compare(
      "viewer snapshot of the file, against reading it into memory", 1,
      [&] { return milliseconds([&] { (void)bw::DocumentBytes(path, error).view(); }); },
      [&] { return milliseconds([&] { readIntoMemory(path); }); });
  const bw::DocumentBytes read(path, error);
  std::size_t lines = 0;
  compare(
      "viewer page index, against finding the line ends", 1,
      [&] { return milliseconds([&] { bw::DocumentIndex{read.view()}; }); },
      [&] { return milliseconds([&] { lines += countLines(read.view()); }); });
  if (lines == 0) throw std::runtime_error("The document has no lines.");
  const double first = median([&] {
    return milliseconds([&] {
      bw::PageView view;
      view.resize(image.size());
      view.setDocument(open(path), false);
      paintAt(view, 1, image);
    });
  });
  report("viewer open and paint page 1", "ms", first, 150);
}

void measureShowing(const std::string& path, QImage& image) {
  const double before = anonymousBytes();
  bw::PageView view;
  view.resize(image.size());
  view.setDocument(open(path), false);
  const std::size_t pages = view.document()->pageCount();
  report("viewer paint the last page", "ms", milliseconds([&] { paintAt(view, pages, image); }),
         50);
  constexpr int kFrames = 300;
  constexpr int kStep = 40;
  view.goToPage(pages / 2);
  std::vector<double> frames;
  for (int frame = 0; frame < kFrames; ++frame) {
    QScrollBar* bar = view.verticalScrollBar();
    // Whole frames, as if nothing could be shifted.
    frames.push_back(milliseconds([&] {
      bar->setValue(bar->value() + kStep);
      view.viewport()->render(&image);
    }));
  }
  std::sort(frames.begin(), frames.end());
  report("viewer scrolling, median frame", "ms", frames[kFrames / 2], 20);
  report("viewer scrolling, slowest of a hundred", "ms", frames[kFrames * 99 / 100], 20);
  report("viewer memory beyond the mapping", "MB", (anonymousBytes() - before) / kMegabyte, 64);
  std::size_t size = 0;
  const auto count = [&size](std::string_view piece) { size += piece.size(); };
  const auto goOn = [](std::size_t, std::size_t) { return true; };
  report("viewer table of all pages", "ms", median([&] {
           return milliseconds([&] { bw::exportCsv(*view.document(), count, goOn); });
         }),
         1000);
}

void measure() {
  const QTemporaryDir folder;
  const std::string path = folder.filePath("big.myv").toStdString();
  std::ofstream(path, std::ios::binary) << bw::sampleList(kRows);
  QImage image(1000, 800, QImage::Format_RGB32);
  measureShowing(path, image);
  measureOpening(path, image);
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication app(argc, argv);
  return bw::bench::run(measure);
}
