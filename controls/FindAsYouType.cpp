#include "controls/FindAsYouType.h"

#include <QAccessible>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>

#include "controls/Dialog.h"
#include "controls/ListModel.h"
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

Hit hitIn(std::string_view text, std::string_view wanted) {
  const std::size_t at = text.find(wanted);
  if (at == std::string_view::npos) return Hit::none;
  return at == 0 ? Hit::atStart : Hit::inside;
}

}  // namespace

FindAsYouType::FindAsYouType(QTableView& list, const ListModel& model)
    : QObject(&list), list_(list), model_(model), field_(new QLabel(&list)) {
  named(field_, "findField", "Find");
  field_->setTextFormat(Qt::PlainText);
  field_->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  field_->setAutoFillBackground(true);
  field_->setForegroundRole(QPalette::ToolTipText);
  field_->setBackgroundRole(QPalette::ToolTipBase);
  field_->setMargin(2);
  field_->hide();
  list_.installEventFilter(this);
  list_.viewport()->installEventFilter(this);
  connect(&model_, &QAbstractItemModel::modelReset, this, [this] { close(); });
  connect(&model_, &QAbstractItemModel::rowsRemoved, this, [this] { close(); });
}

bool FindAsYouType::takeKey(const QKeyEvent& event) {
  if (isModifier(event.key())) return false;
  if (typesText(event) && takeText(event.text())) return true;
  if (!isOpen()) return false;
  switch (event.key()) {
    case Qt::Key_Backspace:
      shorten();
      return true;
    case Qt::Key_F3:
      show(text_, find(text_, list_.currentIndex().row() + 1));
      return true;
    case Qt::Key_Escape:
      close();
      return true;
    default:
      close();
      return false;
  }
}

bool FindAsYouType::takeText(const QString& text) {
  const bool blank = text == " ";
  if (blank && !isOpen()) return false;
  if (model_.count() == 0) return false;
  if (!isOpen()) open();
  const QString longer = text_ + text;
  const auto found = find(longer, from_);
  if (blank && !found && model_.hasCheckBoxes()) return false;
  text_ = longer;
  show(text_, found);
  return true;
}

void FindAsYouType::open() {
  from_ = std::max(0, list_.currentIndex().row());
  const QHeaderView& head = *list_.horizontalHeader();
  for (int place = 0; place < head.count(); ++place) {
    const int column = head.logicalIndex(place);
    const Column* source = model_.source(column);
    if (source == nullptr || head.sectionSize(column) == 0) continue;
    columns_.push_back({column, ColumnSearch(*source, model_.rows()), Hit::none});
  }
}

void FindAsYouType::close() {
  field_->hide();
  text_.clear();
  columns_.clear();
}

void FindAsYouType::shorten() {
  text_.chop(text_.back().isLowSurrogate() ? 2 : 1);
  if (text_.isEmpty()) return close();
  show(text_, find(text_, from_));
}

// A text set by hand stands in no store: its row is looked at by itself.
Hit FindAsYouType::hitOf(int row, int& column, std::string_view wanted) const {
  const std::uint32_t stored = model_.rows()[static_cast<std::size_t>(row)];
  const QString* own = model_.ownText(row);
  Hit best = Hit::none;
  for (const Searched& searched : columns_) {
    if (searched.best == Hit::none && own == nullptr) continue;
    const bool byHand = own != nullptr && searched.column == 0;
    const Hit hit = byHand ? hitIn(searchText(fromQt(*own)), wanted) : searched.texts.hit(stored);
    if (hit <= best) continue;
    best = hit;
    column = searched.column;
  }
  return best;
}

std::optional<FindAsYouType::Found> FindAsYouType::find(const QString& text, int from) {
  const std::string wanted = searchText(fromQt(text));
  if (wanted.empty()) return std::nullopt;
  for (Searched& searched : columns_) searched.best = searched.texts.search(wanted);
  std::optional<Found> inside;
  const int count = model_.count();
  for (int i = 0; i < count; ++i) {
    Found at{(from + i) % count, 0};
    const Hit hit = hitOf(at.row, at.column, wanted);
    if (hit == Hit::atStart) return at;
    if (hit == Hit::inside && !inside) inside = at;
  }
  return inside;
}

void FindAsYouType::show(const QString& text, const std::optional<Found>& found) {
  field_->setText(found ? "Find: " + text : "Find: " + text + " (no such row)");
  field_->setAccessibleName(field_->text());
  place();
  field_->show();
  QAccessibleEvent told(field_, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&told);
  if (!found) return;
  list_.selectionModel()->setCurrentIndex(
      model_.index(found->row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  list_.scrollTo(model_.index(found->row, found->column));
  // The field is not to cover what was found.
  const int top = field_->y() - list_.viewport()->y();
  const int lowest = list_.visualRect(model_.index(found->row, 0)).bottom();
  const int height = std::max(1, list_.verticalHeader()->defaultSectionSize());
  if (lowest >= top)
    list_.verticalScrollBar()->setValue(list_.verticalScrollBar()->value() +
                                        (lowest - top) / height + 1);
}

void FindAsYouType::place() {
  field_->adjustSize();
  const QRect shown = list_.viewport()->geometry();
  field_->resize(std::min(field_->width(), shown.width()), field_->height());
  field_->move(shown.right() - field_->width() + 1, shown.bottom() - field_->height() + 1);
}

bool FindAsYouType::eventFilter(QObject* watched, QEvent* event) {
  if (isOpen()) {
    if (event->type() == QEvent::Resize) place();
    if (event->type() == QEvent::FocusOut || event->type() == QEvent::MouseButtonPress) close();
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace bw
