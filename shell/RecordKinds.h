#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "lists/Filters.h"
#include "lists/RecordView.h"

namespace bw {

// The kinds of records, and the pages beside them: a row a view of the main window. A view's number
// is the place of its row, the index of its Go To and New entries and the first two digits of a
// tree key; a filter's number is the index of its Current View entry and the last two.

enum class ToolbarGroup { none, charges, patients, records, browser };

// The entries of the Actions menu in front of the New ones.
enum Action { kPost, kAdmit, kDischarge };

struct RecordKind {
  const char* caption;              // of the Go To entry
  const char* node = nullptr;       // caption in the tree, where it is another
  const char* shortcut = "";        // the keys that bring it on show
  bool isPage = false;              // a root of the tree; kinds stand under the welcome page
  bool reachable = true;            // by tree and Go To
  View& (*view)() = nullptr;        // made at the first use; none: that of `records`
  std::vector<ViewFilter> filters;  // in the order of the tree
  bool filterMenu = true;           // whether the view shows the Current View menu
  ToolbarGroup group = ToolbarGroup::records;
  std::vector<Action> actions;
  const char* newName = nullptr;         // of the entry of the button New; none: nothing to make
  const char* newButton = nullptr;       // its caption
  const char* newEntry = nullptr;        // caption in the Actions menu, where it is another
  void (*openNew)() = nullptr;           // none: the editor of `records` on a new record
  std::optional<RecordViewRow> records;  // of a catalogue
};

inline constexpr std::int16_t kWelcomeView = 10;

std::span<const RecordKind> recordKinds();

// Any number outside the table is treated like the welcome page.
const RecordKind& recordKind(std::int16_t view);

// The keys that choose a filter of the kind: Alt and the number of its entry in Current View; what
// stands in the tree alone counts behind those. Without any "".
std::string filterKeys(const RecordKind& kind, std::int16_t filter);

View& viewOf(const RecordKind& kind);

// The view of a catalogue.
RecordView& recordView(const RecordKind& kind);

// Opens the kind's editor on a new record. For a page nothing happens.
void openNew(const RecordKind& kind);

}  // namespace bw
