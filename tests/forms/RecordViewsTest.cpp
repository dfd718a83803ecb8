#include <QTest>
#include <algorithm>
#include <variant>

#include "core/Principal.h"
#include "core/Settings.h"
#include "platform/Text.h"
#include "shell/RecordView.h"
#include "shell/frmShorcuts.h"
#include "tests/forms/FormsFixture.h"

namespace bw {
namespace {

using Strings = std::vector<std::string>;

struct Member {
  std::int16_t view;
  RecordView& (*form)();
  const char* statement;
  std::vector<std::pair<std::int16_t, const char*>> filters;
  const char* sortBA;  // after clicks on the second column and the first
  const char* sortBAB;
  const char* key;
  std::variant<std::int16_t*, std::int32_t*> current;
  const char* question;
  const char* table;
  const char* text;    // column
  const char* used;    // in the list, and referred to by other records
  const char* insert;  // up to the code
  const char* values;  // behind the text
  const char* layoutSection;
  const char* readSection;
  const char* writeSection;
};
void PrintTo(const Member& member, std::ostream* out) { *out << member.table; }

// clang-format off
const Member kMembers[] = {
    {2, frmDoctors, "SELECT * FROM Doctors", {{1, " where BillingDoctorCode=''"}},
     "Description,BillingDoctorCode", "BillingDoctorCode,Description", "DoctorCode", &CurrentDoctorCode,
     "Are you sure you want to delete the selected Doctors?", "Doctors", "Description", "Ames",
     "INSERT INTO Doctors VALUES (", ", ''", "Doctors", "Doctors", "Doctors"},
    {3, frmFacilities, "SELECT * FROM FacilitiesDescriptive", {{1, " where BillingFacilityCode=''"}},
     " Description , TypeDescription ", " TypeDescription , Description ", "FacilityCode", &CurrentFacilityCode,
     "Are you sure you want to delete the selected Facilites?", "Facility", "Description", "General",
     "INSERT INTO Facility VALUES (", ", 1, '', ''", "Facilites", "Facilites", "Facilities"},
    {4, frmDiagnosis, "SELECT * FROM DiagnosisDescriptive", {{1, " where BillingDiagnosisCode=''"}},
     "Description,BillingDiagnosisCode", "BillingDiagnosisCode,Description", "DiagnosisCode", &CurrentDiagnosisCode,
     "Are you sure you want to delete the selected Diagnosis?", "Diagnosis", "Description", "d1",
     "INSERT INTO Diagnosis (DiagnosisCode, Description, DiagnosisFamilyCode) VALUES (", ", 1", "Diagnosis", "Diagnosis", "Diagnosis"},
    {5, frmProcedures, "SELECT * FROM Procedures", {{1, " where BillingProcedureCode=''"}},
     " Description , BillingProcedureCode ", " BillingProcedureCode , Description ", "ProcedureCode", &CurrentProcedureCode,
     "Are you sure you want to delete the selected Procedures?", "Procedures", "Description", "p1",
     "INSERT INTO Procedures (ProcedureCode, Description) VALUES (", "", "Procedures", "Procedures", "Procedures"},
    {6, frmInsurances, "SELECT * FROM Insurance", {{1, " where BillingInsuranceCode=''"}},
     " Description , BillingInsuranceCode ", " BillingInsuranceCode , Description ", "InsuranceCode", &CurrentInsuranceCode,
     "Are you sure you want to delete the selected Insurances?", "Insurance", "Description", "Mutual",
     "INSERT INTO Insurance VALUES (", ", ''", "Insurances", "Insurances", "Insurances"},
    {7, frmEMCodes, "SELECT * FROM EMCodesDescriptive",
     {{6, " where FacilityTypeCode=1"}, {7, " where FacilityTypeCode=4"}, {8, " where FacilityTypeCode=2"},
      {9, " where FacilityTypeCode=3"}, {14, " where FacilityTypeCode=5"}, {1, " where BillingEMCode=''"}},
     " Description , FacilityTypeDescription ", " FacilityTypeDescription , Description ", "EMCode", &CurrentEMCode,
     "Are you sure you want to delete the selected EMCodes?", "EvaluationManagement", "Description", "Visit",
     "INSERT INTO EvaluationManagement VALUES (", ", 2, 1, 1, '', '', 1, 1, 2", "EMCodes", "EMCodes", "EMCodes"},
    {8, frmSickness, "SELECT * FROM SicknessDescriptive",
     {{10, " where SicknessTypeCode=0"}, {11, " where SicknessTypeCode=1"}, {12, " where SicknessTypeCode=2"}},
     " Description , SicknessTypeDescription ", " SicknessTypeDescription , Description ", "SicknessCode", &CurrentSicknessCode,
     "Are you sure you want to delete the selected Sickness?", "Sickness", "Description", "Pollen",
     "INSERT INTO Sickness (SicknessCode, Description, SicknessTypeCode) VALUES (", ", 2", "Sickness", "Sickness", nullptr},
    {9, frmDiagnosisFamilies, "SELECT * FROM DiagnosisFamily", {},
     "DiagnosisFamilyDescription", "DiagnosisFamilyDescription", "DiagnosisFamilyCode", &CurrentDiagnosisFamilyCode,
     "Are you sure you want to delete the selected DiagnosisFamilies?", "DiagnosisFamily", "DiagnosisFamilyDescription", "Heart",
     "INSERT INTO DiagnosisFamily VALUES (", "", "DiagnosisFamilies", "DiagnosisFamilies", "DiagnosisFamilies"},
};
// clang-format on

class RecordViewsTest : public FormsTest, public testing::WithParamInterface<Member> {
 protected:
  const Member& member() const { return GetParam(); }

  void go(std::int16_t filter = 0) { frmShorcuts().FuerzaNodeClick(member().view, filter); }
  ListView& list() { return control<ListView>(member().form(), "ListView1"); }
  std::string sort() const { return member().form().records()->Sort(); }
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
  std::string setting(const char* section, const char* key) {
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
    EXPECT_EQ(member().form().filter(), filter);
  }
}

TEST_P(RecordViewsTest, AClickedColumnGoesToTheHeadOfTheSort) {
  openMainWindow();
  window().resize(1400, 700);
  go();
  const int second = std::min(1, list().columns() - 1);
  list().setSelected(list().count() - 1, true);
  clickHead(list(), second);
  clickHead(list(), 0);
  EXPECT_EQ(sort(), member().sortBA);
  clickHead(list(), second);
  EXPECT_EQ(sort(), member().sortBAB);
  clickHead(list(), second);
  EXPECT_EQ(sort(), member().sortBAB);
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
  QTest::keyClick(&list(), Qt::Key_Delete);
  EXPECT_EQ(takeQuestions(), (Strings{member().question, member().question}));
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
  const std::int16_t filter =
      member().filters.empty() ? std::int16_t{0} : member().filters[0].first;
  go(filter);
  list().setWidth(0, 2222);
  closeMainWindow();
  EXPECT_EQ(setting(member().layoutSection, concat(member().text, "Width").c_str()), "2222");
  const std::string written = concat(filter);
  const std::string none = "none";
  const bool writes = member().writeSection != nullptr;
  const bool readsBack = writes && sameName(member().writeSection, member().readSection);
  EXPECT_EQ(setting(member().readSection, "ActiveFilter"), readsBack ? written : none);
  if (writes) {
    EXPECT_EQ(setting(member().writeSection, "ActiveFilter"), written);
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
  auto& list = control<ListView>(frmDoctors(), "ListView1");
  EXPECT_EQ(shownTexts(list), (Strings{"Ames", "Bell", "Cole", "Dunn"}));
  doubleClickRow(list, 1);
  EXPECT_EQ(takeFatal(), Strings{std::string(errorText(ErrorNumber::objectNotSet))});
}

TEST_F(RecordViewFailuresTest, AStoredFilterThatIsNoNumberCountsAsNone) {
  SaveSetting(kApplicationTitle, "Doctors", "ActiveFilter", "many");
  openMainWindow();
  frmShorcuts().FuerzaNodeClick(2, 0);
  EXPECT_EQ(frmDoctors().filter(), 0);
}

}  // namespace
}  // namespace bw
