#include "printing/PageSize.h"

#include <QGridLayout>
#include <QLabel>
#include <QPageLayout>
#include <QPrinterInfo>
#include <optional>
#include <utility>
#include <vector>

#include "controls/ComboBox.h"
#include "controls/Dialog.h"
#include "core/Principal.h"
#include "text/Conversions.h"

namespace bw {
namespace {

struct KnownPaper {
  const char* name;
  QPageSize::PageSizeId size;
};
constexpr KnownPaper kPapers[] = {{"Letter", QPageSize::Letter},
                                  {"Legal", QPageSize::Legal},
                                  {"Executive", QPageSize::Executive},
                                  {"Tabloid", QPageSize::Tabloid},
                                  {"A3", QPageSize::A3},
                                  {"A4", QPageSize::A4},
                                  {"A5", QPageSize::A5}};

struct Paper {
  QPageSize size;
  bool across = false;
};

std::optional<Paper>& chosenPaper() {
  static std::optional<Paper> paper;
  return paper;
}

// Nothing without a printer that tells of its paper.
std::optional<Paper> paperInForce() {
  if (chosenPaper()) return chosenPaper();
  const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
  const QPageSize size = printer.isNull() ? QPageSize() : printer.defaultPageSize();
  if (!size.isValid()) return std::nullopt;
  return Paper{size};
}

struct Inches {
  std::int32_t width;
  std::int32_t height;
};

Inches wholeInches(const Paper& paper) {
  const QSizeF size = paper.size.size(QPageSize::Inch);
  const Inches upright{toInt32(size.width()), toInt32(size.height())};
  return paper.across ? Inches{upright.height, upright.width} : upright;
}

// The paper alone: margins and printer are the viewer's, which prints.
class PageSetup : public Dialog {
 public:
  explicit PageSetup(QWidget* owner)
      : Dialog("frmPageSetup", "Page Setup", owner), paper_(new ComboBox), way_(new ComboBox),
        note_(new QLabel) {
    auto* grid = new QGridLayout(this);
    addField(grid, 0, 0, "&Paper:", paper_, "cmbPaper");
    addField(grid, 1, 0, "O&rientation:", way_, "cmbOrientation");
    note_->setObjectName("lblPageSize");
    grid->addWidget(note_, 2, 0, 1, 2);
    grid->addWidget(makeFoot(
                        {}, [this] { ok(); }, [this] { unload(); }),
                    3, 0, 1, 2);
    way_->setItems({"Portrait", "Landscape"});
    for (const KnownPaper& paper : kPapers) addPaper(paper.name, QPageSize(paper.size));
    paper_->onSelected = way_->onSelected = [this] { showSize(); };
  }

  void load() {
    const Paper inForce = paperInForce().value_or(Paper{QPageSize(QPageSize::Letter)});
    before_ = {indexOf(inForce.size), inForce.across ? 1 : 0};
    paper_->setCurrentIndex(before_.first);
    way_->setListIndex(before_.second);
  }

 private:
  void addPaper(const QString& name, const QPageSize& size) {
    paper_->addItem(name);
    sizes_.push_back(size);
  }

  // A paper that is not offered is a printer's own, and is offered then.
  int indexOf(const QPageSize& size) {
    for (std::size_t i = 0; i < sizes_.size(); ++i)
      if (sizes_[i].isEquivalentTo(size)) return static_cast<int>(i);
    addPaper(size.name(), size);
    return paper_->count() - 1;
  }

  std::pair<int, int> chosen() const { return {paper_->ListIndex(), way_->ListIndex()}; }

  Paper paper() const {
    return {sizes_[static_cast<std::size_t>(paper_->ListIndex())], way_->ListIndex() == 1};
  }

  void showSize() {
    const Inches inches = wholeInches(paper());
    note_->setText(QString("Lists and detailed reports are laid out on %1 by %2 inches.")
                       .arg(inches.width)
                       .arg(inches.height));
  }

  void ok() {
    if (chosen() != before_) {
      chosenPaper() = paper();
      readPageSize();
    }
    unload();
  }

  ComboBox* paper_;
  ComboBox* way_;
  std::vector<QPageSize> sizes_;  // of the papers
  QLabel* note_;
  std::pair<int, int> before_;
};

}  // namespace

void readPageSize() {
  const auto paper = paperInForce();
  const Inches inches = paper ? wholeInches(*paper) : Inches{8, 11};
  PageWidthInches = inches.width;
  PageHeightInches = inches.height;
}

void choosePageSize(QWidget* owner) { showModal<PageSetup>(owner); }

}  // namespace bw
