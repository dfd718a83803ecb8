#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/tools/DatabaseContent.h"
#include "tests/tools/TemporaryFolder.h"
#include "tools/Commands.h"

namespace bw {

// Whether all of these stand in a text.
inline testing::AssertionResult has(const std::string& text,
                                    const std::vector<std::string>& parts) {
  for (const std::string& part : parts)
    if (text.find(part) == text.npos)
      return testing::AssertionFailure() << "no \"" << part << "\" in:\n" << text;
  return testing::AssertionSuccess() << text;
}

// A folder of the test's own, the database in it, and what the commands say.
class ToolsTest : public testing::Test {
 protected:
  void makePractice() { createPractice(file_, *makeDate(2024, 3, 1), out_); }
  void run(const std::string& statement) const { openSqlite(file_)->execute(statement); }
  std::string cells(const std::string& statement) const {
    return cellsOf(*openSqlite(file_)->read(statement));
  }
  // What the command check says.
  std::string checked(Exit wanted) {
    out_.str("");
    EXPECT_EQ(checkDatabase(file_, out_), wanted) << out_.str();
    return out_.str();
  }
  // Why something is refused; "" when it is not.
  template <class Run>
  static std::string refusalOf(Run run) {
    try {
      run();
    } catch (const Refused& refusal) {
      return refusal.what();
    }
    return {};
  }

  TemporaryFolder folder_;
  std::string file_ = folder_ / "office.db";
  std::ostringstream out_;
};

}  // namespace bw
