#include "printing/PageSize.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPageLayout>
#include <QPrinterInfo>
#include <optional>
#include <utility>

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
      : Dialog("frmPageSetup", "Page Setup", owner), paper_(new QComboBox), way_(new QComboBox),
        note_(new QLabel) {
    auto* grid = new QGridLayout(this);
    addField(grid, 0, 0, "&Paper:", paper_, "cmbPaper");
    addField(grid, 1, 0, "O&rientation:", way_, "cmbOrientation");
    note_->setObjectName("lblPageSize");
    grid->addWidget(note_, 2, 0, 1, 2);
    grid->addWidget(makeFoot(
                        {}, [this] { ok(); }, [this] { unload(); }),
                    3, 0, 1, 2);
    way_->addItems({"Portrait", "Landscape"});
    for (const KnownPaper& paper : kPapers) addPaper(paper.name, QPageSize(paper.size));
    for (QComboBox* box : {paper_, way_})
      onEvent(box, &QComboBox::currentIndexChanged, this, [this] { showSize(); });
  }

  void load() {
    const Paper inForce = paperInForce().value_or(Paper{QPageSize(QPageSize::Letter)});
    before_ = {indexOf(inForce.size), inForce.across ? 1 : 0};
    paper_->setCurrentIndex(before_.first);
    way_->setCurrentIndex(before_.second);
    showSize();
  }

 private:
  void addPaper(const QString& name, const QPageSize& size) {
    paper_->addItem(name, QVariant::fromValue(size));
  }

  // A paper that is not offered is a printer's own, and is offered then.
  int indexOf(const QPageSize& size) {
    for (int i = 0; i < paper_->count(); ++i)
      if (paper_->itemData(i).value<QPageSize>().isEquivalentTo(size)) return i;
    addPaper(size.name(), size);
    return paper_->count() - 1;
  }

  std::pair<int, int> chosen() const { return {paper_->currentIndex(), way_->currentIndex()}; }

  Paper paper() const {
    return {paper_->currentData().value<QPageSize>(), way_->currentIndex() == 1};
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

  QComboBox* paper_;
  QComboBox* way_;
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
