#include <algorithm>
#include <map>

#include "lists/RecordView.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

// What every view of a catalogue does with its list and its editor, by its number.
class RecordViewsTest : public FormsTest, public testing::WithParamInterface<std::int16_t> {
 protected:
  RecordViewsTest() { openView(GetParam()); }

  static const RecordKind& kind() { return recordKind(GetParam()); }
  static const RecordViewRow& row() { return *kind().records; }
  static int rowOf(const std::string& text) { return bw::rowOf(list(), text); }

  // The editor bears the name of the button New's entry.
  void inEditor(const ModalScript::Step& step) {
    script.in(concat("frmEdit", std::string(kind().newName).substr(3)), step);
  }
  void inNew(const ModalScript::Step& step) {
    inEditor(step);
    click(window(), "Nuevo");
  }
  static ModalScript::Step describe(const QString& text) {
    return [text](QWidget& editor) {
      type(line(editor, "TxtDescription"), text);
      click(editor, "btnOk");
    };
  }

  // What stands in the fields, by their captions; each text is the field's own.
  using Fields = std::map<QString, QString>;
  static QString captionOf(const QWidget* field) { return field->accessibleName().remove(':'); }
  static Fields fill(QWidget& editor) {
    for (auto* text : editor.findChildren<QLineEdit*>()) text->setText(captionOf(text));
    for (auto* box : editor.findChildren<ComboBox*>()) box->setListIndex(box->count() - 1);
    return fieldsOf(editor);
  }
  static Fields fieldsOf(const QWidget& editor) {
    Fields fields;
    for (auto* text : editor.findChildren<QLineEdit*>())
      fields[captionOf(text).toLower()] = text->text();
    for (auto* box : editor.findChildren<ComboBox*>())
      fields[captionOf(box).toLower()] = box->currentText();
    return fields;
  }
  // Under each head what was entered in the field of its name.
  static void expectShown(int at, const Fields& fields) {
    const std::map<QString, QString> others{
        {"family", "type"}, {"charge type", "patient status"}, {"attentiontype", "service as"}};
    for (int column = 0; column < list().columns(); ++column) {
      const QString head = toQt(list().column(column).text).toLower();
      const auto field = fields.lower_bound(others.contains(head) ? others.at(head) : head);
      ASSERT_NE(field, fields.end());
      EXPECT_EQ(list().model()->index(at, column).data().toString(), field->second)
          << head.toStdString();
    }
  }
};

TEST_P(RecordViewsTest, WhatIsEnteredStandsUnderItsHeadsAndComesBack) {
  Fields entered;
  inNew([&](QWidget& editor) {
    auto& description = line(editor, "TxtDescription");
    description.setText("O'Brien");
    click(editor, "btnOk");
    EXPECT_NE(takeMessage().find("\n\nThe sign ' (apostrophe)"), std::string::npos);
    EXPECT_EQ(description.text(), "O'Brien") << "nothing typed is lost";
    entered = fill(editor);
    QTest::keyClick(&editor, Qt::Key_Return);
  });
  ASSERT_EQ(selectedRows(list()), std::vector<int>{rowOf("Description")});
  expectShown(rowOf("Description"), entered);

  inEditor([&](QWidget& editor) {
    EXPECT_EQ(fieldsOf(editor), entered);
    line(editor, "TxtDescription").setText("cancelled");
    takeStatements();
    QTest::keyClick(&editor, Qt::Key_Escape);
  });
  doubleClickRow(list(), rowOf("Description"));
  EXPECT_EQ(takeStatements(), Strings{}) << "nothing stored, nothing read";

  inEditor([&](QWidget& editor) {
    describe("changed")(editor);
    EXPECT_FALSE(editor.isVisible());
  });
  const int before = list().count();
  QTest::keyClick(&list(), Qt::Key_Return);
  for (const std::string& statement : takeStatements()) EXPECT_NE(statement, row().statement);
  EXPECT_EQ(list().count(), before) << "merged, not read again";
  ASSERT_EQ(selectedRows(list()), std::vector<int>{rowOf("changed")});
  entered["description"] = "changed";
  expectShown(rowOf("changed"), entered);

  inEditor([&](QWidget& editor) {
    std::string message;
    EXPECT_EQ(row().remove(message), 0) << message;  // another station
    click(editor, "btnOk");
    EXPECT_EQ(takeMessages(), Strings{"U:IMPACTENT\n\nAnother station has deleted this record. "
                                      "Close this window and press F5."});
    EXPECT_TRUE(editor.isVisible());
    click(editor, "btnCancel");
  });
  for (int i = 0; i < 2; ++i) doubleClickRow(list(), rowOf("changed"));
  EXPECT_EQ(takeMessages(), Strings{"Record not found.  Please report this error!"});
}

TEST_P(RecordViewsTest, AClickedColumnGoesToTheHeadOfTheSort) {
  const auto keys = [] {
    Strings trimmed;
    for (const QString& key : toQt(recordView(kind()).records()->Sort()).split(','))
      trimmed.push_back(fromQt(key.trimmed()));
    return trimmed;
  };
  Strings clicked = keys();
  for (const int column : {list().columns() - 1, 0, list().columns() - 1, 0, 0}) {
    const std::string& key = list().column(column).key;
    clickHead(list(), column);
    std::erase(clicked, key);
    clicked.insert(clicked.begin(), key);
    EXPECT_EQ(keys(), clicked);
  }
  inNew(describe("aaa"));
  EXPECT_EQ(rowOf("aaa"), 0) << "in its place under the sort";
  window().callView("Refresca");
  EXPECT_EQ(keys(), Strings{list().column(0).key});
}

TEST_P(RecordViewsTest, ARefusedDeleteKeepsItsRowAndTheOthersGo) {
  for (const char* text : {"aaa", "zzz"}) inNew(describe(text));
  list().selectAll();
  answer(false);
  QTest::keyClick(&list(), Qt::Key_Delete);
  EXPECT_EQ(std::ssize(selectedRows(list())), list().count());

  int refused = 0;
  services().message = [&](const std::string& text) {
    ++refused;
    EXPECT_TRUE(text.starts_with("This record cannot be deleted")) << text;
    EXPECT_EQ(selectedRows(list()).size(), 1U) << "the one concerned";
  };
  answer(true);
  QTest::keyClick(&list(), Qt::Key_Delete);
  EXPECT_GT(refused, 0);
  EXPECT_EQ(list().count(), refused);
  EXPECT_EQ(selectedRows(list()), std::vector<int>{0});
  const Strings kept = shownTexts(list());
  for (const char* gone : {"aaa", "zzz"}) EXPECT_EQ(std::ranges::count(kept, gone), 0);
  window().callView("Refresca");
  EXPECT_EQ(shownTexts(list()), kept);
}

TEST_P(RecordViewsTest, ASavedRecordStaysUnderAFilterThatItDoesNotMeet) {
  if (kind().filters.front().number == 1 && !kind().filterMenu) return;  // it has no parts
  frmShorcuts().FuerzaNodeClick(GetParam(), kind().filters.front().number);
  const int before = list().count();
  inNew([](QWidget& editor) {
    fill(editor);
    click(editor, "btnOk");
  });
  EXPECT_EQ(list().count(), before + 1);
  EXPECT_EQ(selectedRows(list()), std::vector<int>{rowOf("Description")});
  window().callView("Refresca");
  EXPECT_EQ(list().count(), before);
}

INSTANTIATE_TEST_SUITE_P(Views, RecordViewsTest, testing::Range<std::int16_t>(2, 10),
                         [](const auto& view) {
                           return std::string(recordKind(view.param).newName);
                         });

class RecordViewFailuresTest : public FormsTest {};

TEST_F(RecordViewFailuresTest, AListThatCannotBeReadStaysButItsRowsCannotBeOpened) {
  openView(0);
  click(frmCharges(), "optAllDates");
  frmShorcuts().FuerzaNodeClick(2, 0);
  closeConnection();
  window().callView("Refresca");
  EXPECT_EQ(takeMessages(), Strings{concat("SELECT * FROM Doctors ", kClosed)});
  EXPECT_EQ(shownTexts(list()), (Strings{"Ames", "Bell", "Cole", "Dunn"}));
  doubleClickRow(list(), 1);
  EXPECT_EQ(takeFatal(), Strings{std::string(errorText(ErrorNumber::objectNotSet))});
  frmShorcuts().FuerzaNodeClick(0, 0);
  EXPECT_NE(takeMessage(), "");
  doubleClickRow(list(), 0);
  EXPECT_EQ(takeFatal().size(), 1U);
}

}  // namespace
}  // namespace bw
