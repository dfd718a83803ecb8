#pragma once

#include <QLabel>

namespace bw {

// A line of words at a control, on top of what lies there: what is being typed into it, or why that
// cannot be taken. It takes no room in a layout and no focus; assistive tools hear each text.
class Hint : public QLabel {
 public:
  enum class Place { insideBelow, below };

  // insideBelow: at the right of the anchor's lower edge, within it, in a list within its rows.
  // below: under the anchor, on the anchor's window, or above it in the window's lower half, where
  // the buttons are.
  Hint(QWidget* anchor, Place place);

  void say(const QString& text);  // "" hides it
  // With insideBelow: what it must not cover, in the anchor's coordinates. It goes to the upper
  // edge instead.
  void leaveFree(const QRect& place);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void put();
  void fit(int most);
  void putInside();

  QWidget* anchor_;
  Place place_;
  QRect free_;
};

}  // namespace bw
