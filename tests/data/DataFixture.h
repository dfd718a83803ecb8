#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/Services.h"

namespace bw {

using Strings = std::vector<std::string>;

// An empty database of its own in memory, shared state as at the start, a clock that stands, and a
// record of statements and messages. A message that no test asked for fails the test.
class DataTest : public ::testing::Test {
 protected:
  DataTest();
  ~DataTest() override;
  void TearDown() override;

  static void run(const std::string& statement);
  // The rows of a result: "1|Beta 2|Alpha", with "null" for no value.
  static std::string rows(const std::string& statement);
  static std::string count(const std::string& table);

  // One record of each kind under the number 1, each of them used by another; doctors 1 to 4,
  // diagnoses and procedures 1, 2, 3, 11 and 21, patients 25000 and 25001. Patient 25000 is
  // admitted and has the charge of kSeedDate and kSeedTime with diagnosis 1 and procedure 1.
  static void seedOffice();

  // On top of it what an office has in life: names that several share or that have blanks, commas,
  // hyphens and typographic apostrophes, two facilities of one name (3 and 4), codes of 3 to 15
  // characters and none, a patient without account and date of birth (25002), patients admitted
  // (25003, 25004) and not, doctors who cover for each other (5 and 6), and six concepts for each
  // kind of facility 1, 2 and 5, status and attention type, numbered by these and by their place
  // (1214 is a hospital's, of an outpatient, consult, the fourth: the usual one).
  static void seedLife();

  // What was issued since the last call, and what was shown.
  std::vector<std::string> takeStatements();
  std::vector<std::string> takeMessages();

  // Nothing but a closed connection makes every statement fail.
  static void closeConnection();
  static bool inTransaction();

  DateTime now;
  std::function<void(std::string_view)> onStatement;  // called before each

 private:
  Services saved_;
  std::vector<std::string> statements_;
  std::vector<std::string> messages_;
};

inline const Date kSeedDate = makeDate(2003, 6, 1).value();
inline const TimeOfDay kSeedTime = makeTime(8, 30, 0).value();

inline Date day(int year, int month, int dayOfMonth) {
  return makeDate(year, month, dayOfMonth).value();
}

inline constexpr const char* kDuplicateKey = "There is a record with the same key already.";
inline constexpr const char* kMissingParent =
    "The record refers to another record that does not exist (any more).";
inline constexpr const char* kClosed = "Operation is not allowed when the object is closed.";

}  // namespace bw
