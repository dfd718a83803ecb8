#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "review/PageKind.h"

namespace bw {

class ComboBox;
class DatePicker;

// The choices at a page's head.
class PageChoices : public QWidget {
 public:
  PageChoices(std::span<const PageChoice> choices, QWidget* parent);

  std::function<void()> onChange;

  // Reads the catalogues; what was chosen stays chosen where it is still there.
  void readCatalogues();
  Chosen chosen() const;
  // "Insurance: Mutual; Care: One day; ", with a semicolon behind each; what is not asked for is
  // left out.
  std::string words() const;

 private:
  struct Control {
    const PageChoice* choice;
    ComboBox* box = nullptr;
    DatePicker* day = nullptr;
    std::vector<std::int64_t> codes{};  // of the catalogue's items
  };
  void add(const PageChoice& choice, int place);
  void addDay(Control& control);
  void changed();
  void enableDays();

  std::vector<Control> controls_;
  Chosen before_;
};

}  // namespace bw
