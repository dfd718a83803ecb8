#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "records/RowStore.h"

namespace bw {

// The official books of codes, in one text file that nothing needs: without it, or where it is no
// such file, there are no codes. It is opened when it is asked, never at the start. Its lines are
// ordered, so that one code is found without reading the others.

enum class CodeBook : std::uint8_t { diagnoses, procedures };

struct BookCode {
  std::string code;  // as the book's file spells it: capitals, no point
  bool billable = true;
  std::string title;
  std::string shortTitle;
};

// How people call it: "ICD-10-CM".
std::string_view bookName(CodeBook book);

// A code as the book's file spells it, whether it was typed with blanks, small letters or its
// point. "" when it does not have the form of the book's codes.
std::string bookSpelling(CodeBook book, std::string_view typed);

// As people write it: with its point.
std::string writtenCode(CodeBook book, std::string_view code);

// The file of a database: what the machine setting `CodeBooks` names, otherwise one beside it.
// Empty for one on a server without that setting.
std::filesystem::path codeBooksOf(const std::string& database);

// Whether there is a code of that book.
bool hasCodeBook(const std::filesystem::path& file, CodeBook book);

enum class CodeState : std::uint8_t {
  unknown,  // the book is not at hand, or the code is none of its form
  inBook,
  heading,  // in the book, but only to group others
  notInBook,
};
CodeState codeState(const std::filesystem::path& file, CodeBook book, std::string_view typed);

// All codes of a book, in the book's order. No rows when it is not at hand. Columns: Code (as
// people write it), Title, ShortTitle, Use ("" or "heading").
std::shared_ptr<RowStore> readCodeBook(const std::filesystem::path& file, CodeBook book);

// What writing has done to a book.
struct BookChange {
  std::size_t added = 0;
  std::size_t changed = 0;
  std::size_t dropped = 0;
};

// Puts these codes in the place of the book's; the other book stays. Two codes that are spelled
// alike: the last one counts. The file is left alone when nothing changes. Raises error 76.
BookChange writeCodeBook(const std::filesystem::path& file, CodeBook book,
                         const std::vector<BookCode>& codes);

}  // namespace bw
