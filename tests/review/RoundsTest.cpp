#include "review/Rounds.h"

#include "tests/review/ReviewTest.h"

namespace bw {
namespace {

// Patients of three wards; Jones is not admitted.
class RoundsTest : public ReviewTest {
 protected:
  using Show = RoundsQuestion::Show;

  RoundsTest() {
    for (const char* statement :
         {"INSERT INTO Facility VALUES (2, 'Alder', 1, '', '')",
          "INSERT INTO FacilityWards (WardCode, FacilityCode, Description) VALUES (2, 1, 'Attic')",
          "INSERT INTO Patient (PatientId, Names, InsuranceCode, InFacilityCode, InWardCode, "
          "InDoctorCode) VALUES (25002, 'Abel', 1, 1, 2, 2), (25003, 'Brown', 1, 2, 0, 0), "
          "(25004, 'Clark', 1, 1, 1, 2), (25005, 'Adams', 1, 2, 0, 2)",
          "INSERT INTO PatientDoctors VALUES (25001, 1, 1, 1), (25003, 3, 1, 2), (25003, 4, 1, 1), "
          "(25004, 2, 1, 1), (25004, 3, 1, 1)"})
      run(statement);
    charge({25000, "05/20/2003", 1});  // before the day of the first one
    charge({25000, "06/10/2003", 2});
    charge({25002, "05/16/2003", 3});
    charge({25003, "06/01/2003", 3});
    charge({25003, "06/09/2003", 4});
    charge({25004, "06/07/2003", 2});
    charge({25005, "05/17/2003", 2});
    run("DELETE FROM PatientCharges WHERE PatientId = 25001");
  }

  Strings visits(const RoundsQuestion& question) const {
    return linesOf(*find(question).visits, {"Facility", "Ward", "Names", "Doctor", "Role",
                                            "LastVisit", "DueSince", "State"});
  }
  RoundsFound find(RoundsQuestion question) const {
    question.today = now.date;
    return findRounds(readRoundsOffice(), question);
  }

  const std::map<std::int64_t, std::int64_t> days_{{1, 7}, {2, 14}};
};

const Strings kDue{
    "Alder||Brown|Cole|Visiting|6/1/2003|6/15/2003|today",
    "General|East|Clark|Bell|Attending|6/7/2003|6/14/2003|1 day late",
    "General|East|Clark|Cole|Visiting|||no visit yet",
    "General|East|Smith, Ann|Ames|Attending|6/1/2003|6/8/2003|7 days late",
};

TEST_F(RoundsTest, WhoIsDueIsCountedFromTheDoctorsOwnLastCare) {
  EXPECT_EQ(visits({.days = days_}), kDue);
  EXPECT_EQ(visits({.doctor = 3, .days = days_}), (Strings{kDue[0], kDue[2]}));
  EXPECT_EQ(visits({}), Strings{}) << "no days are set";
}

TEST_F(RoundsTest, AllVisitsAndTheirPlacesStandByFacilityWardPatientAndDoctor) {
  const RoundsQuestion all{.show = Show::all, .days = days_};
  EXPECT_EQ(visits(all),
            (Strings{"Alder||Adams|Bell|Attending|5/17/2003||", kDue[0],
                     "Alder||Brown|Dunn|Visiting|6/9/2003|6/16/2003|",
                     "General|Attic|Abel|Bell|Attending|||", kDue[1], kDue[2], kDue[3]}));
  EXPECT_EQ(linesOf(*find(all).places, {"Part", "Facility", "Ward", "Patients", "Visits"}),
            (Strings{"0|All facilities||5|7", "1|Alder||2|3", "2|General|Attic|1|1",
                     "3|General|East|2|3"}));
}

TEST_F(RoundsTest, PatientsWithoutAChargeForThirtyDaysStandUnderWhoAttendsThem) {
  run("INSERT INTO Patient (PatientId, Names, InsuranceCode, InFacilityCode, InWardCode, "
      "InDoctorCode) VALUES (25006, 'Dyer', 1, 2, 0, 0)");
  const Strings quiet{"Alder||Dyer|||||", "General|Attic|Abel|Bell|Attending|5/16/2003||"};
  EXPECT_EQ(visits({.show = Show::noCharge, .days = days_}), quiet);
  EXPECT_EQ(visits({.show = Show::noCharge, .doctor = 2}), Strings{quiet[1]});
}

}  // namespace
}  // namespace bw
