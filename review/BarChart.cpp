#include "review/BarChart.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <string>

#include "controls/Dialog.h"
#include "controls/QtText.h"
#include "reports/ApoyoMyView.h"
#include "review/ChargeTable.h"
#include "review/PageReport.h"
#include "text/Text.h"

namespace bw {
namespace {

std::int64_t largestOf(const TableColumn& count, const std::vector<std::uint32_t>& rows) {
  std::int64_t largest = 1;
  for (const std::uint32_t row : rows) largest = std::max(largest, count(row));
  return largest;
}

}  // namespace

class BarChart::Bars : public QWidget {
 public:
  Rows rows;
  std::vector<std::uint32_t> order;

  int step() const { return fontMetrics().height() + 4; }
  QSize sizeHint() const override { return {0, step() * static_cast<int>(order.size())}; }

 protected:
  void paintEvent(QPaintEvent* event) override {
    if (order.empty()) return;
    QPainter painter(this);
    const TableColumn caption(*rows, "Caption");
    const TableColumn count(*rows, "Count");
    const double largest = static_cast<double>(largestOf(count, order));
    const int last = std::min(event->rect().bottom() / step(), static_cast<int>(order.size()) - 1);
    for (int i = event->rect().top() / step(); i <= last; ++i) {
      const std::uint32_t row = order[static_cast<std::size_t>(i)];
      paintBar(painter, i * step(), toQt(caption.text(row)), count(row), largest);
    }
  }

 private:
  void paintBar(QPainter& painter, int y, const QString& caption, std::int64_t count,
                double largest) const {
    constexpr int kGap = 6;
    const QString number = QString::number(count);
    const int words = width() * 2 / 5;
    const int most = width() - words - 3 * kGap - fontMetrics().horizontalAdvance("0000000");
    const int bar =
        std::max(1, static_cast<int>(std::max(0, most) * static_cast<double>(count) / largest));
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QRect(0, y, words, step()), Qt::AlignRight | Qt::AlignVCenter,
                     fontMetrics().elidedText(caption, Qt::ElideRight, words));
    painter.fillRect(QRect(words + kGap, y + 3, bar, step() - 6),
                     palette().color(QPalette::Highlight));
    painter.drawText(QRect(words + bar + 2 * kGap, y, width(), step()), Qt::AlignVCenter, number);
  }
};

BarChart::BarChart(QWidget* parent) : QScrollArea(parent), bars_(new Bars) {
  setWidget(named(bars_, "Bars", "Bars"));
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);  // the list says the same
}

void BarChart::setRows(const Rows& rows, const std::vector<std::uint32_t>& order) {
  bars_->rows = rows;
  bars_->order = order;
  bars_->setMinimumHeight(bars_->sizeHint().height());
  bars_->update();
}

void printBars(const PageSheet& sheet) {
  constexpr double kStep = 0.2;
  constexpr double kWords = 2.6;
  constexpr double kBars = 3.7;
  const RowStore& rows = *sheet.rows->rows();
  const std::vector<std::uint32_t>& order = sheet.rows->view();
  const TableColumn caption(rows, "Caption");
  const TableColumn count(rows, "Count");
  const TableColumn share(rows, "Share");
  const double largest = static_cast<double>(largestOf(count, order));
  writePageReport(sheet, order, [&](Sheet& page, std::uint32_t row) {
    page.makeRoom(kStep);
    const double bar = kBars * static_cast<double>(count(row)) / largest;
    const auto words = [&](double x, double width, std::int16_t align, std::string_view text) {
      ViewerText(page.page(), x, page.y, width, kStep, align, kMiddle, kBlack, 10, false, true,
                 text);
    };
    words(0.5, kWords, kRight, caption.text(row));
    ViewerShape(page.page(), 0.6 + kWords, page.y + 0.03, std::max(bar, 0.01), kStep - 0.06, 0.001,
                kGrey, kGrey);
    words(0.65 + kWords + bar, 1.2, kLeft, concat(count(row), "  (", share.text(row), ")"));
    page.y += kStep;
  });
}

}  // namespace bw
