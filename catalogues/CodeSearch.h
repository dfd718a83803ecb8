#pragma once

#include <optional>
#include <string>

#include "controls/Dialog.h"
#include "data/CodeBooks.h"

namespace bw {

// Searches a code book by the words of its titles and by its codes. In: the book, and the words to
// begin with. Out: what was taken; nothing after Cancel.
class PickCodeForm : public Form {
 public:
  using Form::Form;

  CodeBook book = CodeBook::diagnoses;
  std::string words;
  std::optional<BookCode> picked;  // its code as people write it
};

PickCodeForm& frmPickCode();

}  // namespace bw
