#include "review/Rounds.h"

#include <algorithm>
#include <set>

#include "tests/review/RandomOffice.h"
#include "text/Text.h"

namespace bw {
namespace {

class RoundsTest : public RandomOfficeTest {
 protected:
  using Show = RoundsQuestion::Show;

  void readTables() {
    patients_ = table("Patient");
    visits_ = table("PatientDoctors");
    charges_ = table("PatientCharges");
  }

  // Of care by a doctor, or by anybody ("").
  std::optional<Date> lastCare(const std::string& patient, const std::string& doctor) const {
    std::optional<Date> last;
    for (const TableRow& charge : charges_)
      if (charge.at("PatientId") == patient &&
          (doctor.empty() || charge.at("DoctorCode") == doctor))
        last = std::max(last, dateOf(charge.at("ChargeRealDate")));
    return last;
  }

  static std::string textOf(std::optional<Date> date) {
    return date ? bw::textOf(Value(*date)) : "";
  }

  std::string lineOf(const TableRow& patient, const std::string& doctor,
                     const std::string& frequency, std::optional<Date> last,
                     const RoundsQuestion& question) const {
    std::string due = "|";
    if (!frequency.empty() && question.days.contains(std::stoi(frequency))) {
      const int days = static_cast<int>(question.days.at(std::stoi(frequency)));
      if (!last)
        due = "|no visit yet";
      else {
        const int late = question.today.day - last->day - days;
        due = textOf(Date{last->day + days}) + "|" +
              (late < 0    ? ""
               : late == 0 ? "today"
                           : concat(late, late == 1 ? " day late" : " days late"));
      }
    }
    const bool isDue = due.back() != '|';
    if (question.show == Show::due && !isDue) return {};
    const TableRow facility = find(table("Facility"), "FacilityCode", patient.at("InFacilityCode"));
    return concat(patient.at("PatientId"), "|", facility.at("Description"), "|",
                  doctor == "0" ? "" : doctor, "|",
                  doctor == "0"                          ? ""
                  : doctor == patient.at("InDoctorCode") ? "Attending"
                                                         : "Visiting",
                  "|", textOf(last), "|", due);
  }

  Strings expect(const RoundsQuestion& question) const {
    Strings lines;
    const auto add = [&](const std::string& doctor, const std::string& line) {
      if (!line.empty() && (question.doctor == 0 || doctor == concat(question.doctor)))
        lines.push_back(line);
    };
    for (const TableRow& patient : patients_) {
      if (patient.at("InFacilityCode") == "0") continue;
      const std::string& id = patient.at("PatientId");
      const std::string& attending = patient.at("InDoctorCode");
      if (question.show == Show::noCharge) {
        const auto last = lastCare(id, "");
        if (!last || question.today.day - last->day >= 30)
          add(attending, lineOf(patient, attending, "", last, question));
        continue;
      }
      std::map<std::string, std::string> doctors;  // with their frequency
      if (attending != "0") doctors[attending] = "";
      for (const TableRow& visit : visits_)
        if (visit.at("PatientId") == id) doctors[visit.at("DoctorCode")] = visit.at("Frequency");
      for (const auto& [doctor, frequency] : doctors)
        add(doctor, lineOf(patient, doctor, frequency, lastCare(id, doctor), question));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
  }

  void compare(const RoundsQuestion& question) {
    const RoundsFound found = findRounds(readRoundsOffice(), question);
    Strings lines = linesOf(
        *found.visits, {"Names", "Facility", "Doctor", "Role", "LastVisit", "DueSince", "State"});
    std::sort(lines.begin(), lines.end());
    EXPECT_EQ(lines, expect(question));
    comparePlaces(found);
  }

  // A place says what its rows come to.
  static void comparePlaces(const RoundsFound& found) {
    std::map<std::string, int> visits;
    std::map<std::string, std::set<std::string>> patients;
    for (const std::string& line : linesOf(*found.visits, {"Part", "Names"})) {
      const std::string part = line.substr(0, line.find('|'));
      for (const std::string& place : {part, std::string("0")}) {
        ++visits[place];
        patients[place].insert(line);
      }
    }
    for (const std::string& line : linesOf(*found.places, {"Part", "Patients", "Visits"})) {
      const std::string part = line.substr(0, line.find('|'));
      EXPECT_EQ(line, concat(part, "|", patients[part].size(), "|", visits[part]));
    }
  }

 private:
  std::vector<TableRow> patients_, visits_, charges_;
};

TEST_F(RoundsTest, EveryVisitOfAnOfficeOfChanceIsThereWithItsDay) {
  for (unsigned seed = 1; seed <= kOffices; ++seed) {
    SCOPED_TRACE(concat("office ", seed));
    makeOffice(seed);
    // Told apart by their names alone, and doctors named by their numbers.
    run("UPDATE Patient SET Names = PatientId");
    run("UPDATE Doctors SET Description = DoctorCode");
    readTables();
    const std::map<std::int64_t, std::int64_t> days{{1, 1}, {2, 7 + seed % 7}};
    for (const Show show : {Show::due, Show::all, Show::noCharge}) {
      compare({.show = show, .today = now.date, .days = days});
      compare({.show = show, .doctor = 1 + seed % 5, .today = now.date, .days = days});
    }
    compare({.show = Show::due, .today = now.date});
  }
}

TEST_F(RoundsTest, RowsStandByFacilityWardAndPatient) {
  makeOffice(7);
  Strings places =
      linesOf(*findRounds(readRoundsOffice(), {.show = Show::all, .today = now.date}).visits,
              {"Facility", "Ward", "Names"});
  EXPECT_GT(places.size(), 5U);
  for (std::string& line : places) std::ranges::replace(line, '|', '\1');  // ends before a blank
  EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
}

}  // namespace
}  // namespace bw
