#include "printing/PageSize.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPageLayout>
#include <QPrinterInfo>
#include <array>
#include <optional>

#include "controls/Dialog.h"
#include "core/Principal.h"
#include "platform/Conversions.h"

namespace bw {
namespace {

constexpr std::array kPapers = {QPageSize::Letter,  QPageSize::Legal, QPageSize::Executive,
                                QPageSize::Tabloid, QPageSize::A3,    QPageSize::A4,
                                QPageSize::A5};

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
    way_->addItems({"Upright", "Across"});
    for (const QPageSize::PageSizeId paper : kPapers) addPaper(QPageSize(paper));
    for (QComboBox* box : {paper_, way_})
      onEvent(box, &QComboBox::currentIndexChanged, this, [this] { showSize(); });
  }

  void load() {
    before_ = paperInForce().value_or(Paper{QPageSize(QPageSize::Letter)});
    const QString name = before_.size.name();
    if (paper_->findText(name) < 0) addPaper(before_.size);
    paper_->setCurrentIndex(paper_->findText(name));
    way_->setCurrentIndex(before_.across ? 1 : 0);
    showSize();
  }

 private:
  void addPaper(const QPageSize& size) { paper_->addItem(size.name(), QVariant::fromValue(size)); }

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
    const Paper chosen = paper();
    const bool same = chosen.size == before_.size && chosen.across == before_.across;
    if (!same) {
      chosenPaper() = chosen;
      readPageSize();
    }
    unload();
  }

  QComboBox* paper_;
  QComboBox* way_;
  QLabel* note_;
  Paper before_;
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
