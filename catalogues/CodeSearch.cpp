#include "catalogues/CodeSearch.h"

#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>
#include <vector>

#include "controls/ElidedLine.h"
#include "controls/ListView.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "text/Text.h"
#include "text/TextSearch.h"

namespace bw {
namespace {

constexpr int kPage = 10;  // rows

enum BookColumn : std::size_t { kCode, kTitle, kShortTitle, kUse };

// All rows of a book, searched by words in any order.
class BookSearch {
 public:
  void take(std::shared_ptr<const RowStore> rows) {
    rows_ = std::move(rows);
    for (std::size_t row = 0; row < rows_->rowCount(); ++row) {
      std::string code = text(row, kCode);
      std::string text = code + " ";
      code.erase(std::remove(code.begin(), code.end(), '.'), code.end());
      texts_.add(text += code + " " + this->text(row, kTitle));
    }
  }

  const std::shared_ptr<const RowStore>& rows() const noexcept { return rows_; }
  std::string text(std::size_t row, BookColumn column) const {
    return textOrEmpty(rows_->columns[column].value(row));
  }

  // Those in which a word begins with each of the words, otherwise those that have them inside.
  std::vector<std::uint32_t> search(const std::string& typed) {
    std::vector<Hit> worst(rows_->rowCount(), Hit::atStart);
    for (const std::string& word : wordsOf(searchText(typed))) {
      texts_.search(word);
      for (std::size_t row = 0; row < worst.size(); ++row)
        worst[row] = std::min(worst[row], texts_.hit(row));
    }
    std::vector<std::uint32_t> found = rowsOf(worst, Hit::atWord);
    return found.empty() ? rowsOf(worst, Hit::inside) : found;
  }

 private:
  static std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words;
    for (std::size_t end = 0; !(text = Trim(text)).empty(); text.remove_prefix(end)) {
      end = std::min(text.find(' '), text.size());
      words.emplace_back(text.substr(0, end));
    }
    return words;
  }

  static std::vector<std::uint32_t> rowsOf(const std::vector<Hit>& hits, Hit wanted) {
    std::vector<std::uint32_t> rows;
    for (std::uint32_t row = 0; row < hits.size(); ++row)
      if (hits[row] >= wanted) rows.push_back(row);
    return rows;
  }

  std::shared_ptr<const RowStore> rows_;
  TextSearch texts_;
};

class PickCodeDialog : public Dialog {
 public:
  explicit PickCodeDialog(QWidget* owner);
  void load();

 private:
  void show(const std::string& typed);
  void moveBy(int rows);  // while words are typed
  void tellSelected();
  void ok();

  BookSearch search_;
  std::vector<std::uint32_t> shown_;
  QLineEdit* TxtWords;
  ListView* ListView1;
  ElidedLine* taken_;
};

PickCodeDialog::PickCodeDialog(QWidget* owner)
    : Dialog("frmPickCode", toQt(bookName(frmPickCode().book)), owner),
      TxtWords(new QLineEdit(this)),
      ListView1(new ListView(
          {{"Code", "Code", 1200}, {"Title", "Title", 6600}, {"Use", "Use", 900}}, {}, this)),
      taken_(new ElidedLine(this)) {
  auto* column = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  addField(grid, 0, 0, "&Words or code:", TxtWords, "TxtWords");
  column->addLayout(grid);
  named(ListView1, "ListView1", windowTitle());
  ListView1->stretchColumn(kTitle);
  ListView1->setEmptyText("No code has these words. Try fewer, or their beginnings.");
  ListView1->onOpen = [this] { ok(); };
  onEvent(ListView1->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { tellSelected(); });
  column->addWidget(ListView1, 1);
  taken_->setObjectName("LblTaken");
  column->addWidget(taken_);
  column->addWidget(makeFoot(
      {}, [this] { ok(); }, [this] { unload(); }));
  for (const auto& [key, rows] : {std::pair{Qt::Key_Up, -1},
                                  {Qt::Key_Down, 1},
                                  {Qt::Key_PageUp, -kPage},
                                  {Qt::Key_PageDown, kPage}})
    onEvent(new QShortcut(QKeySequence(key), TxtWords, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, [this, rows = rows] { moveBy(rows); });
  setSize(720, 480);
}

void PickCodeDialog::load() {
  PickCodeForm& form = frmPickCode();
  form.picked.reset();
  search_.take(readCodeBook(codeBooksOf(DatabasePath), form.book));
  TxtWords->setText(toQt(form.words));
  TxtWords->selectAll();
  show(form.words);
  onEvent(TxtWords, &QLineEdit::textChanged, this,
          [this](const QString& typed) { show(fromQt(typed)); });
}

void PickCodeDialog::show(const std::string& typed) {
  shown_ = search_.search(typed);
  ListView1->fill(search_.rows(), shown_);
  if (!shown_.empty() && !Trim(typed).empty()) ListView1->setSelected(0, true);
  tellSelected();
}

void PickCodeDialog::moveBy(int rows) {
  if (shown_.empty()) return;
  const int row = std::clamp(ListView1->selectedItem().value_or(-1) + rows, 0,
                             static_cast<int>(shown_.size()) - 1);
  ListView1->setSelected(row, true);
  ListView1->ensureVisible(row);
}

void PickCodeDialog::tellSelected() {
  const auto selected = ListView1->selectedItem();
  taken_->setText(selected ? "Ok takes: " + ListView1->words(*selected) : "Nothing is selected");
}

void PickCodeDialog::ok() {
  const auto selected = ListView1->selectedItem();
  if (!selected) return MsgBox("Select a code first");
  const std::uint32_t row = shown_[static_cast<std::size_t>(*selected)];
  frmPickCode().picked = BookCode{.code = search_.text(row, kCode),
                                  .billable = search_.text(row, kUse).empty(),
                                  .title = search_.text(row, kTitle),
                                  .shortTitle = search_.text(row, kShortTitle)};
  unload();
}

}  // namespace

PickCodeForm& frmPickCode() {
  static PickCodeForm form(showModal<PickCodeDialog>);
  return form;
}

}  // namespace bw
