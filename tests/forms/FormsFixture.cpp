#include "tests/forms/FormsFixture.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

#include "controls/EventGuard.h"
#include "controls/Hint.h"

namespace bw {

FormsTest::FormsTest() {
  services().confirm = [this](const std::string& text) {
    questions_.push_back(text);
    if (answers_.empty()) {
      ADD_FAILURE() << "unexpected question: " << text;
      return false;
    }
    const bool answer = answers_.front();
    answers_.pop_front();
    return answer;
  };
  const std::filesystem::path home = fromQt(folder_.path());
  services().settingsFolder = [home] { return home / "settings"; };
  services().documentFolder = [home] { return home / "documents"; };
  unhandledError() = [this](const std::exception& error) { fatal_.emplace_back(error.what()); };
  seedOffice();
}

FormsTest::~FormsTest() { delete window_.data(); }

void FormsTest::TearDown() {
  EXPECT_EQ(fatal_, Strings{});
  EXPECT_TRUE(answers_.empty());
  DataTest::TearDown();
}

void FormsTest::seedCharges() {
  run("INSERT INTO Insurance VALUES (2, 'Other', '')");
  run("UPDATE Patient SET InsuranceCode = 2 WHERE PatientId = 25001");
  run("INSERT INTO PatientCharges VALUES "
      "(25001, #06/02/2003#, #09:00:00#, #06/02/2003#, 1, 1, 2, 1, 1, 77), "
      "(25001, #06/03/2003#, #10:00:00#, #06/03/2003#, 1, 1, 3, 1, 0, NULL), "
      "(25001, #06/04/2003#, #10:00:00#, #06/04/2003#, 1, 1, 3, 1, 3, NULL)");
}

frmMain& FormsTest::openMainWindow() {
  window_ = new frmMain;
  window_->load();
  window_->show();
  QApplication::processEvents();
  return *window_;
}

void FormsTest::openView(std::int16_t view) {
  openMainWindow().resize(1300, 700);
  frmShorcuts().FuerzaNodeClick(view, 0);
}

void FormsTest::closeMainWindow() {
  window_->close();
  delete window_.data();
}

std::string FormsTest::takeMessage() {
  const Strings messages = takeMessages();
  EXPECT_EQ(messages.size(), 1U);
  return messages.empty() ? "" : messages.front();
}

ListView& FormsTest::list() { return listIn(viewOf(recordKind(MainWindow->VistaActualNumero))); }

std::string label(const QWidget& window, const char* name) {
  return fromQt(control<QLabel>(window, name).text());
}

void click(const QWidget& window, const char* button) {
  QTest::mouseClick(&control<QAbstractButton>(window, button), Qt::LeftButton);
}

static QPoint centreOf(const ListView& list, int row) {
  return list.visualRect(list.model()->index(row, 0)).center();
}

void clickRow(ListView& list, int row, Qt::KeyboardModifiers modifiers) {
  list.ensureVisible(row);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, centreOf(list, row));
}

void doubleClickRow(ListView& list, int row) {
  clickRow(list, row);
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, centreOf(list, row));
}

void clickHead(ListView& list, int column) {
  QHeaderView* head = list.horizontalHeader();
  const int x = head->sectionViewportPosition(column) + head->sectionSize(column) / 2;
  QTest::mouseClick(head->viewport(), Qt::LeftButton, Qt::NoModifier,
                    QPoint(x, head->height() / 2));
}

void choose(const QWidget& window, const char* name, const QString& item) {
  auto& box = control<ComboBox>(window, name);
  box.setFocus();
  QTest::keyClicks(&box, item);
  box.settle();  // another choice begins anew
  if (box.currentText() != item) throw std::runtime_error("no item " + fromQt(item));
}

void type(QWidget& field, const QString& text) {
  field.setFocus();
  if (auto* line = qobject_cast<QLineEdit*>(&field)) line->selectAll();
  QTest::keyClicks(&field, text);
}

void press(Qt::Key key, Qt::KeyboardModifiers with) {
  QTest::keyClick(QApplication::focusWidget(), key, with);
}

void letters(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }

ModalScript::Step picks(const std::string& text) {
  return [text](QWidget& window) {
    clickRow(listIn(window), rowOf(listIn(window), text));
    click(window, "btnOk");
  };
}

void tick(ListView& list, const std::string& text) {
  list.setCurrentIndex(list.model()->index(rowOf(list, text), 0));
  QTest::keyClick(&list, Qt::Key_Space);
}

void trigger(const QWidget& window, const char* action) {
  control<QAction>(window, action).trigger();
}

int rowOf(const ListView& list, const std::string& text) {
  const Strings texts = shownTexts(list);
  const auto found = std::ranges::find(texts, text);
  if (found == texts.end()) throw std::runtime_error("no row " + text);
  return static_cast<int>(found - texts.begin());
}

std::string hintIn(const QWidget& window) {
  for (const QLabel* label : window.findChildren<QLabel*>())
    if (dynamic_cast<const Hint*>(label) != nullptr && label->isVisibleTo(&window))
      return fromQt(label->text());
  return "";
}

Strings shownTexts(const ListView& list, int column) {
  Strings texts;
  for (int row = 0; row < list.count(); ++row)
    texts.push_back(fromQt(list.model()->index(row, column).data().toString()));
  return texts;
}

std::vector<int> selectedRows(const ListView& list) {
  std::vector<int> rows = list.selectedFromLast();
  std::reverse(rows.begin(), rows.end());
  return rows;
}

}  // namespace bw
