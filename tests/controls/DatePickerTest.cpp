#include "controls/DatePicker.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>

#include "core/Services.h"

namespace bw {
namespace {

TEST(DatePickerTest, TakesADateAsItIsTyped) {
  struct Case {
    const char* typed;
    bool allMarked;
    Date result;
  };
  const Case cases[] = {
      {"10/01/2025", true, *makeDate(2025, 10, 1)}, {"10012025", true, *makeDate(2025, 10, 1)},
      {"3/7/1999", true, *makeDate(1999, 3, 7)},    {"12-31-2003", true, *makeDate(2003, 12, 31)},
      {"02/29/2024", true, *makeDate(2024, 2, 29)}, {"02/29/2023", true, *makeDate(2023, 2, 28)},
      {"04", false, *makeDate(2003, 4, 15)},        {"0420", false, *makeDate(2003, 4, 20)},
  };
  for (const auto& [typed, allMarked, result] : cases) {
    DatePicker picker;
    picker.setValue(*makeDate(2003, 11, 15));
    picker.show();
    picker.setFocus();
    auto* field = picker.findChild<QLineEdit*>();
    if (allMarked)
      field->selectAll();
    else
      field->setCursorPosition(1);
    QTest::keyClicks(&picker, typed);
    EXPECT_EQ(picker.value(), result) << typed;
  }
}

}  // namespace
}  // namespace bw
