#pragma once

#include <QObject>

#include "data/CodeBooks.h"

class QLabel;
class QLineEdit;

namespace bw {

// What makes a text box one for official codes: F4, or Alt+Down, searches the code book by words
// and fills in code and title. Where the book is at hand a line below the box says so, and says
// when what stands in the box has the form of the book's codes and is none of them; nothing is
// refused.
class CodeField : public QObject {
 public:
  CodeField(CodeBook book, QLineEdit& code, QLineEdit& title, QLabel& verdict);

  // Looks the code up. Also by itself, when the user has changed it and leaves the box.
  void judge();

 private:
  void search();

  CodeBook book_;
  QLineEdit& code_;
  QLineEdit& title_;
  QLabel& verdict_;
};

}  // namespace bw
