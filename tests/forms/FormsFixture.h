#pragma once

// With what nearly every test of windows needs.
#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <deque>

#include "charges/frmCharges.h"
#include "controls/ComboBox.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "lists/Settings.h"
#include "shell/frmMain.h"
#include "shell/frmShorcuts.h"
#include "tests/data/DataFixture.h"
#include "tests/forms/ModalScript.h"
#include "text/Text.h"

namespace bw {

// The data fixture with a small office, folders of its own for settings and documents, and the
// real windows on top. An error that ends the program, and a question that no test expected, fail
// the test.
class FormsTest : public DataTest {
 protected:
  FormsTest();
  ~FormsTest() override;
  void TearDown() override;

  // Behind Smith's (ready) three charges of Jones, whom insurance 2 insures: posted in lot 77,
  // ready, and archived by the run.
  static void seedCharges();

  // Makes and loads the main window, as the start does, and shows it.
  frmMain& openMainWindow();
  // Wide, and on that view.
  void openView(std::int16_t view);
  // As the close box does. Settings are stored.
  void closeMainWindow();
  frmMain& window() { return *window_; }
  // Of the view on show.
  static ListView& list();

  // The only message since the last call.
  std::string takeMessage();
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

inline ListView& listIn(const QWidget& window) { return control<ListView>(window, "ListView1"); }
inline QLineEdit& line(const QWidget& window, const char* name) {
  return control<QLineEdit>(window, name);
}

std::string label(const QWidget& window, const char* name);
inline std::string chosen(const QWidget& window, const char* box) {
  return fromQt(control<ComboBox>(window, box).currentText());
}

// Mouse and keys as a user makes them.
void click(const QWidget& window, const char* button);
void clickRow(ListView& list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void doubleClickRow(ListView& list, int row);
void press(Qt::Key key, Qt::KeyboardModifiers with = {});  // where the focus is
void letters(const QString& text);
void clickHead(ListView& list, int column);
// By the keyboard.
void choose(const QWidget& window, const char* box, const QString& item);
void type(QWidget& field, const QString& text);
void tick(ListView& list, const std::string& text);
void trigger(const QWidget& window, const char* action);

// Selects the row of that text in the window's list, and presses Ok.
ModalScript::Step picks(const std::string& text);

// The row of that text; the test fails and ends when there is none.
int rowOf(const ListView& list, const std::string& text);
// What a hint of the window says.
std::string hintIn(const QWidget& window);
// The shown texts of a column, top to bottom.
std::vector<std::string> shownTexts(const ListView& list, int column = 0);
std::vector<int> selectedRows(const ListView& list);

}  // namespace bw
