#include "controls/FindAsYouType.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QTableView>
#include <algorithm>

#include "controls/Dialog.h"
#include "controls/Hint.h"
#include "controls/ListModel.h"
#include "controls/QtText.h"

namespace bw {
namespace {

bool isEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

// Enter and Ctrl+Enter are Ok, Insert ticks.
bool ticks(const QKeyEvent& event) {
  const Qt::KeyboardModifiers with = event.modifiers() & ~Qt::KeypadModifier;
  if (isEnter(event.key())) return with == Qt::NoModifier || with == Qt::ControlModifier;
  return event.key() == Qt::Key_Insert && with == Qt::NoModifier;
}

}  // namespace

FindAsYouType::FindAsYouType(QTableView& list, ListModel& model)
    : QObject(&list), list_(list), model_(model), hint_(new Hint(&list, Hint::Place::insideBelow)),
      search_(*this) {
  named(hint_, "findField", "Find");
  list_.installEventFilter(this);
  list_.viewport()->installEventFilter(this);
  const auto rowsChanged = [this] {
    if (!filling_) search_.end();
  };
  connect(&model_, &QAbstractItemModel::modelReset, this, rowsChanged);
  connect(&model_, &QAbstractItemModel::rowsRemoved, this, rowsChanged);
}

bool FindAsYouType::takeKey(const QKeyEvent& event) {
  const TypedSearch::Key key = search_.takeKey(event);
  if (key != TypedSearch::Key::other) return key == TypedSearch::Key::taken;
  if (search_.failed()) return true;
  const bool ticked = model_.hasCheckBoxes() && ticks(event);
  if (ticked) tick(list_.currentIndex().row());
  search_.end();
  return ticked && event.key() == Qt::Key_Insert;
}

// Ctrl+Enter: it would press Ok past the row that was found, or past a text that no row has.
bool FindAsYouType::wantsShortcut(const QKeyEvent& event) const {
  if (!isEnter(event.key()) || !search_.isOpen()) return false;
  return search_.failed() || (model_.hasCheckBoxes() && ticks(event));
}

void FindAsYouType::tick(int row) {
  if (!model_.checked(row)) model_.setData(model_.index(row, 0), Qt::Checked, Qt::CheckStateRole);
}

TypedSearch::Rows::Near FindAsYouType::beginSearch() {
  from_ = std::max(0, list_.currentIndex().row());
  selection_ = list_.selectionModel()->selection();
  far_.reset();
  if (groups_.shown) {
    group_ = groups_.shown();
    near_ = model_.rows();
  }
  const QHeaderView& head = *list_.horizontalHeader();
  columns_.clear();
  for (int place = 0; place < head.count(); ++place) {
    const int column = head.logicalIndex(place);
    const Column* source = model_.source(column);
    if (source == nullptr || head.sectionSize(column) == 0) continue;
    columns_.push_back({column, ColumnSearch(*source, model_.rows()), Hit::none});
  }
  return {model_.count(), from_};
}

int FindAsYouType::farRows() {
  if (!groups_.others) return 0;
  if (!far_) far_ = groups_.others();
  return static_cast<int>(far_->size());
}

Hit FindAsYouType::search(std::string_view wanted) {
  wanted_ = wanted;
  Hit best = model_.hasOwnTexts() ? Hit::atStart : Hit::none;
  for (Searched& searched : columns_)
    best = std::max(best, searched.best = searched.texts.search(wanted));
  return best;
}

std::uint32_t FindAsYouType::storedRow(int row) const {
  const auto near = static_cast<std::size_t>(row);
  if (!groups_.shown) return model_.rows()[near];
  return near < near_.size() ? near_[near] : (*far_)[near - near_.size()].row;
}

Hit FindAsYouType::hit(int row) const {
  int column = 0;
  return hitAt(storedRow(row), column);
}

// A text set by hand stands in no store: its row is looked at by itself.
Hit FindAsYouType::hitAt(std::uint32_t stored, int& column) const {
  const QString* own = model_.ownText(stored);
  Hit best = Hit::none;
  for (const Searched& searched : columns_) {
    if (searched.best == Hit::none && own == nullptr) continue;
    const bool byHand = own != nullptr && searched.column == 0;
    const Hit hit = byHand ? hitOf(fromQt(*own), wanted_) : searched.texts.hit(stored);
    if (hit <= best) continue;
    best = hit;
    column = searched.column;
  }
  return best;
}

void FindAsYouType::showGroup(int group) {
  if (!groups_.shown || groups_.shown() == group) return;
  const QScopedValueRollback own(filling_, true);
  groups_.show(group);
}

QModelIndex FindAsYouType::select(int row) {
  int column = 0;
  const std::uint32_t stored = storedRow(row);
  hitAt(stored, column);
  const bool far = groups_.shown && row >= static_cast<int>(near_.size());
  showGroup(far ? (*far_)[static_cast<std::size_t>(row) - near_.size()].group : group_);
  const auto& rows = model_.rows();
  const int shown =
      far ? static_cast<int>(std::find(rows.begin(), rows.end(), stored) - rows.begin()) : row;
  list_.selectionModel()->setCurrentIndex(
      model_.index(shown, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  return model_.index(shown, column);
}

QString FindAsYouType::words(std::optional<int> found) const {
  QString words = "Find: " + search_.text();
  if (!found) return words + " (no such row: Backspace or Esc)";
  if (groups_.shown && groups_.shown() != group_) words += " in " + groups_.name(groups_.shown());
  if (const QString mark = model_.mark(list_.currentIndex().row()); !mark.isEmpty())
    words += " (" + mark + "; F3 goes on)";
  if (model_.hasCheckBoxes()) words += " (Insert ticks it, Enter ticks it and is Ok)";
  return words;
}

void FindAsYouType::showFound(std::optional<int> found) {
  if (!found) list_.clearSelection();
  const QModelIndex shown = found ? select(*found) : QModelIndex();
  hint_->say(words(found));
  if (found) showBeside(*hint_, list_, shown);
}

void FindAsYouType::endSearch(bool givenUp) {
  hint_->say("");
  columns_.clear();
  if (givenUp) goBack();
}

void FindAsYouType::goBack() {
  showGroup(group_);
  list_.selectionModel()->setCurrentIndex(model_.index(from_, 0), QItemSelectionModel::NoUpdate);
  list_.selectionModel()->select(selection_, QItemSelectionModel::ClearAndSelect);
  list_.scrollTo(model_.index(from_, 0));
}

bool FindAsYouType::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut || event->type() == QEvent::MouseButtonPress) search_.end();
  return QObject::eventFilter(watched, event);
}

}  // namespace bw
