#include "data/CodeBooks.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <map>
#include <sstream>

#include "core/ApoyoRegistry.h"
#include "engine/PostgresAddress.h"
#include "files/Files.h"
#include "text/Text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

bool isLetter(char c) noexcept { return c >= 'A' && c <= 'Z'; }
bool isSign(char c) noexcept { return isLetter(c) || isDigit(c); }

// "E119": a letter, a digit, and one to five letters or digits.
bool isDiagnosis(std::string_view code) noexcept {
  return code.size() >= 3 && code.size() <= 7 && isLetter(code[0]) && isDigit(code[1]) &&
         std::ranges::all_of(code.substr(2), isSign);
}

// "J1100": a letter and four digits.
bool isProcedure(std::string_view code) noexcept {
  return code.size() == 5 && isLetter(code[0]) && std::ranges::all_of(code.substr(1), isDigit);
}

constexpr std::size_t kNoPoint = 99;

struct BookRow {
  std::string_view name;
  std::string_view mark;  // begins its lines
  std::size_t point;      // so many signs stand before the point
  bool (*isCode)(std::string_view) noexcept;
};
constexpr std::array<BookRow, 2> kBooks{
    BookRow{.name = "ICD-10-CM", .mark = "D\t", .point = 3, .isCode = isDiagnosis},
    BookRow{.name = "HCPCS", .mark = "P\t", .point = kNoPoint, .isCode = isProcedure}};

const BookRow& rowOf(CodeBook book) { return kBooks.at(static_cast<std::size_t>(book)); }

constexpr std::string_view kHeading = "0";
constexpr std::string_view kBillable = "1";

// What stands in a line: mark, code, use, title, short title.
std::string lineOf(const BookRow& row, const BookCode& code) {
  return concat(row.mark, code.code, "\t", code.billable ? kBillable : kHeading, "\t", code.title,
                "\t", code.shortTitle);
}

// The piece before the next tab, and the rest behind it.
std::string_view takeCell(std::string_view& line) {
  const std::size_t tab = std::min(line.find('\t'), line.size());
  const std::string_view cell = line.substr(0, tab);
  line.remove_prefix(std::min(tab + 1, line.size()));
  return cell;
}

// Lines by their code.
using Lines = std::map<std::string, std::string, std::less<>>;

std::string_view codeOf(const BookRow& row, std::string_view line) {
  line.remove_prefix(row.mark.size());
  return takeCell(line);
}

// The first line that does not stand before `wanted`; "" behind the last.
std::string lineFrom(std::istream& file, std::string_view wanted) {
  file.seekg(0, std::ios::end);
  std::streamoff low = 0;
  std::streamoff high = std::max<std::streamoff>(file.tellg(), 0);
  std::string line;
  const auto readLineBehind = [&](std::streamoff place) {
    file.clear();
    file.seekg(std::max<std::streamoff>(place - 1, 0));
    if (place > 0) std::getline(file, line);  // the rest of the line before
    const std::streamoff start = file.tellg();
    line.clear();
    std::getline(file, line);
    return start;
  };
  while (low < high) {
    const std::streamoff middle = low + (high - low) / 2;
    const std::streamoff start = readLineBehind(middle);
    if (line.empty() || line >= wanted)
      high = middle;
    else
      low = start + static_cast<std::streamoff>(line.size()) + 1;
  }
  readLineBehind(low);
  return line;
}

template <class Take>
void forEachLine(std::istream&& stream, std::string_view mark, Take take) {
  std::string line;
  while (std::getline(stream, line))
    if (line.starts_with(mark)) take(std::string_view(line));
}

Lines linesOf(const std::string& text, const BookRow& row) {
  Lines lines;
  forEachLine(std::istringstream(text), row.mark, [&](std::string_view line) {
    lines.insert_or_assign(std::string(codeOf(row, line)), std::string(line));
  });
  return lines;
}

BookChange difference(const Lines& before, const Lines& after) {
  BookChange change;
  for (const auto& [code, line] : after) {
    const auto stood = before.find(code);
    change.added += stood == before.end() ? 1U : 0U;
    change.changed += stood != before.end() && stood->second != line ? 1U : 0U;
  }
  change.dropped = before.size() + change.added - after.size();
  return change;
}

}  // namespace

std::string_view bookName(CodeBook book) { return rowOf(book).name; }

std::string bookSpelling(CodeBook book, std::string_view typed) {
  std::string code;
  const BookRow& row = rowOf(book);
  for (const char c : Trim(typed))
    if (c != '.' || code.size() != row.point)
      code += c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c;
  return row.isCode(code) ? code : "";
}

std::string writtenCode(CodeBook book, std::string_view code) {
  const std::size_t point = rowOf(book).point;
  if (code.size() <= point) return std::string(code);
  return concat(code.substr(0, point), ".", code.substr(point));
}

fs::path codeBooksOf(const std::string& database) {
  if (const std::string set = installationText("CodeBooks"); !set.empty()) return set;
  return isServerAddress(database) ? std::string() : database + ".codes";
}

bool hasCodeBook(const fs::path& file, CodeBook book) {
  const std::string_view mark = rowOf(book).mark;
  std::ifstream stream(file, std::ios::binary);
  return lineFrom(stream, mark).starts_with(mark);
}

CodeState codeState(const fs::path& file, CodeBook book, std::string_view typed) {
  const std::string code = bookSpelling(book, typed);
  if (code.empty() || !hasCodeBook(file, book)) return CodeState::unknown;
  const BookRow& row = rowOf(book);
  std::ifstream stream(file, std::ios::binary);
  const std::string begin = concat(row.mark, code, "\t");
  const std::string line = lineFrom(stream, begin);
  if (!line.starts_with(begin)) return CodeState::notInBook;
  return std::string_view(line).substr(begin.size()).starts_with(kHeading) ? CodeState::heading
                                                                           : CodeState::inBook;
}

std::shared_ptr<RowStore> readCodeBook(const fs::path& file, CodeBook book) {
  auto store = std::make_shared<RowStore>();
  for (const char* name : {"Code", "Title", "ShortTitle", "Use"})
    store->columns.emplace_back(name, FieldType::text);
  const BookRow& row = rowOf(book);
  forEachLine(std::ifstream(file, std::ios::binary), row.mark, [&](std::string_view line) {
    line.remove_prefix(row.mark.size());
    store->columns[0].appendText(writtenCode(book, takeCell(line)));
    const bool heading = takeCell(line) == kHeading;
    store->columns[1].appendText(takeCell(line));
    store->columns[2].appendText(takeCell(line));
    store->columns[3].appendText(heading ? "heading" : "");
  });
  for (Column& column : store->columns) column.finish();
  return store;
}

BookChange writeCodeBook(const fs::path& file, CodeBook book, const std::vector<BookCode>& codes) {
  const BookRow& row = rowOf(book);
  Lines after;
  for (const BookCode& code : codes) after.insert_or_assign(code.code, lineOf(row, code));
  const std::string before = textOfFile(file);
  const BookChange change = difference(linesOf(before, row), after);
  if (change.added + change.changed + change.dropped == 0) return change;
  std::string text;
  for (const BookRow& each : kBooks) {
    const Lines lines = each.mark == row.mark ? after : linesOf(before, each);
    for (const auto& [code, line] : lines) text += line + '\n';
  }
  using enum fs::perms;
  writeFileWhole(file, text, owner_read | owner_write | group_read | others_read);
  return change;
}

}  // namespace bw
