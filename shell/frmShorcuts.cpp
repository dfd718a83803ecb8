#include "shell/frmShorcuts.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QStyledItemDelegate>
#include <algorithm>

#include "controls/Dialog.h"
#include "controls/EventGuard.h"
#include "controls/Icons.h"
#include "controls/QtText.h"
#include "controls/Twips.h"
#include "core/Principal.h"
#include "lists/MainFrame.h"
#include "shell/RecordKinds.h"
#include "text/BrokenOff.h"
#include "text/Conversions.h"
#include "text/Formats.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr int kWidth = 2865;      // twips, at the standard font
constexpr int kIndentation = 12;  // pixels: the longest filter's name should be read whole

std::string keyOf(std::int16_t view, std::int16_t filter) {
  return concat("K", zeroFilled(view, 2), ".", zeroFilled(filter, 2));
}

std::string keyOf(const QTreeWidgetItem* node) {
  return fromQt(node->data(0, Qt::UserRole).toString());
}

void fillNode(QTreeWidgetItem* node, const QString& text, const QString& toolTip,
              const std::string& key, const QIcon& icon) {
  node->setText(0, text);
  node->setToolTip(0, toolTip);
  node->setData(0, Qt::UserRole, toQt(key));
  node->setIcon(0, icon);
}

QString withKeys(const QString& text, const std::string& keys) {
  return keys.empty() ? text : QString("%1 (%2)").arg(text, toQt(keys));
}

void addFilter(QTreeWidgetItem* parent, std::int16_t view, const ViewFilter& filter,
               const QIcon& icon) {
  if (filter.in == ViewFilter::In::menu) return;
  auto* node = new QTreeWidgetItem(parent);
  const std::string_view caption = filterCaptions()[static_cast<std::size_t>(filter.number)];
  const QString text = filter.node != nullptr ? QString(filter.node) : toQt(caption);
  fillNode(node, text, withKeys(text, filterKeys(recordKind(view), filter.number)),
           keyOf(view, filter.number), icon);
}

// Draws a text that is too long for the narrow pane in narrower letters.
class FittingText : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    constexpr int kNarrowest = 80;  // per cent
    constexpr double kSpare = 0.98;
    QStyledItemDelegate::initStyleOption(option, index);
    if (!option->rect.isValid()) return;
    const QStyle& style = *option->widget->style();
    const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, option, option->widget) + 1;
    const int room =
        style.subElementRect(QStyle::SE_ItemViewItemText, option, option->widget).width() -
        2 * margin;
    const auto share = [&] {  // of the text that finds room
      return double{1} * room / QFontMetrics(option->font).horizontalAdvance(option->text);
    };
    if (share() >= 1) return;
    option->font.setStretch(std::max(kNarrowest, static_cast<int>(100 * share())));
    // A family without letters so narrow gives the narrowest that it has.
    if (share() < 1) option->font.setPointSizeF(option->font.pointSizeF() * share() * kSpare);
  }
};

// Only the left button marks a node, and `released` follows each press.
class Tree : public QTreeWidget {
 public:
  using QTreeWidget::QTreeWidget;
  std::function<void()> released;

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton) QTreeWidget::mousePressEvent(event);
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    QTreeWidget::mouseReleaseEvent(event);
    released();
  }
};

}  // namespace

ShorcutsTree::ShorcutsTree(QWidget* parent) : QWidget(parent) {
  auto* tree = new Tree(this);
  tree->released = [this] { markShown(); };
  TreeView1 = tree;
  setObjectName("frmShorcuts");
  setWindowTitle("Shortcuts");
  named(TreeView1, "TreeView1", "Shortcuts");
  TreeView1->setHeaderHidden(true);
  TreeView1->setUniformRowHeights(true);
  TreeView1->setIndentation(kIndentation);
  TreeView1->setItemDelegate(new FittingText(TreeView1));
  setFocusProxy(TreeView1);
  TreeView1->installEventFilter(this);
  takeFont();
  build();
  onEvent(TreeView1, &QTreeWidget::itemClicked, this,
          [this](QTreeWidgetItem* node, int) { nodeClick(node); });
}

// A page is a root. The first is the welcome page, with the kinds of records below it.
void ShorcutsTree::build() {
  const QIcon paper = icon("Paper");
  const QIcon earth = icon("Earth");
  auto* welcome = new QTreeWidgetItem(TreeView1);
  std::int16_t number = 0;
  for (const RecordKind& kind : recordKinds()) {
    const std::int16_t view = number++;
    if (!kind.reachable) continue;
    QTreeWidgetItem* node = welcome;
    if (view != kWelcomeView)
      node = kind.isPage ? new QTreeWidgetItem(TreeView1) : new QTreeWidgetItem(welcome);
    const QString text = kind.node != nullptr ? kind.node : kind.caption;
    fillNode(node, text, withKeys(text, kind.shortcut), keyOf(view, 0),
             kind.isPage ? earth : paper);
    node->setExpanded(kind.isPage);
    for (const ViewFilter& filter : kind.filters) addFilter(node, view, filter, paper);
  }
}

QTreeWidgetItem* ShorcutsTree::nodeOf(const std::string& key) const {
  for (QTreeWidgetItemIterator node(TreeView1); *node != nullptr; ++node)
    if (keyOf(*node) == key) return *node;
  throw RuntimeError(ErrorNumber::elementNotFound);
}

void ShorcutsTree::nodeClick(QTreeWidgetItem* node) {
  const std::string key = keyOf(node);
  switchTo(node, toInt16(Val(Mid(key, 2, 2))), toInt16(Val(Right(key, 2))));
}

void ShorcutsTree::switchTo(QTreeWidgetItem* node, std::int16_t view, std::int16_t filter) {
  QTreeWidgetItem* const before = std::exchange(shown_, node);
  orPutBack([&] { MainWindow->CambiaAVista(view, filter); },
            [&] {
              shown_ = before;
              markShown();
            });
}

void ShorcutsTree::FuerzaNodeClick(std::int16_t Vista, std::int16_t Filtro) {
  QTreeWidgetItem* const node = nodeOf(keyOf(Vista, Filtro));
  TreeView1->setCurrentItem(node);
  switchTo(node, Vista, Filtro);
}

// A press that ended elsewhere was no click: the mark goes back to what is on show.
void ShorcutsTree::markShown() {
  if (shown_ != nullptr) TreeView1->setCurrentItem(shown_);
}

void ShorcutsTree::takeFont() { resize(scaledPixels(toPixels(kWidth)), height()); }

void ShorcutsTree::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) takeFont();
}

void ShorcutsTree::resizeEvent(QResizeEvent*) { TreeView1->setGeometry(rect()); }

// A node chosen by the keyboard counts as clicked.
bool ShorcutsTree::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  QTreeWidgetItem* const before = TreeView1->currentItem();
  const int key = static_cast<QKeyEvent*>(event)->key();
  TreeView1->removeEventFilter(this);
  QCoreApplication::sendEvent(TreeView1, event);
  TreeView1->installEventFilter(this);
  QTreeWidgetItem* const now = TreeView1->currentItem();
  const bool chosen = now != before || key == Qt::Key_Return || key == Qt::Key_Enter;
  if (now != nullptr && chosen) guarded([&] { nodeClick(now); });
  return true;
}

ShorcutsTree& frmShorcuts() {
  static QPointer<ShorcutsTree> form;
  if (!form) {
    form = new ShorcutsTree(MainWindow->clientArea());
    form->show();
  }
  return *form;
}

}  // namespace bw
