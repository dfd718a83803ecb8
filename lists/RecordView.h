#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "controls/Dialog.h"
#include "controls/ListView.h"
#include "lists/View.h"
#include "printing/ListReports.h"
#include "records/RecordSet.h"

namespace bw {

// A filter that a view offers besides "All". Its number is that of its entry in Current View.
struct ViewFilter {
  enum class In { menuAndTree, menu, tree };

  std::int16_t number;
  const char* clause = "";     // of a view of records: behind the statement of filter 0
  const char* node = nullptr;  // caption in the tree, where it is another than in the menu
  In in = In::menuAndTree;
};

// What tells one view of records from another.
struct RecordViewRow {
  enum class Token { padded, bare };  // how a column's key stands in the sort text
  enum class Filters { used, ignored };

  const char* name;
  const char* caption;
  const char* several;    // what its records are called in a sentence
  const char* statement;  // of filter 0
  Filters filtering = Filters::used;
  const char* firstSort;
  Token token;
  const char* key;  // field
  std::variant<std::int16_t*, std::int32_t*> current;
  const char* deleteQuestion;
  int (*remove)(std::string& message);  // the record of `current`
  const Form& (*editor)();
  const char* section;             // of the settings
  const char* filterSection = "";  // where the filter is stored, if elsewhere; null: nowhere
  ListReport report;
  std::vector<ListColumn> columns;
};

// The list of one kind of record, under the main window's filter.
class RecordView : public View {
 public:
  RecordView(const RecordViewRow& row, std::span<const ViewFilter> filters, QWidget* parent);

  void Refresca();
  void Insertado();
  void Eliminar();

  // Unset when the last Refresca failed.
  const RecordSetRef& records() const { return ViewRecords; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void load();
  void close();
  std::string statement() const;
  void columnClick(int column);
  void takeKey(int row);
  void openSelected();

  const RecordViewRow& row_;
  std::span<const ViewFilter> filters_;
  ListView* ListView1;
  std::int16_t CurrentFilter = 0;
  RecordSetRef ViewRecords;
};

}  // namespace bw
