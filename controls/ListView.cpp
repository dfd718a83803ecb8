#include "controls/ListView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "controls/ColumnMenu.h"
#include "controls/EventGuard.h"
#include "controls/QtText.h"
#include "controls/RowDelegate.h"
#include "controls/Twips.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {

ListView::ListView(std::vector<ListColumn> columns, Options options, QWidget* parent)
    : QTableView(parent), model_(std::move(columns), options.checkBoxes),
      find_(new FindAsYouType(*this, model_)) {
  setModel(&model_);
  setItemDelegate(new RowDelegate(this));
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setSelectionMode(options.selection == Selection::several ? QAbstractItemView::ExtendedSelection
                                                           : QAbstractItemView::SingleSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setTabKeyNavigation(false);
  setShowGrid(false);
  setWordWrap(false);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  setUpHeaders();
  model_.onUserCheck = [this](int row, bool checked) {
    guarded([&] {
      if (onItemCheck) onItemCheck(row, checked);
    });
  };
}

void ListView::setUpHeaders() {
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setMinimumSectionSize(1);
  QHeaderView* head = horizontalHeader();
  head->setMinimumSectionSize(0);
  head->setSectionsMovable(true);
  head->setFirstSectionMovable(true);
  head->setHighlightSections(false);
  head->setTextElideMode(Qt::ElideRight);
  head->setSectionsClickable(true);
  head->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  for (const ListColumn& column : model_.columns())
    widths_.push_back(static_cast<float>(column.width));
  takeFont();
  head->setContextMenuPolicy(Qt::CustomContextMenu);
  onEvent(head, &QWidget::customContextMenuRequested, this,
          [this, head](const QPoint& at) { ColumnMenu::open(*this, head->mapToGlobal(at)); });
  onEvent(head, &QHeaderView::sectionClicked, this, [this](int section) {
    if (onColumnClick) onColumnClick(section);
  });
  onEvent(head, &QHeaderView::sectionResized, this, [this](int section, int, int pixels) {
    if (!settingWidth_)
      widths_[static_cast<std::size_t>(section)] = static_cast<float>(toTwips(pixels) / scale_);
  });
}

void ListView::takeFont() {
  scale_ = fontScale();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
  for (int i = 0; i < columns(); ++i) setWidth(i, Width(i));
}

int ListView::columnOf(std::string_view key) const {
  for (int i = 0; i < columns(); ++i)
    if (sameName(column(i).key, key)) return i;
  throw RuntimeError(ErrorNumber::elementNotFound);
}

int ListView::Position(int column) const { return horizontalHeader()->visualIndex(column) + 1; }

void ListView::setPosition(int column, int position) {
  if (position < 1 || position > columns()) throw RuntimeError(ErrorNumber::invalidPropertyValue);
  horizontalHeader()->moveSection(horizontalHeader()->visualIndex(column), position - 1);
}

float ListView::Width(int column) const { return widths_[static_cast<std::size_t>(column)]; }

void ListView::setWidth(int column, float twips) {
  const QScopedValueRollback own(settingWidth_, true);
  widths_[static_cast<std::size_t>(column)] = twips;
  horizontalHeader()->resizeSection(column, toPixels(twips * scale_));
}

void ListView::showSorted(int column) {
  horizontalHeader()->setSortIndicator(column, Qt::AscendingOrder);
  horizontalHeader()->setSortIndicatorShown(column >= 0);
}

int ListView::sorted() const {
  const QHeaderView& head = *horizontalHeader();
  return head.isSortIndicatorShown() ? head.sortIndicatorSection() : -1;
}

void ListView::stretchLastColumn() { horizontalHeader()->setStretchLastSection(true); }

void ListView::stretchColumn(int column) {
  horizontalHeader()->setSectionResizeMode(column, QHeaderView::Stretch);
}

void ListView::fill(std::shared_ptr<const RowStore> store, const std::vector<std::uint32_t>& rows) {
  model_.fill(std::move(store), rows);
  tellWhenEmpty();
}

void ListView::removeItem(int row) {
  const bool wasSelected = selected(row);
  model_.remove(row);
  if (wasSelected) clearSelected();
  tellWhenEmpty();
}

int ListView::rowAt(std::ptrdiff_t position) const {
  const int row = model_.rowAt(position);
  if (row < 0) throw RuntimeError(ErrorNumber::elementNotFound);
  return row;
}

std::string ListView::text(int row) const { return fromQt(model_.text(row, 0)); }
void ListView::setText(int row, const std::string& text) { model_.setFirstText(row, toQt(text)); }

bool ListView::selected(int row) const { return selectionModel()->isRowSelected(row); }

void ListView::setSelected(int row, bool selected) {
  const QModelIndex index = model_.index(row, 0);
  if (!selected)
    return selectionModel()->select(index,
                                    QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
  const auto how = selectionMode() == QAbstractItemView::SingleSelection
                       ? QItemSelectionModel::ClearAndSelect
                       : QItemSelectionModel::Select;
  selectionModel()->setCurrentIndex(index, how | QItemSelectionModel::Rows);
}

void ListView::clearSelected() { selectionModel()->clearSelection(); }

std::optional<int> ListView::selectedItem() const {
  const QModelIndex current = currentIndex();
  if (!current.isValid() || !selected(current.row())) return std::nullopt;
  return current.row();
}

// By ranges: a list of single rows takes seconds when a million are selected.
std::vector<int> ListView::selectedFromLast() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : selectionModel()->selection())
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
  std::sort(rows.begin(), rows.end(), std::greater<>());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

void ListView::ensureVisible(int row) { scrollTo(model_.index(row, 0)); }

QSize ListView::sizeHint() const { return {scaledPixels(400), scaledPixels(200)}; }

QString ListView::words(int row) const {
  QStringList texts;
  for (int i = 0; i < columns(); ++i)
    if (const QString text = model_.text(row, i); !text.isEmpty()) texts << text;
  if (const QString mark = model_.mark(row); !mark.isEmpty()) texts << mark;
  return texts.join(", ");
}

void ListView::tick(int row, bool checked) {
  model_.setData(model_.index(row, 0), checked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
}

// The keys that a list gives a meaning of its own. False for the others, and for those without a
// handler here.
bool ListView::runKey(int key) {
  const auto run = [](const std::function<void()>& handler) {
    if (handler) guarded([&] { handler(); });
    return handler != nullptr;
  };
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return run(onOpen);
    case Qt::Key_Insert:
      return run(onInsertKey);
    case Qt::Key_Delete:
      return run(onDeleteKey);
    case Qt::Key_Space:
      if (!model_.hasCheckBoxes() || !currentIndex().isValid()) return false;
      tick(currentIndex().row(), !model_.checked(currentIndex().row()));
      return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
      horizontalScrollBar()->triggerAction(key == Qt::Key_Left
                                               ? QAbstractSlider::SliderSingleStepSub
                                               : QAbstractSlider::SliderSingleStepAdd);
      return true;
    default:
      return false;
  }
}

bool ListView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride &&
      find_->wantsShortcut(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QTableView::event(event);
}

bool ListView::focusNextPrevChild(bool next) {
  return find_->failed() || QTableView::focusNextPrevChild(next);
}

void ListView::keyPressEvent(QKeyEvent* event) {
  const QModelIndex before = currentIndex();
  // Ctrl+Enter comes here only after a search, and then it is Enter.
  const bool plain =
      (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier || find_->wantsShortcut(*event);
  bool taken = false;
  guarded([&] { taken = find_->takeKey(*event); });
  if (!taken) {
    if (plain && runKey(event->key())) return;
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)
      return openColumnMenu();
    QTableView::keyPressEvent(event);
  }
  if (currentIndex() == before || !onChosen) return;
  guarded([&] { onChosen(); });
}

QModelIndex ListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if (action == MoveHome) return model_.count() > 0 ? model_.index(0, 0) : QModelIndex();
  if (action == MoveEnd)
    return model_.count() > 0 ? model_.index(model_.count() - 1, 0) : QModelIndex();
  return QTableView::moveCursor(action, modifiers);
}

void ListView::setEmptyText(const QString& text) {
  emptyText_ = text;
  tellWhenEmpty();
  viewport()->update();
}

void ListView::tellWhenEmpty() { setAccessibleDescription(count() > 0 ? QString() : emptyText_); }

// An empty list says so, lest it looks as if it were still to be filled.
void ListView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (count() > 0) return;
  constexpr int kMargin = 8;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                   Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

// The key for menus; the rows have none.
void ListView::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() != QContextMenuEvent::Keyboard) return event->ignore();
  openColumnMenu();
}

void ListView::openColumnMenu() {
  guarded([this] { ColumnMenu::open(*this, viewport()->mapToGlobal(QPoint())); });
}

void ListView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange) takeFont();
}

void ListView::mousePressEvent(QMouseEvent* event) {
  doubleClicked_ = false;
  pressed_ = indexAt(event->position().toPoint()).siblingAtColumn(0);
  wasChecked_ = model_.hasCheckBoxes() && pressed_.isValid() && model_.checked(pressed_.row());
  QTableView::mousePressEvent(event);
}

// A double click turns the tick once, also on the check box, which the first click has turned.
void ListView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (model_.hasCheckBoxes()) {
    doubleClicked_ = true;
    const QModelIndex hit = indexAt(event->position().toPoint()).siblingAtColumn(0);
    if (event->button() != Qt::LeftButton || !hit.isValid() || hit != pressed_) return;
    if (model_.checked(hit.row()) == wasChecked_) tick(hit.row(), !wasChecked_);
    return;
  }
  QTableView::mouseDoubleClickEvent(event);
  if (event->button() != Qt::LeftButton) return;
  guarded([&] {
    if (onOpen) onOpen();
  });
}

void ListView::mouseReleaseEvent(QMouseEvent* event) {
  if (std::exchange(doubleClicked_, false)) return;
  QTableView::mouseReleaseEvent(event);
  guarded([&] {
    if (event->button() == Qt::LeftButton && onChosen) onChosen();
  });
}

void ListView::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  viewport()->update();
}

void ListView::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  viewport()->update();
}

}  // namespace bw
