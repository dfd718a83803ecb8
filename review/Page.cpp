#include "review/Page.h"

#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QSplitter>
#include <QStandardPaths>
#include <QTimer>
#include <QVBoxLayout>

#include "controls/BusyCursor.h"
#include "controls/Dialog.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "files/Files.h"
#include "lists/Lists.h"
#include "lists/Settings.h"
#include "printing/ListReports.h"
#include "printing/PageSize.h"
#include "reports/ApoyoImpresion.h"
#include "review/BarChart.h"
#include "review/PageChoices.h"
#include "review/TableText.h"
#include "text/Conversions.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr std::int64_t kNoLink = -1;  // no row has it

std::string sectionOf(const PageKind& kind, const PageList& list) {
  return concat(kind.name, " ", list.name);
}

// What the program needs to find the record again: the account, or without one the name, and the
// day of care; of a lot its number.
std::string whatFindsIt(const RowStore& rows, std::uint32_t row) {
  const auto text = [&](std::string_view field) {
    const auto at = rows.find(field);
    return at ? textOrEmpty(rows.columns[*at].value(row)) : std::string();
  };
  std::string found = text("AccountNumber");
  if (Trim(found).empty()) found = text("Names");
  if (found.empty()) return text("PrintLot");
  const std::string day = text("ChargeRealDate");
  return day.empty() ? found : concat(found, " ", day);
}

}  // namespace

Page::Page(const PageKind& kind, QWidget* parent)
    : QWidget(parent), kind_(kind), choices_(new PageChoices(kind.choices, this)) {
  named(this, kind.leading.name, kind.caption);
  setObjectName(QString("page%1").arg(kind.leading.name));
  auto* column = new QVBoxLayout(this);
  auto* about = named(new QLabel(kind.about), "lblAbout", kind.about);
  about->setWordWrap(true);
  column->addWidget(about);
  column->addWidget(choices_);
  choices_->onChange = [this] { read(); };
  makeLists(column);
  makeFoot(column);
}

void Page::makeLists(QBoxLayout* column) {
  auto* splitter = new QSplitter(kind_.hasBars ? Qt::Horizontal : Qt::Vertical);
  splitter->setChildrenCollapsible(false);
  column->addWidget(splitter, 1);
  leading_ = makeList(kind_.leading, splitter);
  if (kind_.following.name != nullptr) {
    following_ = makeList(kind_.following, splitter);
    leading_.view->onChosen = [this] { follow(); };
    leading_.view->onOpen = [this] { following_.view->setFocus(); };
    splitter->setStretchFactor(1, 2);
  }
  if (kind_.hasBars) {
    splitter->addWidget(bars_ = new BarChart(splitter));
    splitter->setSizes({1, 1});  // halves
  }
  if (kind_.tickKey != nullptr) {
    leading_.view->onColumnClick = nullptr;
    leading_.view->onItemCheck = [this](int row, bool on) { tick(row, on); };
  }
}

Page::Shown Page::makeList(const PageList& list, QSplitter* splitter) {
  auto* view = named(new ListView(list.columns, {.checkBoxes = kind_.tickKey != nullptr &&
                                                               &list == &kind_.leading}),
                     list.name, list.caption);
  view->setEmptyText(list.empty);
  splitter->addWidget(view);
  ColumnLayoutRestore(*view, sectionOf(kind_, list));
  Shown& shown = &list == &kind_.leading ? leading_ : following_;
  view->onOpen = [this, &shown] { copyRow(shown); };
  view->onColumnClick = [this, &shown](int column) {
    if (!shown.records) return;
    sortByColumn(shown.records, *shown.view,
                 concat(" ", shown.list->columns[static_cast<std::size_t>(column)].key, " "));
    showBars();
  };
  return {&list, view};
}

void Page::makeFoot(QBoxLayout* column) {
  auto* foot = new QHBoxLayout;
  column->addLayout(foot);
  told_ = named(new QLabel, "lblTold", "Sums");
  told_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  told_->setWordWrap(true);
  foot->addWidget(told_, 1);
  const auto add = [&](const char* name, const QString& text, const char* tip, auto handler) {
    QPushButton* button = makeButton(name, text, this, handler);
    button->setToolTip(tip);
    foot->addWidget(button);
  };
  if (kind_.button != nullptr)
    add("btnMore", kind_.buttonText, "", [this] {
      if (kind_.button(window())) read();
    });
  add("btnRefresh", "&Refresh", "F5", [this] { read(); });
  add("btnTable", "Save &table...", "Ctrl+E", [this] { saveTable(); });
  add("btnPrint", "&Print", "Ctrl+P", [this] { print(); });
}

void Page::readOnce() {
  if (!wasRead_) read();
}

// What the database refuses is told, and what was on show stays.
void Page::read() {
  try {
    readOffice();
  } catch (const RuntimeError& error) {
    MsgBox(error.text());
  }
}

void Page::readOffice() {
  const BusyCursor busy;
  choices_->readCatalogues();
  const PageContent content = kind_.read(choices_->chosen());
  wasRead_ = true;
  if (following_.view != nullptr) fill(following_, content.following);
  const std::int64_t link = leading_.records ? chosenLink() : 0;
  fill(leading_, content.leading);
  selectLink(link);
  if (following_.view != nullptr) follow();
  told_->setText(toQt(content.told));
  showBars();
}

void Page::showBars() {
  if (bars_ != nullptr) bars_->setRows(leading_.records->rows(), leading_.records->view());
}

// The order that the user chose stays.
void Page::fill(Shown& shown, const Rows& rows) {
  const std::string sort = shown.records ? shown.records->Sort() : std::string();
  // Read-only, so that the rows stay as they are.
  shown.records = RecordSetRef(
      std::make_shared<RecordSet>(std::const_pointer_cast<RowStore>(rows), LockType::readOnly));
  shown.records->setSort(sort);
  ListFill(*shown.view, shown.records);
}

std::int64_t Page::chosenLink() const {
  const auto row = leading_.view->selectedItem();
  if (!row) return 0;
  moveToRow(leading_.records, *leading_.view, *row);
  return leading_.records->integer(kind_.link);
}

// Another reading may have other rows: then the first one stays selected.
void Page::selectLink(std::int64_t link) {
  if (following_.view == nullptr || leading_.view->count() == 0) return;
  leading_.records->MoveFirst();
  leading_.records->Find(concat(kind_.link, " = ", link));
  if (!leading_.records->EOF_())
    leading_.view->setSelected(leading_.view->rowAt(leading_.records->AbsolutePosition()), true);
}

void Page::follow() {
  const std::int64_t link = leading_.view->count() == 0 ? kNoLink : chosenLink();
  following_.records->setFilter(link == 0 ? std::string() : concat(kind_.link, " = ", link));
  ListFill(*following_.view, following_.records);
}

// The first row, which stands for all, turns all of them.
void Page::tick(int row, bool on) {
  for (int other = 0; other < leading_.view->count(); ++other) {
    moveToRow(leading_.records, *leading_.view, other);
    const std::string key = leading_.records->textOrEmpty(kind_.tickKey);
    if (!key.empty() && (row == 0 || other == row))
      SaveSetting(kApplicationTitle, std::string(kind_.name), key, on ? "on" : "off");
  }
  // Behind the event, which still uses the list's rows.
  QTimer::singleShot(0, this, [this] { guarded([this] { read(); }); });
}

void Page::copyRow(const Shown& shown) {
  const auto row = shown.view->selectedItem();
  if (!row) return;
  const std::uint32_t stored = shown.records->view()[static_cast<std::size_t>(*row)];
  const std::string text = whatFindsIt(*shown.records->rows(), stored);
  if (text.empty()) return;
  QGuiApplication::clipboard()->setText(toQt(text));
  if (onTold) onTold(toQt(concat("Copied: ", text)));
}

bool Page::print() {
  readOnce();
  const Shown& shown = printed();
  if (shown.view->count() == 0) {
    MsgBox(concat("There is nothing to print. ", shown.list->empty));
    return false;
  }
  readPageSize();
  const PageSheet sheet{kind_.document, concat("Review: ", kind_.caption), choices_->words(),
                        shown.records};
  if (kind_.print != nullptr) {
    kind_.print(sheet);
    return true;
  }
  const ColumnLists columns = columnLists(*shown.view);
  ListReportWrite(sheet.rows, documentPath(sheet.document), PageWidthInches, PageHeightInches,
                  ReportHeaderLine, sheet.title, sheet.subtitles, columns.heads, columns.fields);
  return true;
}

std::string Page::table() {
  if (kind_.table != nullptr) {
    const std::int64_t link = chosenLink();
    if (link != 0) return tableText(*kind_.table(link));
  }
  const Shown& shown = printed();
  return tableText(*shown.records->rows(), shown.records->view(), shown.list->columns);
}

std::string Page::tableName() {
  if (kind_.table != nullptr)
    if (const std::int64_t link = chosenLink(); link != 0) return concat("Lot ", link, ".csv");
  return concat(kind_.caption, " ", isoDate(today()), ".csv");
}

void Page::saveTable() {
  readOnce();
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const QString path = QFileDialog::getSaveFileName(
      this, "Save table", folder + '/' + toQt(tableName()), "Tables (*.csv)");
  if (path.isEmpty()) return;
  try {
    using enum std::filesystem::perms;
    writeFileWhole(fromQt(path), table(), owner_read | owner_write);
  } catch (const RuntimeError& error) {
    return MsgBox(error.text());
  }
  if (onTold) onTold("Saved: " + path);
}

void Page::storeLayout() const {
  for (const Shown* shown : {&leading_, &following_})
    if (shown->view != nullptr) ColumnLayoutSave(*shown->view, sectionOf(kind_, *shown->list));
}

void Page::switchLists() {
  ListView* other =
      following_.view != nullptr && leading_.view->hasFocus() ? following_.view : leading_.view;
  other->setFocus();
}

void Page::takeFocus() { leading_.view->setFocus(); }

}  // namespace bw
