#include "tools/TableLoad.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "records/ColumnRules.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr int kMostRefusals = 50;
constexpr std::size_t kRowsBetweenProgress = 4096;

// A value as it stands in a statement.
std::string literal(const Value& value) {
  std::string text = cellText(value);
  if (std::holds_alternative<std::int64_t>(value)) return text;
  for (std::size_t i = text.find('\''); i != std::string::npos; i = text.find('\'', i + 2))
    text.insert(i, 1, '\'');
  return "'" + text + "'";
}

}  // namespace

void Refusals::add(std::string_view file, std::size_t line, std::string_view column,
                   std::string_view sentence) {
  out_ << file << ", line " << line << (column.empty() ? "" : ", ") << column << ": " << sentence
       << '\n';
  if (++count_ >= kMostRefusals) throw TooManyRefusals{count_};
}

TableLoad::TableLoad(Engine& engine, const SchemaTable& table, const std::filesystem::path& path,
                     const LoadOptions& options, Refusals& refusals)
    : engine_(engine), table_(table), name_(path.filename().string()), file_(path, options.code),
      replaces_(table.isLookup || (options.update && table.isCatalogue)), refusals_(refusals) {
  for (const SchemaColumn& column : table.key()) key_.emplace_back(column.name);
}

LoadCount TableLoad::run(std::ostream* progress) {
  if (!readHeader()) return {};
  if (replaces_) readStanding();
  insert_ = engine_.prepareInsert(std::string(table_.name), columns_, RowsAre::unknown);
  while (const std::vector<std::string_view>* cells = file_.next()) {
    if (readRow(*cells)) store();
    if (progress != nullptr && file_.line() % kRowsBetweenProgress == 0)
      *progress << '\r' << table_.name << ' ' << static_cast<int>(file_.done() * 100) << " %   "
                << std::flush;
  }
  return count_;
}

void TableLoad::refuse(const Reason& reason) {
  refusals_.add(name_, file_.line(), reason.column, reason.sentence);
}

// The file's columns; every one of the table's must be there, but for the working column.
bool TableLoad::readHeader() {
  const int before = refusals_.count();
  for (const std::string_view cell : file_.header()) {
    const auto column = std::ranges::find_if(
        table_.columns, [cell](const SchemaColumn& one) { return sameName(one.name, cell); });
    if (column == table_.columns.end()) {
      refuse({std::string(cell), "the table has no column of this name."});
      continue;
    }
    if (has(*column)) refuse({std::string(column->name), "the column stands twice."});
    columns_.emplace_back(column->name);
    types_.push_back(column->type);
  }
  for (const SchemaColumn& column : table_.columns)
    if (!column.working && !has(column))
      refuse({std::string(column.name), "the column is missing."});
  return refusals_.count() == before;
}

bool TableLoad::has(const SchemaColumn& column) const {
  return std::ranges::find(columns_, column.name) != columns_.end();
}

void TableLoad::readStanding() {
  standing_ = engine_.read(
      concat("SELECT ", joined(columns_, ", ", std::identity()), " FROM ", table_.name));
  values_.resize(columns_.size());
  for (std::size_t row = 0; row < standing_->rowCount(); ++row) {
    for (std::size_t i = 0; i < values_.size(); ++i) values_[i] = standing_->columns[i].value(row);
    standingRows_.emplace(settings(key_, " AND "), row);
  }
}

bool TableLoad::readRow(const std::vector<std::string_view>& cells) {
  if (cells.size() != columns_.size()) {
    refuse({"", concat("the row has ", cells.size(), " cells, the header ", columns_.size(), ".")});
    return false;
  }
  values_.clear();
  bool good = true;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    std::optional<Value> value = cellValue(types_[i], cells[i]);
    if (!value) {
      refuse({columns_[i], concat("\"", cells[i], "\" is not ", ruleOf(types_[i]).form, ".")});
      good = false;
    }
    values_.push_back(std::move(value).value_or(Value()));
  }
  return good;
}

void TableLoad::store() {
  try {
    const auto standing = standingRows_.empty() ? decltype(standingRows_)::node_type()
                                                : standingRows_.extract(settings(key_, " AND "));
    if (standing.empty()) {
      insert_->row(values_);
      ++count_.added;
    } else if (isSame(standing.mapped())) {
      ++count_.same;
    } else {
      engine_.execute(concat("UPDATE ", table_.name, " SET ", settings(columns_, ", "), " WHERE ",
                             settings(key_, " AND ")));
      ++count_.changed;
    }
  } catch (const DatabaseRefusal& refusal) {
    if (isOutage(refusal.why())) throw;
    refuse(reasonOf(refusal));
  }
}

bool TableLoad::isSame(std::size_t standingRow) const {
  for (std::size_t i = 0; i < values_.size(); ++i)
    if (values_[i] != standing_->columns[i].value(standingRow)) return false;
  return true;
}

// "PatientId = 7, Names = 'Ada'"
std::string TableLoad::settings(const std::vector<std::string>& columns,
                                std::string_view separator) const {
  return joined(columns, separator, [this](const std::string& column) {
    return concat(column, " = ", literal(valueOf(column)));
  });
}

const Value& TableLoad::valueOf(std::string_view column) const {
  const auto found = std::ranges::find(columns_, column);
  return values_[static_cast<std::size_t>(found - columns_.begin())];
}

// The refusal's sentence, with the column that it is about.
TableLoad::Reason TableLoad::reasonOf(const DatabaseRefusal& refusal) {
  const std::string sentence = refusal.text();
  if (!refusal.column().empty()) return {refusal.column(), sentence};
  if (refusal.why() == Refusal::duplicateKey) return {listOf(table_.key()), sentence};
  for (const SchemaReference& reference : referencesOf(table_))
    if (isAstray(reference))
      return {listOf(reference.columns),
              concat("there is no such row in ", reference.parent->name, ".")};
  return {"", sentence};
}

bool TableLoad::isAstray(const SchemaReference& reference) {
  std::string condition;
  for (std::size_t i = 0; i < reference.columns.size(); ++i) {
    const Value& value = valueOf(reference.columns[i].name);
    if (reference.mayNameNone() && value == Value(std::int64_t{0})) return false;
    condition +=
        concat(i == 0 ? "" : " AND ", reference.parent->columns[i].name, " = ", literal(value));
  }
  return engine_.read(concat("SELECT 1 FROM ", reference.parent->name, " WHERE ", condition))
             ->rowCount() == 0;
}

}  // namespace bw
