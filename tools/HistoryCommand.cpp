#include <ostream>

#include "engine/ChangeLog.h"
#include "engine/EngineMakers.h"
#include "engine/EngineTransaction.h"
#include "files/Files.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// A statement of the program, as far as the history asks about it.
class LoggedStatement {
 public:
  explicit LoggedStatement(std::string_view text) : text_(text) {}

  // The word behind INSERT INTO, UPDATE or DELETE FROM.
  std::string_view table() const {
    std::string_view rest = text_;
    std::string_view word = nextWord(rest);
    if (!sameName(word, "UPDATE")) word = nextWord(rest);
    return nextWord(rest);
  }

  // Whether it names the patient in a condition, an assignment, or as the first value of a row.
  bool concerns(std::int64_t patient) const {
    constexpr std::string_view kPatient = "PatientId";
    for (std::size_t at = text_.find(kPatient); at != std::string_view::npos;
         at = text_.find(kPatient, at + 1)) {
      std::string_view rest = Trim(text_.substr(at + kPatient.size()));
      if (rest.starts_with('=') && startsWithNumber(rest.substr(1), patient)) return true;
    }
    constexpr std::string_view kRow = "(PatientId, ";
    constexpr std::string_view kValues = " VALUES (";
    const std::size_t values = text_.find(kValues);
    return values != std::string_view::npos && text_.substr(0, values).find(kRow) != text_.npos &&
           startsWithNumber(text_.substr(values + kValues.size()), patient);
  }

 private:
  static std::string_view nextWord(std::string_view& text) {
    text = Trim(text);
    const std::size_t end = std::min(text.find_first_of(" ("), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end);
    return word;
  }

  static bool startsWithNumber(std::string_view text, std::int64_t number) {
    text = Trim(text);
    const std::string digits = std::to_string(number);
    return text.starts_with(digits) &&
           (text.size() == digits.size() || !isDigit(text[digits.size()]));
  }

  std::string_view text_;
};

// Of the days from `from` to `to`.
std::string dayCondition(const HistoryFilter& filter) {
  std::string condition = "Number > 0";
  if (filter.from) condition += concat(" AND Moment >= '", isoDate(*filter.from), "'");
  if (filter.to) condition += concat(" AND Moment < '", isoDate(Date{filter.to->day + 1}), "'");
  return condition;
}

bool isAskedFor(const HistoryFilter& filter, std::string_view user, std::string_view statement) {
  const LoggedStatement logged(statement);
  return (filter.user.empty() || user == filter.user) &&
         (filter.table.empty() || sameName(logged.table(), filter.table)) &&
         (!filter.patient || logged.concerns(*filter.patient));
}

// Calls `tell` with the text and the number of each line that is asked for, oldest first.
template <class Tell>
void forEachLine(Engine& engine, const HistoryFilter& filter, Tell tell) {
  if (!engine.hasTable(kChangeLogTable))
    throw Refused("This database has no log of changes. `changelog on` begins one.");
  const std::shared_ptr<RowStore> rows =
      engine.read(concat("SELECT Moment, UserName, Station, RowCount, Statement, Number FROM ",
                         kChangeLogTable, " WHERE ", dayCondition(filter), " ORDER BY Number"));
  const auto cell = [&rows](std::size_t column, std::size_t row) {
    return rows->columns[column].value(row);
  };
  for (std::size_t row = 0; row < rows->rowCount(); ++row) {
    const std::string user = textOrEmpty(cell(1, row));
    const std::string statement = textOrEmpty(cell(4, row));
    if (isAskedFor(filter, user, statement))
      tell(concat(isoDateTime(std::get<DateTime>(cell(0, row))), "  ", user, " at ",
                  textOrEmpty(cell(2, row)), ", rows: ", textOrEmpty(cell(3, row)), "\n  ",
                  statement, "\n"),
           rows->columns[5].raw(row));
  }
}

// The lines of a log on their way into a file.
class LinesTakenOut {
 public:
  LinesTakenOut(Engine& engine, const HistoryFilter& filter) : engine_(engine) {
    forEachLine(engine, filter, [this](const std::string& line, std::int64_t number) {
      text_ += line;
      numbers_.push_back(number);
    });
  }

  const std::string& text() const noexcept { return text_; }
  std::size_t count() const noexcept { return numbers_.size(); }

  // Those that were read and no others: on a server some may have been added since.
  void remove() const {
    std::int64_t removed = 0;
    for (auto first = numbers_.begin(); first != numbers_.end();) {
      auto last = first;
      while (last + 1 != numbers_.end() && *(last + 1) == *last + 1) ++last;
      removed += engine_.execute(concat("DELETE FROM ", kChangeLogTable, " WHERE Number BETWEEN ",
                                        *first, " AND ", *last));
      first = last + 1;
    }
    if (removed != std::ssize(numbers_))
      throw Refused(
          "Somebody else has just taken lines out of the log. Nothing was changed: try again.");
  }

 private:
  Engine& engine_;
  std::string text_;
  std::vector<std::int64_t> numbers_;  // rising
};

}  // namespace

Exit printHistory(const fs::path& path, const HistoryFilter& filter, std::ostream& out) {
  bool found = false;
  forEachLine(*openEngine(path.string()), filter, [&](const std::string& line, std::int64_t) {
    out << line;
    found = true;
  });
  if (!found) out << "No change is found.\n";
  return Exit::done;
}

Exit pruneHistory(const fs::path& path, Date until, const fs::path& file, std::ostream& out) {
  using enum fs::perms;
  if (fs::exists(fs::symlink_status(file)))
    throw Refused("There is a file already, and it is left as it is: " + file.string());
  const std::unique_ptr<Engine> engine = openEngine(path.string());
  EngineTransaction transaction(*engine, TransactionKind::writing);
  const LinesTakenOut lines(*engine, {.to = Date{until.day - 1}});
  writeFileWhole(file, lines.text(), owner_read | owner_write);
  std::error_code ignored;
  try {
    lines.remove();
    transaction.commit();
  } catch (const DatabaseRefusal& refusal) {
    // Unless they may be gone from the log.
    if (refusal.why() != Refusal::unconfirmed && refusal.why() != Refusal::unknown)
      fs::remove(file, ignored);
    throw;
  } catch (const Refused&) {
    fs::remove(file, ignored);
    throw;
  }
  out << "Took " << lines.count() << " lines out of the log. They stand in " << file.string()
      << ".\n";
  return Exit::done;
}

}  // namespace bw
