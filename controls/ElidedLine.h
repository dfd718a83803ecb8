#pragma once

#include <QLabel>

namespace bw {

// A line of words that ends in an ellipsis where it does not fit; the whole of it is shown under
// the pointer, and told to assistive tools.
class ElidedLine : public QLabel {
 public:
  explicit ElidedLine(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace bw
