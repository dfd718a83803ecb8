#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/ListModel.h"
#include "records/RecordSet.h"
#include "review/OfficeSnapshot.h"

class QWidget;

namespace bw {

// What is chosen at a page's head.
struct PageChoice {
  enum class Kind {
    items,      // one of the items; its number from 0
    catalogue,  // "All", or a row of the catalogue; its code, 0 for all
    day,        // a day, asked for while the choice before stands at its last item
  };
  const char* label;
  const char* name;  // of the control
  Kind kind = Kind::items;
  std::span<const char* const> items{};
  std::string_view statement{};  // of the catalogue: Code, Description
};

// A number a choice, in their order: an item, a code, a day.
using Chosen = std::vector<std::int64_t>;

// What a page shows. A row of the leading list stands for those rows of the following one that have
// its number in the field that links them; 0 stands for them all.
struct PageContent {
  Rows leading;
  Rows following;    // unset: there is no other list
  std::string told;  // the sums, in a sentence
};

struct PageList {
  const char* name = nullptr;  // of the control; null: the page has no such list
  const char* caption = "";
  std::vector<ListColumn> columns{};
  const char* empty = "";  // what it says without rows
};

// What is printed: the rows on show, in their order.
struct PageSheet {
  const char* document;
  std::string title;
  std::string subtitles;
  RecordSetRef rows;
};

// What tells one page from another.
struct PageKind {
  std::string_view name;  // on the command line, and the section of its settings
  const char* caption;
  const char* about;
  std::span<const PageChoice> choices{};
  PageList leading{};
  PageList following{};
  const char* link = "Part";
  const char* document;
  const char* tickKey =
      nullptr;           // the leading list has ticks; the field that names them in settings
  bool hasBars = false;  // beside the leading list stand its rows as bars
  const char* buttonText = nullptr;  // a further button; true when the page is to be read again
  bool (*button)(QWidget* owner) = nullptr;
  PageContent (*read)(const Chosen& chosen) = nullptr;
  // Writes the document; unset: the list as it stands.
  void (*print)(const PageSheet& sheet) = nullptr;
  // The table that is saved for a row of the leading list; unset: the list as it stands.
  Rows (*table)(std::int64_t link) = nullptr;
};

extern const PageKind kBeforePostingPage;
extern const PageKind kRoundsPage;
extern const PageKind kDoublesPage;
extern const PageKind kLotsPage;
extern const PageKind kFiguresPage;

// In the order of their places in the window.
std::span<const PageKind* const> pageKinds();
// Null when there is none of that name.
const PageKind* pageOfName(std::string_view name);

// Whether something with ticks is on, as the user left it.
bool isTicked(std::string_view page, std::string_view key);

}  // namespace bw
