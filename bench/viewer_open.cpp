// How long a big document takes to open and paint, and what it costs in memory: 100,000 rows of
// seven columns. Lines are name, ours, limit, ratio, separated by tabs; times in milliseconds.

#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/viewer/SampleDocument.h"
#include "viewer/CsvExport.h"
#include "viewer/Document.h"
#include "viewer/PageView.h"

namespace {

constexpr int kRows = 100'000;
constexpr int kRuns = 7;
constexpr double kMegabyte = 1024.0 * 1024.0;

double milliseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
      .count();
}

double median(const std::function<void()>& work) {
  std::vector<double> times;
  for (int run = 0; run < kRuns; ++run) times.push_back(milliseconds(work));
  std::nth_element(times.begin(), times.begin() + kRuns / 2, times.end());
  return times[kRuns / 2];
}

void report(const char* name, double ours, double limit) {
  std::printf("%s\t%.2f\t%.2f\t%.2f\n", name, ours, limit, ours / limit);
}

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
  if (document == nullptr) {
    std::fprintf(stderr, "%s: %s\n", path.c_str(), error.message().c_str());
    std::exit(1);
  }
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
  if (::pread(file, bytes.get(), size, 0) != static_cast<ssize_t>(size)) std::exit(1);
  ::close(file);
}

void measureOpening(const std::string& path, QImage& image) {
  std::error_code error;
  const double bytes = median([&] { (void)bw::DocumentBytes(path, error).view(); });
  const double bare = median([&] { readIntoMemory(path); });
  const bw::DocumentBytes read(path, error);
  report("viewer snapshot of the file, against reading it into memory", bytes, bare);
  std::size_t lines = 0;
  const double scan = median([&] { lines = countLines(read.view()); });
  const double index = median([&] { bw::DocumentIndex{read.view()}; });
  report("viewer page index, against finding the line ends", index, scan);
  const double first = median([&] {
    bw::PageView view;
    view.resize(image.size());
    view.setDocument(open(path), false);
    paintAt(view, 1, image);
  });
  report("viewer open and paint page 1", first, 150);
  std::printf("# %zu lines, %.1f MB\n", lines, static_cast<double>(read.view().size()) / kMegabyte);
}

void measureShowing(const std::string& path, QImage& image) {
  const double before = anonymousBytes();
  bw::PageView view;
  view.resize(image.size());
  view.setDocument(open(path), false);
  const std::size_t pages = view.document()->pageCount();
  report("viewer paint the last page", milliseconds([&] { paintAt(view, pages, image); }), 50);
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
  report("viewer scrolling, median frame", frames[kFrames / 2], 20);
  report("viewer scrolling, slowest of a hundred", frames[kFrames * 99 / 100], 20);
  report("viewer memory beyond the mapping, MB", (anonymousBytes() - before) / kMegabyte, 64);
  std::size_t size = 0;
  const auto count = [&size](std::string_view piece) { size += piece.size(); };
  const auto goOn = [](std::size_t, std::size_t) { return true; };
  report("viewer table of all pages", median([&] { bw::exportCsv(*view.document(), count, goOn); }),
         1000);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication app(argc, argv);
  const QTemporaryDir folder;
  const std::string path = folder.filePath("big.myv").toStdString();
  const std::string text = bw::sampleList(kRows);
  std::ofstream(path, std::ios::binary) << text;
  QImage image(1000, 800, QImage::Format_RGB32);
  measureShowing(path, image);
  measureOpening(path, image);
  return 0;
}
