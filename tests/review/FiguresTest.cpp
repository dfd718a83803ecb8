#include "review/Figures.h"

#include "review/OfficeSnapshot.h"
#include "review/Statements.h"
#include "tests/review/ReviewTest.h"

namespace bw {
namespace {

class FiguresTest : public ReviewTest {
 protected:
  enum Division : std::size_t { month, doctor, facility, insurance, concept_, delay };
  enum Measure : std::size_t { charges, patients, ready, posted };

  static Figures figures(const FigureQuestion& question) {
    OfficeSnapshot snapshot(1);
    return findFigures(*snapshot.read(statements::kCharges), question);
  }
};

TEST_F(FiguresTest, ChargesAndPatientsAreCountedByWhatIsAskedFor) {
  for (const char* statement :
       {"INSERT INTO Insurance VALUES (2, 'Other', '')",
        "UPDATE Patient SET InsuranceCode = 2 WHERE PatientId = 25001",
        "INSERT INTO Facility VALUES (2, 'Oakhill', 1, '', '')",
        "INSERT INTO EvaluationManagement VALUES (2, 'Call', 1, 2, 2, '', '', 1, 1, 2)"})
    run(statement);
  charge({.care = "06/10/2003", .doctor = 2, .status = 1});
  charge({25001, "06/30/2003", 2, 1, "17", 2, 2});
  charge({25001, "12/31/2002", 2, 0});
  charge({25001, "07/01/2003", 3, 2});
  const Date from = day(2003, 6, 1);
  const Date to = day(2003, 6, 30);
  const struct {
    FigureQuestion question;
    std::size_t all;
    Strings lines;
  } cases[] = {
      {{month}, 5, {"2003-07|1|20 %", "2003-06|3|60 %", "2002-12|1|20 %"}},
      {{doctor}, 5, {"Bell|3|60 %", "Ames|1|20 %", "Cole|1|20 %"}},
      {{facility}, 5, {"General|4|80 %", "Oakhill|1|20 %"}},
      {{insurance}, 5, {"Other|3|60 %", "Mutual|2|40 %"}},
      {{concept_}, 5, {"Visit|4|80 %", "Call|1|20 %"}},
      {{doctor, patients}, 2, {"Bell|2|50 %", "Ames|1|25 %", "Cole|1|25 %"}},
      {{doctor, ready}, 2, {"Ames|1|50 %", "Bell|1|50 %"}},
      {{doctor, posted}, 2, {"Bell|2|100 %"}},
      {{doctor, charges, from, to}, 3, {"Bell|2|66.7 %", "Ames|1|33.3 %"}},
  };
  for (const auto& [question, all, lines] : cases) {
    SCOPED_TRACE(concat(question.division, " ", question.measure));
    const Figures found = figures(question);
    EXPECT_EQ(linesOf(*found.rows, {"Caption", "Count", "Share"}), lines);
    EXPECT_EQ(found.all, all);
  }
}

TEST_F(FiguresTest, DaysFromCareToWritingFallIntoTheirSpans) {
  for (const char* care :
       {"06/02/2003", "05/31/2003", "05/30/2003", "05/29/2003", "05/28/2003", "05/25/2003",
        "05/24/2003", "05/18/2003", "05/17/2003", "05/02/2003", "05/01/2003"})
    charge({.care = care, .entered = "06/01/2003"});
  EXPECT_EQ(linesOf(*figures({delay}).rows, {"Caption", "Count"}),
            (Strings{"Before the care|1", "The same day|1", "1 day|1", "2 days|1", "3 days|1",
                     "4 to 7 days|2", "8 to 14 days|2", "15 to 30 days|2", "Later|1"}));
}

}  // namespace
}  // namespace bw
