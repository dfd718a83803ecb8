#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace bw {

// The line below the pages in which the text to find is typed. Enter finds the next match,
// Shift+Enter the previous one.
class FindBar : public QWidget {
  Q_OBJECT

 public:
  explicit FindBar(QWidget* parent = nullptr);

  QString text() const;
  void open();                        // shows the bar, its text selected
  void setNote(const QString& note);  // what became of the search; "" for nothing

 signals:
  void textChanged(const QString& text);
  void nextWanted();
  void previousWanted();
  void closed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLineEdit* edit_;
  QLabel* note_;
};

}  // namespace bw
