#pragma once

#include <QPointer>
#include <QTemporaryDir>
#include <QWidget>
#include <deque>
#include <string>
#include <vector>

#include "controls/ComboBox.h"
#include "controls/ListView.h"
#include "shell/frmMain.h"
#include "tests/data/DataFixture.h"
#include "tests/forms/ModalScript.h"

namespace bw {

// The data fixture with a small office, folders of its own for settings and documents, and the
// real windows on top. An error that ends the program, and a question that no test expected, fail
// the test.
class FormsTest : public DataTest {
 protected:
  FormsTest();
  ~FormsTest() override;
  void TearDown() override;

  // Makes and loads the main window, as the start does, and shows it.
  frmMain& openMainWindow();
  // As the close box does. Settings are stored.
  void closeMainWindow();
  frmMain& window() { return *window_; }

  void answer(bool ok) { answers_.push_back(ok); }
  std::vector<std::string> takeQuestions() { return std::exchange(questions_, {}); }
  // Texts of the errors that would have ended the program.
  std::vector<std::string> takeFatal() { return std::exchange(fatal_, {}); }

  ModalScript script;

 private:
  QTemporaryDir folder_;
  std::deque<bool> answers_;
  std::vector<std::string> questions_;
  std::vector<std::string> fatal_;
  QPointer<frmMain> window_;
};

// A control of that name; the test fails and ends when there is none.
template <class Control>
Control& control(const QWidget& window, const char* name) {
  auto* found = window.findChild<Control*>(name);
  if (found == nullptr) throw std::runtime_error(std::string("no control ") + name);
  return *found;
}

// Mouse and keys as a user makes them.
void click(const QWidget& window, const char* button);
void clickRow(ListView& list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void doubleClickRow(ListView& list, int row);
void clickHead(ListView& list, int column);
void choose(ComboBox& box, const QString& item);  // by the keyboard
void type(QWidget& field, const QString& text);
void tick(ListView& list, const std::string& text);
void trigger(const QWidget& window, const char* action);

// The shown texts of a column, top to bottom.
std::vector<std::string> shownTexts(const ListView& list, int column = 0);
std::vector<int> selectedRows(const ListView& list);

}  // namespace bw
