#include "controls/ComboBox.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QListView>
#include <QPointer>
#include <QProxyStyle>
#include <QScreen>
#include <QSignalBlocker>
#include <QStyleFactory>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>

#include "controls/Dialog.h"
#include "controls/EventGuard.h"
#include "controls/Hint.h"
#include "controls/QtText.h"
#include "records/RowMark.h"

namespace bw {
namespace {

constexpr int kRowsOfPopup = 20;

// Some styles show all items at once, over the whole screen and without a scroll bar.
class ListPopup : public QProxyStyle {
 public:
  ListPopup() : QProxyStyle(QStyleFactory::create(QApplication::style()->name())) {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override {
    return hint == SH_ComboBox_Popup ? 0 : QProxyStyle::styleHint(hint, option, widget, answer);
  }
};

QStyle* listPopup() {
  static QPointer<QStyle> style;
  if (style == nullptr) {
    style = new ListPopup;
    style->setParent(qApp);
  }
  return style;
}

class MarkedItems : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = index.data(Qt::AccessibleTextRole).toString();
  }
};

bool isEnter(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

// In the open list.
bool takesMarked(const QKeyEvent& event) {
  const bool altDown = event.key() == Qt::Key_Down && (event.modifiers() & Qt::AltModifier) != 0;
  return isEnter(event) || event.key() == Qt::Key_F4 || altDown;
}

}  // namespace

QVariant ComboBox::Items::data(const QModelIndex& index, int role) const {
  if (role != Qt::AccessibleTextRole) return QStringListModel::data(index, role);
  const QString text = QStringListModel::data(index, Qt::DisplayRole).toString();
  const QString mark = marks.value(index.row());
  return mark.isEmpty() ? text : text + "  \u00b7  " + mark;
}

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent), search_(*this) {
  setModel(&items_);
  // The default measures every item before the box is shown.
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(18);
  setMaxVisibleItems(kRowsOfPopup);
  setFocusPolicy(Qt::StrongFocus);  // the wheel gives no focus
  onEvent(this, &QComboBox::activated, this, [this] {
    search_.end();
    if (onSelected) onSelected();
  });
}

void ComboBox::Clear() { setItems({}); }

void ComboBox::setItems(const QStringList& items, const Mark& mark) {
  search_.end();
  const QSignalBlocker quiet(this);
  items_.marks.clear();
  items_.setStringList(items);
  setCurrentIndex(-1);
  if (!mark) return;
  QHash<QString, int> first;
  first.reserve(items.size());
  for (int i = 0; i < items.size(); ++i) {
    const auto known = first.constFind(items[i]);
    if (known == first.constEnd()) {
      first.insert(items[i], i);
      continue;
    }
    for (const int index : {known.value(), i}) items_.marks.insert(index, mark(index));
  }
}

void ComboBox::fillFrom(const RecordSetRef& rows, std::string_view field, const Mark& mark) {
  QStringList items;
  items.reserve(rows->RecordCount());
  if (rows->RecordCount() > 0)
    for (rows->MoveFirst(); !rows->EOF_(); rows->MoveNext())
      items.append(toQt(rows->textOrEmpty(field)));
  setItems(items, mark);
}

void ComboBox::fillFrom(const RecordSetRef& rows, std::string_view field,
                        const std::vector<std::string>& marks) {
  fillFrom(rows, field, [&](int index) {
    return toQt(markOf(*rows->rows(), rows->view()[static_cast<std::size_t>(index)], marks));
  });
}

void ComboBox::setListIndex(int index) {
  if (index < -1 || index >= count()) throw RuntimeError(ErrorNumber::invalidPropertyValue);
  search_.end();
  {
    const QSignalBlocker quiet(this);
    setCurrentIndex(index);
  }
  update();
  if (onSelected) onSelected();
}

void ComboBox::selectFound(const RecordSetRef& rows, std::string_view criterion) {
  rows->MoveFirst();
  rows->Find(criterion);
  setListIndex(rows->EOF_() ? 0 : static_cast<int>(rows->AbsolutePosition()) - 1);
}

void ComboBox::moveToSelected(const RecordSetRef& rows) const {
  rows->setAbsolutePosition(ListIndex() + 1);
}

TypedSearch::Rows::Near ComboBox::beginSearch() {
  texts_ = {};
  for (const QString& item : items_.stringList()) texts_.add(fromQt(item));
  from_ = isPopupOpen() ? view()->currentIndex().row() : currentIndex();
  return {count(), std::max(0, from_)};
}

void ComboBox::showFound(std::optional<int> found) {
  stopped_ = false;
  if (found) goTo(*found);
  if (search_.isOpen()) sayHint();
}

void ComboBox::endSearch(bool givenUp) {
  for (Hint* hint : {hint_, popupHint_})
    if (hint != nullptr) hint->say("");
  texts_ = {};
  if (givenUp) goTo(from_);
}

void ComboBox::goTo(int row) {
  if (isPopupOpen())
    view()->setCurrentIndex(items_.index(row));
  else
    choose(row);
}

void ComboBox::choose(int row) {
  if (row == currentIndex()) return;
  setCurrentIndex(row);
  guarded([this] {
    if (onSelected) onSelected();
  });
}

QString ComboBox::fullText(int index) const {
  return index < 0 ? "nothing" : items_.index(index).data(Qt::AccessibleTextRole).toString();
}

QString ComboBox::hintWords() const {
  const QString words = "Find: " + search_.text();
  if (!search_.failed()) {
    const QString mark = this->mark(*search_.found());
    return mark.isEmpty() ? words : words + " (" + mark + "; F3 goes on)";
  }
  const QString stays = words + " (no such entry; chosen is " + fullText(currentIndex()) + ")";
  return stopped_ ? stays + ". Once more, and that is taken." : stays;
}

void ComboBox::sayHint() {
  if (hint_ == nullptr) hint_ = named(new Hint(this, Hint::Place::below), "findField", "Find");
  const bool open = isPopupOpen();
  if (popupHint_ != nullptr) popupHint_->say(open ? hintWords() : "");
  hint_->say(open ? "" : hintWords());
  if (open) showBeside(*popupHint_, *view(), view()->currentIndex());
}

bool ComboBox::stopOnce() {
  if (!search_.failed() || stopped_) return false;
  stopped_ = true;
  search_.selectText();
  sayHint();
  return true;
}

bool ComboBox::settle() {
  if (stopOnce()) return false;
  search_.end();
  return true;
}

void ComboBox::keyPressEvent(QKeyEvent* event) {
  const TypedSearch::Key key = search_.takeKey(*event);
  if (key == TypedSearch::Key::taken) return;
  if (key == TypedSearch::Key::other && isEnter(*event) && stopOnce()) return;
  QComboBox::keyPressEvent(event);
  if (key == TypedSearch::Key::other && event->isAccepted()) search_.end();
}

bool ComboBox::focusNextPrevChild(bool next) {
  return stopOnce() || QComboBox::focusNextPrevChild(next);
}

// What no item has stays until Ok has asked for it.
void ComboBox::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  const bool leaves =
      event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason;
  if (leaves && (!search_.failed() || stopped_)) search_.end();
}

void ComboBox::hideEvent(QHideEvent* event) {
  search_.end();
  QComboBox::hideEvent(event);
}

void ComboBox::wheelEvent(QWheelEvent* event) {
  if (!hasFocus()) return event->ignore();
  QComboBox::wheelEvent(event);
}

bool ComboBox::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !toolTip().isEmpty()) return QComboBox::event(event);
  const bool cut = fontMetrics().horizontalAdvance(currentText()) > width() - 2 * height();
  const bool told = cut || !mark(currentIndex()).isEmpty();
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                     told ? fullText(currentIndex()).toHtmlEscaped() : QString(), this);
  return true;
}

bool ComboBox::isPopupOpen() const {
  return popupHint_ != nullptr && popupHint_->parentWidget()->isVisible();
}

void ComboBox::preparePopup() {
  setStyle(listPopup());
  setItemDelegate(new MarkedItems(this));
  // The view may have been made before, for an assistive tool.
  view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  if (auto* list = qobject_cast<QListView*>(view())) list->setUniformItemSizes(true);
  popupHint_ = named(new Hint(view(), Hint::Place::insideBelow), "findField", "Find");
  view()->installEventFilter(this);
}

// The widest text is among those of most letters: to measure all takes as long as to paint them.
int ComboBox::widestItem() const {
  constexpr qsizetype kMeasured = 50;
  QStringList texts;
  for (int i = 0; i < count(); ++i) texts << fullText(i);
  const qsizetype measured = std::min(kMeasured, texts.size());
  std::partial_sort(
      texts.begin(), texts.begin() + measured, texts.end(),
      [](const QString& one, const QString& other) { return one.size() > other.size(); });
  int widest = 0;
  for (qsizetype i = 0; i < measured; ++i)
    widest = std::max(widest, fontMetrics().horizontalAdvance(texts[i]));
  return widest;
}

// As wide as the longest item, where the screen has room.
void ComboBox::widenPopup() {
  const int edges = 2 * height();  // the scroll bar, margins
  const int most = screen()->availableSize().width() / 2;
  view()->setMinimumWidth(std::max(width(), std::min(widestItem() + edges, most)));
}

void ComboBox::showPopup() {
  search_.end();
  if (popupHint_ == nullptr) preparePopup();
  widenPopup();
  QComboBox::showPopup();
}

void ComboBox::hidePopup() {
  QComboBox::hidePopup();
  if (!search_.failed() || stopped_)
    search_.end();
  else
    sayHint();
}

bool ComboBox::takePopupKey(const QKeyEvent& event) {
  const TypedSearch::Key key = search_.takeKey(event);
  if (key != TypedSearch::Key::other) return key == TypedSearch::Key::taken;
  if (takesMarked(event) && stopOnce()) return true;
  search_.end();
  return false;
}

// The toolkit closes the list before it sends the key itself.
bool ComboBox::wantsShortcut(const QKeyEvent& event) const {
  if (event.key() == Qt::Key_Escape) return search_.isOpen();
  return search_.failed() && !stopped_ && takesMarked(event);
}

bool ComboBox::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && wantsShortcut(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  if (event->type() == QEvent::KeyPress && takePopupKey(*static_cast<QKeyEvent*>(event)))
    return true;
  return QComboBox::eventFilter(watched, event);
}

}  // namespace bw
