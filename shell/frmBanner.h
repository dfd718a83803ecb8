#pragma once

#include <QLabel>
#include <QTimer>
#include <QWidget>
#include <cstdint>

namespace bw {

// The strip with the moving slogan.
class Banner : public QWidget {
 public:
  explicit Banner(QWidget* parent);

 private:
  void tick();

  QLabel* Label1;
  QTimer* Timer1;
  int left_ = 0;  // of the label, twips
  std::int16_t ColourIndex = 0;
  std::int16_t TickCount = 0;
};

Banner& frmBanner();

}  // namespace bw
