#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <functional>
#include <string>

#include "controls/DatePicker.h"
#include "controls/OptionButton.h"

class QHBoxLayout;
class QLabel;

namespace bw {

enum class PanelKind { dates, patient, insurance, doctor, lot };
inline constexpr std::array kPanelKinds{PanelKind::dates, PanelKind::patient, PanelKind::insurance,
                                        PanelKind::doctor, PanelKind::lot};

// The five panels above the list of charges, each with "All" and a second option. They enable
// their own controls; what follows from a choice is the view's.
class FilterPanels {
 public:
  struct Events {
    std::function<void(PanelKind, bool all)> chosen;  // an option came on
    std::function<void(PanelKind)> search;
    std::function<void()> go;
  };
  FilterPanels(QWidget* parent, Events events);

  QWidget* frame(PanelKind kind) const { return panel(kind).frame; }
  bool isAll(PanelKind kind) const { return panel(kind).all->isChecked(); }
  // Switches an option on by code; its handler runs if it was off.
  void chooseAll(PanelKind kind) { panel(kind).all->setChecked(true); }
  void chooseSelected(PanelKind kind) { panel(kind).selected->setChecked(true); }
  // Takes a choice back, when what follows from it was broken off: no event.
  void putBack(PanelKind kind, bool all);

  std::string text(PanelKind kind) const;
  void setText(PanelKind kind, const std::string& text);
  // What stands in an empty field, without being its text.
  void setHint(PanelKind kind, const std::string& hint);
  // Takes over the dates that are typed, where they filter. False when one is none, which its
  // hint then tells; the focus stays where it is.
  bool settleDates();
  DatePicker* first() const { return DTPicker1; }
  DatePicker* last() const { return DTPicker2; }

 private:
  struct Panel {
    QWidget* frame = nullptr;
    QLabel* label = nullptr;
    OptionButton* all = nullptr;
    OptionButton* selected = nullptr;
    QLineEdit* box = nullptr;
    QPushButton* button = nullptr;
  };
  struct PanelRow;

  const Panel& panel(PanelKind kind) const { return panels_[static_cast<std::size_t>(kind)]; }
  void build(PanelKind kind, const PanelRow& row, QWidget* parent);
  void buildDates(Panel& panel, QHBoxLayout* line);
  void enable(PanelKind kind, bool selected);

  Events events_;
  std::array<Panel, 5> panels_;
  DatePicker* DTPicker1 = nullptr;
  DatePicker* DTPicker2 = nullptr;
};

}  // namespace bw
