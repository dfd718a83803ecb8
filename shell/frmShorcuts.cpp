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

namespace bw {
namespace {

constexpr int kWidth = 2865;      // twips
constexpr int kIndentation = 12;  // pixels: the longest filter's name should be read whole

struct NodeRow {
  const char* key;
  const char* parent;  // "" for a root
  const char* text;
};

// Some captions differ from the menu's for the same filter; both are wanted.
// clang-format off
constexpr NodeRow kNodes[] = {
    {"K10.00", "", "Brantiwell"},
    {"K00.00", "K10.00", "Charges"},
    {"K00.04", "K00.00", "Ready"},
    {"K00.05", "K00.00", "Posted"},
    {"K00.13", "K00.00", "Archived"},
    {"K01.00", "K10.00", "Patients"},
    {"K01.02", "K01.00", "Admitted"},
    {"K01.03", "K01.00", "Not Admitted"},
    {"K01.01", "K01.00", "Incomplete"},
    {"K01.15", "K01.00", "Duplicated DOB"},
    {"K01.16", "K01.00", "Duplicated Names"},
    {"K01.17", "K01.00", "Duplicated Names+DOB"},
    {"K01.18", "K01.00", "Duplicated Accounts"},
    {"K02.00", "K10.00", "Doctors"},
    {"K02.01", "K02.00", "Incomplete"},
    {"K03.00", "K10.00", "Facilities"},
    {"K03.01", "K03.00", "Incomplete"},
    {"K04.00", "K10.00", "Diagnosis"},
    {"K04.01", "K04.00", "Incomplete"},
    {"K05.00", "K10.00", "Procedures"},
    {"K05.01", "K05.00", "Incomplete"},
    {"K06.00", "K10.00", "Insurances"},
    {"K06.01", "K06.00", "Incomplete"},
    {"K07.00", "K10.00", "E & M Concepts"},
    {"K07.06", "K07.00", "Hospitals"},
    {"K07.07", "K07.00", "Board & Care"},
    {"K07.08", "K07.00", "Extended Care Facilities"},
    {"K07.09", "K07.00", "Home"},
    {"K07.14", "K07.00", "Office"},
    {"K07.01", "K07.00", "Incomplete"},
    {"K08.00", "K10.00", "History Items"},
    {"K08.10", "K08.00", "Allergies"},
    {"K08.11", "K08.00", "Past Medical"},
    {"K08.12", "K08.00", "Past Surgical"},
    {"K09.00", "K10.00", "Diagnosis Groups"},
    {"K12.00", "", "Fenmoor Systems on the Web"},
};
// clang-format on

std::string keyOf(const QTreeWidgetItem* node) {
  return fromQt(node->data(0, Qt::UserRole).toString());
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

void ShorcutsTree::build() {
  const QIcon paper = icon("Paper");
  const QIcon earth = icon("Earth");
  for (const NodeRow& row : kNodes) {
    const bool root = *row.parent == '\0';
    auto* node = root ? new QTreeWidgetItem(TreeView1) : new QTreeWidgetItem(nodeOf(row.parent));
    node->setText(0, row.text);
    node->setToolTip(0, row.text);  // the pane is narrow
    node->setData(0, Qt::UserRole, QString(row.key));
    node->setIcon(0, root ? earth : paper);
    if (root) node->setExpanded(true);
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
  TreeView1->setCurrentItem(nodeOf(concat("K", zeroFilled(Vista, 2), ".", zeroFilled(Filtro, 2))));
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
