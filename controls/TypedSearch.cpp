#include "controls/TypedSearch.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QScrollBar>

#include "controls/Hint.h"
#include "controls/QtText.h"

namespace bw {
namespace {

bool isModifier(int key) {
  return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
         key == Qt::Key_Meta || key == Qt::Key_AltGr || key == Qt::Key_CapsLock;
}

bool typesText(const QKeyEvent& event) {
  constexpr auto kCommands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
  return !(event.modifiers() & kCommands) && !event.text().isEmpty() && event.text()[0].isPrint();
}

std::string wantedOf(QString text) {
  while (text.endsWith(' ')) text.chop(1);
  return searchText(fromQt(text));
}

}  // namespace

TypedSearch::Key TypedSearch::takeKey(const QKeyEvent& event) {
  if (isModifier(event.key())) return Key::passing;
  if (typesText(event)) {
    if (selected_ && event.text() != " ") close(false);
    if (takeText(event.text())) return Key::taken;
  }
  if (!isOpen()) return Key::passing;
  switch (event.key()) {
    case Qt::Key_Backspace:
      shorten();
      return Key::taken;
    case Qt::Key_F3:
      found_ = next(found_);
      rows_.showFound(found_);
      return Key::taken;
    case Qt::Key_Escape:
      close(true);
      return Key::taken;
    default:
      return Key::other;
  }
}

bool TypedSearch::takeText(const QString& text) {
  if (!isOpen()) {
    if (text == " ") return false;
    near_ = rows_.beginSearch();
    if (near_.count == 0 && rows_.farRows() == 0) return false;
  }
  text_ += text;
  look();
  return true;
}

void TypedSearch::shorten() {
  selected_ = false;
  const int last = text_.back().isLowSurrogate() ? 2 : 1;
  if (text_.size() == last) return close(true);
  text_.chop(last);
  look();
}

void TypedSearch::look() {
  const std::string wanted = wantedOf(text_);
  best_ = wanted.empty() ? Hit::none : rows_.search(wanted);
  found_ = next(std::nullopt);
  rows_.showFound(found_);
}

// In the order of the search, behind a row that has the text; behind the last one the first.
std::optional<int> TypedSearch::next(std::optional<int> after) const {
  const bool isFar = after && *after >= near_.count;
  for (const bool far : {false, true}) {
    if (best_ == Hit::none) break;
    if (isFar && !far) continue;
    const int first = far ? near_.count : 0;
    const int count = far ? rows_.farRows() : near_.count;
    const int from = far ? 0 : near_.from;
    const bool here = after && far == isFar;
    const Hit top = here ? rows_.hit(*after) : best_;
    int step = here ? (*after - first - from + count) % count + 1 : 0;
    for (const Hit wanted : {Hit::atStart, Hit::atWord, Hit::inside}) {
      if (wanted > top) continue;
      for (; step < count; ++step)
        if (const int row = first + (from + step) % count; rows_.hit(row) == wanted) return row;
      step = 0;
    }
  }
  return after ? next(std::nullopt) : std::nullopt;
}

void TypedSearch::close(bool givenUp) {
  if (!isOpen()) return;
  text_.clear();
  found_.reset();
  selected_ = false;
  rows_.endSearch(givenUp);
}

void showBeside(Hint& hint, QAbstractItemView& view, const QModelIndex& found) {
  const auto place = [&] {
    const QRect row = view.visualRect(found);
    const QRect shown = view.viewport()->geometry();
    return QRect(shown.x(), shown.y() + row.y(), shown.width(), row.height());
  };
  view.scrollTo(found);
  hint.leaveFree({});
  if (hint.geometry().intersects(place())) {
    const int sideways = view.horizontalScrollBar()->value();
    view.scrollTo(found, QAbstractItemView::PositionAtCenter);
    view.horizontalScrollBar()->setValue(sideways);
  }
  hint.leaveFree(place());
}

}  // namespace bw
