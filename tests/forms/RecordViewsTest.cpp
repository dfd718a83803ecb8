#include <QTest>
#include <algorithm>
#include <variant>

#include "core/Principal.h"
#include "lists/RecordView.h"
#include "lists/Settings.h"
#include "shell/RecordKinds.h"
#include "shell/frmShorcuts.h"
#include "tests/forms/FormsFixture.h"
#include "text/Text.h"

namespace bw {
namespace {

using Strings = std::vector<std::string>;

struct Member {
  std::int16_t view;
  std::variant<std::int16_t*, std::int32_t*> current;
  const char* table;
  const char* key;
  const char* text;
  const char* used;  // text of a row that other records refer to
  const char* statement;
  std::vector<std::pair<std::int16_t, const char*>> filters;
  const char* second;   // column
  bool padded;          // the tokens of the sort
  const char* records;  // in the question
  const char* insert;   // up to the code
  const char* values;   // behind the text
  const char* layoutSection;
  const char* writeSection;
};
void PrintTo(const Member& member, std::ostream* out) { *out << member.table; }

// clang-format off
const Member kMembers[] = {
    {2, &CurrentDoctorCode, "Doctors", "DoctorCode", "Description", "Ames",
     "SELECT * FROM Doctors", {{1, " where BillingDoctorCode=''"}}, "BillingDoctorCode", false, "Doctors",
     "INSERT INTO Doctors VALUES (", ", ''", "Doctors", "Doctors"},
    {3, &CurrentFacilityCode, "Facility", "FacilityCode", "Description", "General",
     "SELECT * FROM FacilitiesDescriptive", {{1, " where BillingFacilityCode=''"}}, "TypeDescription", true, "Facilites",
     "INSERT INTO Facility VALUES (", ", 1, '', ''", "Facilites", "Facilities"},
    {4, &CurrentDiagnosisCode, "Diagnosis", "DiagnosisCode", "Description", "d1",
     "SELECT * FROM DiagnosisDescriptive", {{1, " where BillingDiagnosisCode=''"}}, "BillingDiagnosisCode", false, "Diagnosis",
     "INSERT INTO Diagnosis (DiagnosisCode, Description, DiagnosisFamilyCode) VALUES (", ", 1", "Diagnosis", "Diagnosis"},
    {5, &CurrentProcedureCode, "Procedures", "ProcedureCode", "Description", "p1",
     "SELECT * FROM Procedures", {{1, " where BillingProcedureCode=''"}}, "BillingProcedureCode", true, "Procedures",
     "INSERT INTO Procedures (ProcedureCode, Description) VALUES (", "", "Procedures", "Procedures"},
    {6, &CurrentInsuranceCode, "Insurance", "InsuranceCode", "Description", "Mutual",
     "SELECT * FROM Insurance", {{1, " where BillingInsuranceCode=''"}}, "BillingInsuranceCode", true, "Insurances",
     "INSERT INTO Insurance VALUES (", ", ''", "Insurances", "Insurances"},
    {7, &CurrentEMCode, "EvaluationManagement", "EMCode", "Description", "Visit", "SELECT * FROM EMCodesDescriptive",
     {{6, " where FacilityTypeCode=1"}, {7, " where FacilityTypeCode=4"}, {8, " where FacilityTypeCode=2"},
      {9, " where FacilityTypeCode=3"}, {14, " where FacilityTypeCode=5"}, {1, " where BillingEMCode=''"}},
     "FacilityTypeDescription", true, "EMCodes", "INSERT INTO EvaluationManagement VALUES (", ", 2, 1, 1, '', '', 1, 1, 2", "EMCodes", "EMCodes"},
    {8, &CurrentSicknessCode, "Sickness", "SicknessCode", "Description", "Pollen", "SELECT * FROM SicknessDescriptive",
     {{10, " where SicknessTypeCode=0"}, {11, " where SicknessTypeCode=1"}, {12, " where SicknessTypeCode=2"}}, "SicknessTypeDescription", true,
     "Sickness", "INSERT INTO Sickness (SicknessCode, Description, SicknessTypeCode) VALUES (", ", 2", "Sickness", nullptr},
    {9, &CurrentDiagnosisFamilyCode, "DiagnosisFamily", "DiagnosisFamilyCode", "DiagnosisFamilyDescription", "Heart",
     "SELECT * FROM DiagnosisFamily", {}, nullptr, false, "DiagnosisFamilies",
     "INSERT INTO DiagnosisFamily VALUES (", "", "DiagnosisFamilies", "DiagnosisFamilies"},
};
// clang-format on

class RecordViewsTest : public FormsTest, public testing::WithParamInterface<Member> {
 protected:
  const Member& member() const { return GetParam(); }
  RecordView& view() const { return recordView(recordKind(member().view)); }

  void go(std::int16_t filter = 0) { frmShorcuts().FuerzaNodeClick(member().view, filter); }
  ListView& list() { return control<ListView>(view(), "ListView1"); }
  std::string sort() const { return view().records()->Sort(); }
  int rowOf(const std::string& text) {
    const Strings texts = shownTexts(list());
    return static_cast<int>(std::find(texts.begin(), texts.end(), text) - texts.begin());
  }
  void add(int code, const char* text) {
    run(concat(member().insert, code, ", '", text, "'", member().values, ")"));
  }
  std::int16_t firstFilter() const {
    return member().filters.empty() ? std::int16_t{0} : member().filters[0].first;
  }
  void setCurrent(std::int16_t code) {
    std::visit([&](auto* current) { *current = code; }, member().current);
  }
  static std::string setting(const std::string& section, const std::string& key) {
    return GetSetting(kApplicationTitle, section, key, "none");
  }
};

TEST_P(RecordViewsTest, EachFilterReadsItsStatementAndTheFirstOrder) {
  add(51, "AAA");
  add(52, "zzz");
  openMainWindow();
  takeStatements();
  go();
  EXPECT_EQ(takeStatements(), Strings{member().statement});
  EXPECT_EQ(list().text(0), "AAA");
  EXPECT_EQ(list().text(list().count() - 1), "zzz");
  for (const auto& [filter, clause] : member().filters) {
    go(filter);
    EXPECT_EQ(takeStatements(), Strings{concat(member().statement, clause)});
    EXPECT_EQ(view().filter(), filter);
  }
}

TEST_P(RecordViewsTest, AClickedColumnGoesToTheHeadOfTheSort) {
  openMainWindow();
  window().resize(1400, 700);
  go();
  const std::string blank = member().padded ? " " : "";
  const std::string first = concat(blank, member().text, blank);
  const std::string second =
      member().second == nullptr ? "" : concat(blank, member().second, blank);
  list().setSelected(list().count() - 1, true);
  if (!second.empty()) {
    clickHead(list(), 1);
    EXPECT_EQ(sort(), concat(second, ",", first));
  }
  for (int clicks = 0; clicks < 2; ++clicks) {
    clickHead(list(), 0);
    EXPECT_EQ(sort(), second.empty() ? first : concat(first, ",", second));
  }
  EXPECT_EQ(selectedRows(list()), std::vector<int>{0});
  window().callView("Refresca");
  EXPECT_EQ(Trim(sort()), member().text);
}

TEST_P(RecordViewsTest, ARefusedDeleteKeepsItsRowAndTheOthersGo) {
  add(51, "AAA");
  add(52, "zzz");
  openMainWindow();
  window().resize(1400, 700);
  go();
  const int before = list().count();
  clickRow(list(), rowOf("AAA"));
  clickRow(list(), rowOf(member().used), Qt::ControlModifier);
  clickRow(list(), rowOf("zzz"), Qt::ControlModifier);
  answer(false);
  QTest::keyClick(&list(), Qt::Key_Delete);
  EXPECT_EQ(selectedRows(list()).size(), 3U);

  answer(true);
  const auto message = services().message;
  services().message = [&](const std::string& text) {
    EXPECT_EQ(selectedRows(list()), std::vector<int>{rowOf(member().used)}) << "the one concerned";
    message(text);
  };
  QTest::keyClick(&list(), Qt::Key_Delete);
  EXPECT_EQ(takeQuestions(), Strings(2, concat("Are you sure you want to delete the selected ",
                                               member().records, "?")));
  const Strings refusals = takeMessages();
  ASSERT_EQ(refusals.size(), 1U);
  EXPECT_TRUE(refusals[0].starts_with("This record cannot be deleted")) << refusals[0];
  EXPECT_EQ(list().count(), before - 2);
  EXPECT_LT(rowOf(member().used), list().count());
  EXPECT_EQ(rows(concat("SELECT count(*) FROM ", member().table, " WHERE ", member().key, ">50")),
            "0");
  EXPECT_EQ(selectedRows(list()), std::vector<int>{0});
}

TEST_P(RecordViewsTest, ASavedRecordIsMergedWithoutReadingTheListAgain) {
  add(51, "AAA");
  add(52, "zzz");
  openMainWindow();
  go();
  const int before = list().count();
  run(concat("UPDATE ", member().table, " SET ", member().text, "='mmm' WHERE ", member().key,
             "=51"));
  setCurrent(51);
  takeStatements();
  window().callView("Insertado");
  EXPECT_EQ(takeStatements(), Strings{concat(member().statement, " WHERE  ", member().key, "=51")});
  EXPECT_EQ(list().count(), before);
  EXPECT_EQ(selectedRows(list()), std::vector<int>{rowOf("mmm")});

  go(firstFilter());
  add(53, "zzzz");
  const int filtered = list().count();
  setCurrent(53);
  window().callView("Insertado");
  EXPECT_EQ(list().count(), filtered + 1) << "whatever the filter";
  EXPECT_EQ(selectedRows(list()), std::vector<int>{rowOf("zzzz")});
}

TEST_P(RecordViewsTest, LayoutAndFilterAreKeptUnderTheirSections) {
  openMainWindow();
  go(firstFilter());
  list().setWidth(0, 2222);
  closeMainWindow();
  EXPECT_EQ(setting(member().layoutSection, concat(member().text, "Width")), "2222");
  const std::string layout = member().layoutSection;
  const std::string writes = member().writeSection == nullptr ? "" : member().writeSection;
  // Read from the section of the layout: where that is another, the filter is forgotten.
  EXPECT_EQ(setting(layout, "ActiveFilter"), writes == layout ? concat(firstFilter()) : "none");
  if (!writes.empty()) {
    EXPECT_EQ(setting(writes, "ActiveFilter"), concat(firstFilter()));
  }
  openMainWindow();
  EXPECT_EQ(list().Width(0), 2222);
}

INSTANTIATE_TEST_SUITE_P(Views, RecordViewsTest, testing::ValuesIn(kMembers),
                         [](const auto& member) { return std::string(member.param.table); });

class RecordViewFailuresTest : public FormsTest {};

TEST_F(RecordViewFailuresTest, AListThatCannotBeReadStaysButItsRowsCannotBeOpened) {
  openMainWindow();
  frmShorcuts().FuerzaNodeClick(2, 0);
  closeConnection();
  window().callView("Refresca");
  EXPECT_EQ(takeMessages(), Strings{concat("SELECT * FROM Doctors ", kClosed)});
  auto& list = control<ListView>(recordView(recordKind(2)), "ListView1");
  EXPECT_EQ(shownTexts(list), (Strings{"Ames", "Bell", "Cole", "Dunn"}));
  doubleClickRow(list, 1);
  EXPECT_EQ(takeFatal(), Strings{std::string(errorText(ErrorNumber::objectNotSet))});
}

TEST_F(RecordViewFailuresTest, AStoredFilterThatIsNoNumberCountsAsNone) {
  for (const char* section : {"Charges", "Doctors"})
    SaveSetting(kApplicationTitle, section, "ActiveFilter", "many");
  openMainWindow();
  frmShorcuts().FuerzaNodeClick(2, 0);
  EXPECT_EQ(recordView(recordKind(2)).filter(), 0);
  EXPECT_TRUE(control<QAction>(window(), "mnuCurrentViewFilter(0)").isChecked());
}

}  // namespace
}  // namespace bw
