#include <algorithm>
#include <optional>
#include <ostream>
#include <vector>

#include "data/CodeBooks.h"
#include "text/Text.h"
#include "tools/Commands.h"
#include "tools/Registered.h"
#include "tools/TableFile.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(std::string_view name, std::size_t line, std::string_view sentence) {
  throw Refused(concat(name, ", line ", line, ": ", sentence, " Nothing was imported."));
}

// A title as it stands on one line: whatever parts words is one blank.
std::string titleOf(std::string_view text) {
  std::string title;
  for (const char c : text)
    if (static_cast<unsigned char>(c) > ' ')
      title += c;
    else if (!title.empty() && title.back() != ' ')
      title += ' ';
  if (title.ends_with(' ')) title.pop_back();
  return title;
}

// A code that stands at its place, or is refused.
std::string codeAt(CodeBook book, std::string_view cell, std::string_view name, std::size_t line) {
  const std::string_view code = Trim(cell);
  if (std::string spelled = bookSpelling(book, code); !spelled.empty()) return spelled;
  refuse(name, line, concat("\"", code, "\" is no code of ", bookName(book), "."));
}

// The layout with fixed columns: order number, code, whether it is billable, short and long title.
constexpr std::ptrdiff_t kOrderSize = 5;
constexpr std::ptrdiff_t kCodeAt = 7;
constexpr std::ptrdiff_t kCodeSize = 7;
constexpr std::ptrdiff_t kFlagAt = 15;
constexpr std::ptrdiff_t kShortAt = 17;
constexpr std::ptrdiff_t kShortSize = 60;
constexpr std::ptrdiff_t kLongAt = 78;

bool hasOrderNumber(std::string_view line) {
  return line.size() > kOrderSize && line[kOrderSize] == ' ' &&
         std::ranges::all_of(line.substr(0, kOrderSize), isDigit);
}

std::vector<BookCode> orderedCodes(std::string_view name, std::string_view text) {
  std::vector<BookCode> codes;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (titleOf(line).empty()) continue;
    const std::string flag = Mid(line, kFlagAt, 1);
    if (!hasOrderNumber(line) || (flag != "0" && flag != "1"))
      refuse(name, number, "this is not laid out as the lines of ICD-10-CM's order file.");
    BookCode code{.code = codeAt(CodeBook::diagnoses, Mid(line, kCodeAt, kCodeSize), name, number),
                  .billable = flag == "1",
                  .title = titleOf(Mid(line, kLongAt)),
                  .shortTitle = titleOf(Mid(line, kShortAt, kShortSize))};
    if (code.title.empty()) code.title = code.shortTitle;
    codes.push_back(std::move(code));
  }
  return codes;
}

// The first column whose name has one of these in it, an earlier one before the others.
std::optional<std::size_t> columnWith(const std::vector<std::string_view>& heads,
                                      std::initializer_list<std::string_view> words) {
  for (const std::string_view word : words)
    for (std::size_t i = 0; i < heads.size(); ++i)
      if (fold(heads[i]).find(word) != std::string::npos) return i;
  return {};
}

class ProcedureTable {
 public:
  ProcedureTable(std::string name, std::string text)
      : name_(std::move(name)), file_(name_, std::move(text), TableFile::Cells::quoted) {
    const auto code = columnWith(file_.header(), {"hcpc", "code"});
    const auto title = columnWith(file_.header(), {"long"});
    const auto shortTitle = columnWith(file_.header(), {"short"});
    if (!code || !title || !shortTitle)
      throw Refused(name_ +
                    " is no code book: it has neither the lines of ICD-10-CM's order file nor, as "
                    "HCPCS, a first line that names code, long and short description.");
    code_ = *code;
    title_ = *title;
    short_ = *shortTitle;
  }

  std::vector<BookCode> codes() {
    while (const std::vector<std::string_view>* cells = file_.next())
      if (cells->size() > 1 || !Trim(cells->front()).empty()) take(*cells);
    return std::move(codes_);
  }
  // Of two signs; they stand in the same file, and are no codes.
  std::size_t modifiers() const noexcept { return modifiers_; }

 private:
  void take(const std::vector<std::string_view>& cells) {
    if (cells.size() != file_.header().size())
      refuse(name_, file_.line(), "it has another number of cells than the first line.");
    constexpr std::size_t kModifierSize = 2;
    if (Trim(cells[code_]).size() == kModifierSize) {
      ++modifiers_;
      return;
    }
    std::string code = codeAt(CodeBook::procedures, cells[code_], name_, file_.line());
    std::string title = titleOf(cells[title_]);
    // A long description may go on in the next row.
    if (!codes_.empty() && codes_.back().code == code) {
      codes_.back().title += " " + title;
      return;
    }
    std::string shortTitle = titleOf(cells[short_]);
    codes_.push_back({.code = std::move(code),
                      .title = title.empty() ? shortTitle : title,
                      .shortTitle = shortTitle});
  }

  std::string name_;
  TableFile file_;
  std::size_t code_ = 0;
  std::size_t title_ = 0;
  std::size_t short_ = 0;
  std::size_t modifiers_ = 0;
  std::vector<BookCode> codes_;
};

fs::path bookFileOf(const fs::path& database) {
  const std::string path = givenOrRegistered(database).string();
  fs::path file = codeBooksOf(path);
  if (file.empty())
    throw Refused(
        "The database lies on a server. Say in the machine setting `CodeBooks` of each computer in "
        "which file the code books are.");
  if (!fs::is_directory(fs::absolute(file).parent_path()))
    throw Refused("There is no folder " + fs::absolute(file).parent_path().string());
  return file;
}

}  // namespace

Exit importCodes(const fs::path& from, const fs::path& database, TextCode code, std::ostream& out) {
  const fs::path file = bookFileOf(database);
  const std::string name = from.filename().string();
  std::string text = readText(from, code);
  if (!isText(text)) throw Refused(name + " is no text in UTF-8. Try it with --windows-1252.");
  const CodeBook book = hasOrderNumber(text) ? CodeBook::diagnoses : CodeBook::procedures;
  std::vector<BookCode> codes;
  if (book == CodeBook::diagnoses) {
    codes = orderedCodes(name, text);
  } else {
    ProcedureTable table(name, std::move(text));
    codes = table.codes();
    if (table.modifiers() > 0) out << "Left out: " << table.modifiers() << " modifiers.\n";
  }
  if (codes.empty()) throw Refused(name + " has no codes in it.");
  const BookChange change = writeCodeBook(file, book, codes);
  out << bookName(book) << ": " << codes.size() << " codes (new: " << change.added
      << ", changed: " << change.changed << ", gone: " << change.dropped << ") in " << file.string()
      << ".\n";
  return Exit::done;
}

}  // namespace bw
