#include "tests/forms/FormsFixture.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "controls/EventGuard.h"
#include "controls/QtText.h"
#include "core/Principal.h"

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
  services().settingsFolder = [this] {
    return std::filesystem::path(fromQt(folder_.filePath("settings")));
  };
  services().documentFolder = [this] {
    return std::filesystem::path(fromQt(folder_.filePath("documents")));
  };
  unhandledError() = [this](const std::exception& error) { fatal_.emplace_back(error.what()); };
  seedOffice();
}

FormsTest::~FormsTest() { delete window_.data(); }

void FormsTest::TearDown() {
  EXPECT_EQ(fatal_, Strings{});
  EXPECT_TRUE(answers_.empty());
  DataTest::TearDown();
}

frmMain& FormsTest::openMainWindow() {
  window_ = new frmMain;
  MainWindow = window_;
  window_->load();
  window_->show();
  QApplication::processEvents();
  return *window_;
}

void FormsTest::closeMainWindow() {
  window_->close();
  delete window_.data();
}

void click(const QWidget& window, const char* button) {
  QTest::mouseClick(&control<QAbstractButton>(window, button), Qt::LeftButton);
}

namespace {

QPoint centreOf(const ListView& list, int row) {
  return list.visualRect(list.model()->index(row, 0)).center();
}

}  // namespace

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

void choose(ComboBox& box, const QString& item) {
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

void tick(ListView& list, const std::string& text) {
  for (int row = 0; row < list.count(); ++row) {
    if (list.text(row) != text) continue;
    list.setCurrentIndex(list.model()->index(row, 0));
    QTest::keyClick(&list, Qt::Key_Space);
    return;
  }
  throw std::runtime_error("no row " + text);
}

void trigger(const QWidget& window, const char* action) {
  control<QAction>(window, action).trigger();
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
