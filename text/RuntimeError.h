#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace bw {

// Numbers of the run-time errors that the program raises or tells apart.
enum class ErrorNumber : int {
  invalidCall = 5,
  overflow = 6,
  outOfMemory = 7,
  typeMismatch = 13,
  internal = 51,
  fileNotFound = 53,
  pathNotFound = 76,
  objectNotSet = 91,
  invalidNull = 94,
  invalidPropertyValue = 380,
  objectRequired = 424,
  noSuchOperation = 438,
  badArguments = 3001,
  noCurrentRecord = 3021,
  readOnly = 3251,
  noSuchItem = 3265,
  wrongType = 3421,
  closed = 3704,
  elementNotFound = 35601,
  keyNotUnique = 35602,
  multipleStep = -2147217887,
  noTransaction = -2147168242,
  database = -2147467259,
};

// The one exception of the program. what() is the text alone, fit for a message box.
class RuntimeError : public std::runtime_error {
 public:
  explicit RuntimeError(ErrorNumber number);  // with the number's usual text
  RuntimeError(ErrorNumber number, const std::string& text);

  ErrorNumber number() const noexcept { return number_; }
  std::string text() const { return what(); }

 private:
  ErrorNumber number_;
};

std::string_view errorText(ErrorNumber number) noexcept;

}  // namespace bw
