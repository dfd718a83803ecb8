#include "catalogues/CodeField.h"

#include <QLabel>
#include <QLineEdit>
#include <QShortcut>

#include "catalogues/CodeSearch.h"
#include "controls/EventGuard.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "text/Text.h"

namespace bw {
namespace {

// A title of more letters fits no list: then the short one is taken.
constexpr std::size_t kLongestTitle = 120;

// The apostrophe of the keyboard would end the text within its statement.
QString storable(const std::string& title) { return toQt(title).replace('\'', QChar(0x2019)); }

// Ctrl+Z brings back what stood there.
void put(QLineEdit& box, const QString& text) {
  box.selectAll();
  box.insert(text);
}

std::string words(CodeState state, std::string_view book) {
  switch (state) {
    case CodeState::notInBook:
      return concat("Not in ", book, ". F4 searches it.");
    case CodeState::heading:
      return concat("A heading of ", book, ": not billable. F4 searches it.");
    default:
      return concat("F4 searches ", book, ".");
  }
}

}  // namespace

CodeField::CodeField(CodeBook book, QLineEdit& code, QLineEdit& title, QLabel& verdict)
    : QObject(&code), book_(book), code_(code), title_(title), verdict_(verdict) {
  verdict_.setVisible(hasCodeBook(codeBooksOf(DatabasePath), book_));
  for (const QKeySequence& keys :
       {QKeySequence(Qt::Key_F4), QKeySequence(Qt::AltModifier | Qt::Key_Down)})
    onEvent(new QShortcut(keys, &code_, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, [this] { search(); });
  onEvent(&code_, &QLineEdit::editingFinished, this, [this] { judge(); });
  judge();
}

void CodeField::judge() {
  if (verdict_.isHidden()) return;
  const CodeState state = codeState(codeBooksOf(DatabasePath), book_, fromQt(code_.text()));
  const QString text = toQt(words(state, bookName(book_)));
  verdict_.setText(text);
  verdict_.setAccessibleName(text);
}

void CodeField::search() {
  if (!hasCodeBook(codeBooksOf(DatabasePath), book_))
    return MsgBox(concat("The book ", bookName(book_),
                         " is not at hand. Whoever looks after this computer can bring it with\n"
                         "brantiwell-database codes import FILE"));
  PickCodeForm& form = frmPickCode();
  form.book = book_;
  form.words = fromQt(code_.text().trimmed().isEmpty() ? title_.text() : code_.text());
  form.showModal();
  if (!form.picked) return;
  const BookCode& picked = *form.picked;
  put(code_, toQt(picked.code));
  put(title_, storable(length(picked.title) > kLongestTitle ? picked.shortTitle : picked.title));
  judge();
}

}  // namespace bw
