#include "review/Rounds.h"

#include <algorithm>
#include <optional>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "records/KeyIndex.h"
#include "review/ChargeTable.h"
#include "review/ResultRows.h"
#include "review/Statements.h"
#include "text/Text.h"

namespace bw {
namespace {

// The text that a row of a catalogue has, "" for one that is not there.
class NamesByCode {
 public:
  NamesByCode(const RowStore& rows, std::string_view code)
      : index_(rows.columns[rows.indexOf(code)]), name_(rows, "Description") {}
  std::string_view operator()(std::int64_t code) const {
    const std::uint32_t row = index_.row(code);
    return row == KeyIndex::kNone ? std::string_view() : name_.text(row);
  }

 private:
  KeyIndex index_;
  TableColumn name_;
};

// The last day of care of the patients asked for: by each doctor, and by anybody (doctor 0).
class LastCare {
 public:
  LastCare(const RowStore& care, const RowStore& patients) {
    std::vector<bool> wanted(kPatients);
    const TableColumn asked(patients, "PatientId");
    for (std::size_t row = 0; row < patients.rowCount(); ++row) wanted[placeOf(asked(row))] = true;
    const TableColumn patient(care, "PatientId");
    const TableColumn doctor(care, "DoctorCode");
    const TableColumn day(care, "ChargeRealDate");
    for (std::size_t row = 0; row < care.rowCount(); ++row) {
      if (!wanted[placeOf(patient(row))]) continue;
      take(patient(row), doctor(row), day(row));
      take(patient(row), 0, day(row));
    }
  }

  // Column::kNull for none.
  std::int64_t operator()(std::int64_t patient, std::int64_t doctor) const {
    const auto found = days_.find(keyOf(patient, doctor));
    return found == days_.end() ? Column::kNull : found->second;
  }

 private:
  static constexpr std::size_t kPatients = 65536;
  static std::size_t placeOf(std::int64_t patient) { return static_cast<std::uint16_t>(patient); }
  static std::int64_t keyOf(std::int64_t patient, std::int64_t doctor) {
    constexpr std::int64_t kDoctors = 65536;
    return patient * kDoctors + doctor;
  }
  void take(std::int64_t patient, std::int64_t doctor, std::int64_t day) {
    std::int64_t& last = days_.try_emplace(keyOf(patient, doctor), day).first->second;
    last = std::max(last, day);
  }

  std::unordered_map<std::int64_t, std::int64_t> days_;
};

struct Visit {
  std::size_t patient = 0;  // row
  std::int64_t doctor = 0;
  std::string_view attention{};
  std::string_view frequency{};
  std::int64_t days = 0;  // between visits; 0: unset
};

// Whether he has to be seen, and since when.
struct Due {
  bool isDue = false;
  std::int64_t since = Column::kNull;
  std::string state{};
};

Due dueOf(std::int64_t last, std::int64_t days, Date today) {
  if (days <= 0) return {};
  if (last == Column::kNull) return {.isDue = true, .state = "no visit yet"};
  const std::int64_t since = last + days;
  const std::int64_t late = today.day - since;
  if (late < 0) return {.since = since};
  return {true, since, late == 0 ? "today" : concat(late, late == 1 ? " day late" : " days late")};
}

class Rounds {
 public:
  Rounds(const RoundsOffice& office, const RoundsQuestion& question)
      : office_(office), question_(question) {}

  RoundsFound find() {
    for (const Visit& visit :
         ordered(question_.show == RoundsQuestion::Show::noCharge ? quiet() : visits()))
      add(visit);
    return {places(), rows_.take()};
  }

 private:
  struct Place {
    std::size_t patient;  // a row that has it
    std::size_t patients = 0;
    std::size_t visits = 0;
  };

  // The attending doctor, unless he stands among the visiting ones, and these.
  std::vector<Visit> visits() const {
    std::vector<Visit> all;
    std::vector<bool> attendingVisits(office_.patients->rowCount());
    const TableColumn patient(*office_.visits, "PatientId");
    const TableColumn doctor(*office_.visits, "DoctorCode");
    const TableColumn attention(*office_.visits, "AttentionTypeDescription");
    const TableColumn frequency(*office_.visits, "Frequency");
    const TableColumn howOften(*office_.visits, "FrequencyDescription");
    const KeyIndex rowOf(office_.patients->columns[office_.patients->indexOf("PatientId")]);
    for (std::size_t row = 0; row < office_.visits->rowCount(); ++row) {
      const std::uint32_t of = rowOf.row(patient(row));
      if (of == KeyIndex::kNone) continue;
      all.push_back(
          {of, doctor(row), attention.text(row), howOften.text(row), daysOf(frequency(row))});
      if (doctor(row) == attending_(of)) attendingVisits[of] = true;
    }
    for (std::size_t of = 0; of < attendingVisits.size(); ++of)
      if (!attendingVisits[of] && attending_(of) != 0)
        all.push_back({.patient = of, .doctor = attending_(of)});
    std::erase_if(all, [this](const Visit& visit) { return !isAskedFor(visit); });
    return all;
  }

  bool isAskedFor(const Visit& visit) const {
    if (question_.doctor != 0 && visit.doctor != question_.doctor) return false;
    return question_.show == RoundsQuestion::Show::all ||
           dueOf(last(visit), visit.days, question_.today).isDue;
  }

  // Patients without a charge, under the doctor who attends them.
  std::vector<Visit> quiet() const {
    std::vector<Visit> all;
    for (std::size_t of = 0; of < office_.patients->rowCount(); ++of) {
      const std::int64_t lastDay = lastCare_(patient_(of), 0);
      const bool isQuiet = lastDay == Column::kNull || lastDay <= question_.today.day - kQuietDays;
      if (isQuiet && (question_.doctor == 0 || attending_(of) == question_.doctor))
        all.push_back({.patient = of, .doctor = attending_(of)});
    }
    return all;
  }

  std::int64_t daysOf(std::int64_t frequency) const {
    const auto found = question_.days.find(frequency);
    return found == question_.days.end() ? 0 : found->second;
  }

  std::int64_t last(const Visit& visit) const {
    return lastCare_(patient_(visit.patient),
                     question_.show == RoundsQuestion::Show::noCharge ? 0 : visit.doctor);
  }

  auto placeKey(std::size_t of) const {
    return std::tuple(facility_.text(of), facilityCode_(of), wards_(ward_(of)), ward_(of));
  }

  std::vector<Visit> ordered(std::vector<Visit> visits) const {
    const auto key = [this](const Visit& visit) {
      return std::tuple_cat(placeKey(visit.patient),
                            std::tuple(names_.text(visit.patient), patient_(visit.patient),
                                       doctors_(visit.doctor), visit.doctor));
    };
    std::sort(visits.begin(), visits.end(),
              [&](const Visit& one, const Visit& other) { return key(one) < key(other); });
    return visits;
  }

  // Visits come in the order of their places and patients.
  void add(const Visit& visit) {
    const std::size_t of = visit.patient;
    if (places_.empty() || placeKey(places_.back().patient) != placeKey(of))
      places_.push_back({of});
    Place& place = places_.back();
    if (place.visits == 0 || latest_ != of) ++place.patients;
    ++place.visits;
    latest_ = of;
    const Due due = dueOf(last(visit), visit.days, question_.today);
    rows_.add({countValue(places_.size()), textValue(facility_.text(of)),
               textValue(wards_(ward_(of))), textValue(names_.text(of)),
               textValue(account_.text(of)), birth_.value(of), textValue(doctors_(visit.doctor)),
               textValue(roleOf(visit)), textValue(visit.attention), textValue(visit.frequency),
               dayValue(last(visit)), dayValue(due.since), due.state});
  }

  std::string_view roleOf(const Visit& visit) const {
    if (visit.doctor == 0) return {};
    return visit.doctor == attending_(visit.patient) ? "Attending" : "Visiting";
  }

  Rows places() const {
    ResultRows rows{{"Part", FieldType::integer},
                    {"Facility"},
                    {"Ward"},
                    {"Patients", FieldType::integer},
                    {"Visits", FieldType::integer}};
    std::size_t patients = 0;
    std::size_t visits = 0;
    for (const Place& place : places_) {
      patients += place.patients;
      visits += place.visits;
    }
    rows.add({countValue(0), textValue("All facilities"), textValue(""), countValue(patients),
              countValue(visits)});
    for (std::size_t i = 0; i < places_.size(); ++i)
      rows.add({countValue(i + 1), textValue(facility_.text(places_[i].patient)),
                textValue(wards_(ward_(places_[i].patient))), countValue(places_[i].patients),
                countValue(places_[i].visits)});
    return rows.take();
  }

  const RoundsOffice& office_;
  const RoundsQuestion& question_;
  NamesByCode wards_{*office_.wards, "WardCode"};
  NamesByCode doctors_{*office_.doctors, "Code"};
  LastCare lastCare_{*office_.care, *office_.patients};
  TableColumn patient_{*office_.patients, "PatientId"};
  TableColumn names_{*office_.patients, "Names"};
  TableColumn account_{*office_.patients, "AccountNumber"};
  TableColumn birth_{*office_.patients, "DateOfBirth"};
  TableColumn facilityCode_{*office_.patients, "InFacilityCode"};
  TableColumn facility_{*office_.patients, "FacilityName"};
  TableColumn ward_{*office_.patients, "InWardCode"};
  TableColumn attending_{*office_.patients, "InDoctorCode"};
  std::vector<Place> places_;
  std::size_t latest_ = 0;  // the patient of the row before
  ResultRows rows_{{"Part", FieldType::integer},
                   {"Facility"},
                   {"Ward"},
                   {"Names"},
                   {"AccountNumber"},
                   {"DateOfBirth", FieldType::date},
                   {"Doctor"},
                   {"Role"},
                   {"Attention"},
                   {"Frequency"},
                   {"LastVisit", FieldType::date},
                   {"DueSince", FieldType::date},
                   {"State"}};
};

}  // namespace

RoundsOffice readRoundsOffice() {
  OfficeSnapshot snapshot(5);
  RoundsOffice office;
  office.patients = snapshot.read(statements::kAdmitted);
  office.wards = snapshot.read(statements::kWards);
  office.doctors = snapshot.read(statements::kDoctorNames);
  office.visits = snapshot.read(statements::kVisits);
  office.care = snapshot.read(statements::kCareOfAll);
  return office;
}

RoundsFound findRounds(const RoundsOffice& office, const RoundsQuestion& question) {
  return Rounds(office, question).find();
}

}  // namespace bw
