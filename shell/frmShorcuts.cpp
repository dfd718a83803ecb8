#include "shell/frmShorcuts.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>

#include "controls/Dialog.h"
#include "controls/EventGuard.h"
#include "controls/Icons.h"
#include "controls/QtText.h"
#include "controls/Twips.h"
#include "core/Principal.h"
#include "lists/MainFrame.h"
#include "platform/Conversions.h"
#include "platform/Formats.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "shell/RecordKinds.h"

namespace bw {
namespace {

constexpr int kWidth = 2865;      // twips
constexpr int kIndentation = 12;  // pixels: the longest filter's name should be read whole

std::string keyOf(std::int16_t view, std::int16_t filter) {
  return concat("K", zeroFilled(view, 2), ".", zeroFilled(filter, 2));
}

std::string keyOf(const QTreeWidgetItem* node) {
  return fromQt(node->data(0, Qt::UserRole).toString());
}

void fillNode(QTreeWidgetItem* node, const QString& text, const std::string& key,
              const QIcon& icon) {
  node->setText(0, text);
  node->setToolTip(0, text);  // the pane is narrow
  node->setData(0, Qt::UserRole, toQt(key));
  node->setIcon(0, icon);
}

void addFilter(QTreeWidgetItem* parent, std::int16_t view, const ViewFilter& filter,
               const QIcon& icon) {
  if (filter.in == ViewFilter::In::menu) return;
  auto* node = new QTreeWidgetItem(parent);
  const std::string_view caption = filterCaptions()[static_cast<std::size_t>(filter.number)];
  fillNode(node, filter.node != nullptr ? QString(filter.node) : toQt(caption),
           keyOf(view, filter.number), icon);
}

}  // namespace

ShorcutsTree::ShorcutsTree(QWidget* parent) : QWidget(parent), TreeView1(new QTreeWidget(this)) {
  setObjectName("frmShorcuts");
  setWindowTitle("Shortcuts");
  named(TreeView1, "TreeView1", "Shortcuts");
  TreeView1->setHeaderHidden(true);
  TreeView1->setUniformRowHeights(true);
  TreeView1->setIndentation(kIndentation);
  setFocusProxy(TreeView1);
  TreeView1->installEventFilter(this);
  resize(toPixels(kWidth), height());
  build();
  onEvent(TreeView1, &QTreeWidget::itemClicked, this,
          [](QTreeWidgetItem* node, int) { nodeClick(node); });
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
    fillNode(node, kind.node != nullptr ? kind.node : kind.caption, keyOf(view, 0),
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

void ShorcutsTree::nodeClick(const QTreeWidgetItem* node) {
  const std::string key = keyOf(node);
  MainWindow->CambiaAVista(toInt16(Val(Mid(key, 2, 2))), toInt16(Val(Right(key, 2))));
}

void ShorcutsTree::FuerzaNodeClick(std::int16_t Vista, std::int16_t Filtro) {
  TreeView1->setCurrentItem(nodeOf(keyOf(Vista, Filtro)));
  MainWindow->CambiaAVista(Vista, Filtro);
}

void ShorcutsTree::resizeEvent(QResizeEvent*) { TreeView1->setGeometry(rect()); }

// A node chosen by the keyboard counts as clicked.
bool ShorcutsTree::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const QTreeWidgetItem* before = TreeView1->currentItem();
  const int key = static_cast<QKeyEvent*>(event)->key();
  TreeView1->removeEventFilter(this);
  QCoreApplication::sendEvent(TreeView1, event);
  TreeView1->installEventFilter(this);
  const QTreeWidgetItem* now = TreeView1->currentItem();
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
