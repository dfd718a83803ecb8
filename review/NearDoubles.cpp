#include "review/NearDoubles.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "records/KeyIndex.h"
#include "review/ChargeTable.h"
#include "review/PatientLikeness.h"
#include "review/ResultRows.h"
#include "review/Statements.h"
#include "text/Text.h"

namespace bw {
namespace {

// So many that share a key are compared each with each; of more, each with so many behind it.
constexpr std::size_t kNeighbours = 100;

constexpr std::size_t kNoReason = SIZE_MAX;

// Groups that grow together.
class Groups {
 public:
  explicit Groups(std::size_t count) : above_(count) {
    std::iota(above_.begin(), above_.end(), 0U);
  }
  std::size_t of(std::size_t one) {
    while (above_[one] != one) one = above_[one] = above_[above_[one]];
    return one;
  }
  void join(std::size_t one, std::size_t other) { above_[of(other)] = of(one); }

 private:
  std::vector<std::size_t> above_;
};

// Which patients are alike, and for each the surest reason.
class Likenesses {
 public:
  Likenesses(const std::vector<LikenessOf>& patients, Doubles wanted)
      : patients_(patients), wanted_(wanted), groups_(patients.size()),
        reasons_(patients.size(), kNoReason) {
    for (std::size_t i = 0; i < likenesses().size(); ++i)
      if (wanted_ == Doubles::all || !likenesses()[i].isExact) look(i);
  }

  std::size_t groupOf(std::size_t patient) { return groups_.of(patient); }
  std::size_t reasonOf(std::size_t patient) const { return reasons_[patient]; }

 private:
  using Keyed = std::pair<std::uint64_t, std::uint32_t>;

  std::vector<Keyed> keysOf(const Likeness& likeness) const {
    std::vector<Keyed> keys;
    std::uint32_t patient = 0;
    const std::function<void(std::uint64_t)> take = [&](std::uint64_t key) {
      keys.emplace_back(key, patient);
    };
    for (; patient < patients_.size(); ++patient) likeness.keys(patients_[patient], take);
    std::sort(keys.begin(), keys.end());
    return keys;
  }

  void look(std::size_t reason) {
    const std::vector<Keyed> keys = keysOf(likenesses()[reason]);
    for (std::size_t i = 0; i < keys.size(); ++i) {
      const std::size_t last = std::min(keys.size(), i + 1 + kNeighbours);
      for (std::size_t other = i + 1; other < last && keys[other].first == keys[i].first; ++other)
        compare(keys[i].second, keys[other].second, reason);
    }
  }

  void compare(std::size_t one, std::size_t other, std::size_t reason) {
    if (one == other || !likenesses()[reason].holds(patients_[one], patients_[other])) return;
    if (wanted_ == Doubles::near && isExact(patients_[one], patients_[other])) return;
    groups_.join(one, other);
    reasons_[one] = std::min(reasons_[one], reason);
    reasons_[other] = std::min(reasons_[other], reason);
  }

  static bool isExact(const LikenessOf& one, const LikenessOf& other) {
    return std::ranges::any_of(likenesses(), [&](const Likeness& likeness) {
      return likeness.isExact && likeness.holds(one, other);
    });
  }

  const std::vector<LikenessOf>& patients_;
  Doubles wanted_;
  Groups groups_;
  std::vector<std::size_t> reasons_;  // none for who is like nobody
};

class Finder {
 public:
  explicit Finder(const DoublesOffice& office) : office_(office) {}

  DoublesFound find(Doubles wanted) {
    gather(Likenesses(looks(), wanted));
    readMoments();
    for (const Group& group : groups_) add(group);
    return {groupRows_.take(), patientRows_.take()};
  }

 private:
  struct Group {
    std::size_t reason = kNoReason;
    std::vector<std::pair<std::size_t, std::size_t>>
        members{};  // reason, patient: the surest first
  };

  std::vector<LikenessOf> looks() const {
    std::vector<LikenessOf> all;
    all.reserve(office_.patients->rowCount());
    for (std::size_t row = 0; row < office_.patients->rowCount(); ++row)
      all.push_back(likenessOf(names_.text(row), birth_(row), account_.text(row)));
    return all;
  }

  void gather(Likenesses likenesses) {
    std::unordered_map<std::size_t, std::size_t> places;
    for (std::size_t row = 0; row < office_.patients->rowCount(); ++row) {
      const std::size_t reason = likenesses.reasonOf(row);
      if (reason == kNoReason) continue;
      const auto [place, isNew] = places.try_emplace(likenesses.groupOf(row), groups_.size());
      if (isNew) groups_.emplace_back();
      Group& group = groups_[place->second];
      group.reason = std::min(group.reason, reason);
      group.members.emplace_back(reason, row);
    }
    for (Group& group : groups_) std::sort(group.members.begin(), group.members.end());
    std::stable_sort(groups_.begin(), groups_.end(), [this](const Group& one, const Group& other) {
      return std::pair(one.reason, nameOf(one)) < std::pair(other.reason, nameOf(other));
    });
  }

  std::string_view nameOf(const Group& group) const {
    return names_.text(group.members.front().second);
  }

  // Of the patients who stand in a group.
  void readMoments() {
    std::vector<std::uint32_t> wanted(office_.patients->rowCount(), 0);
    for (const Group& group : groups_)
      for (const auto& member : group.members) wanted[member.second] = 1;
    moments_.resize(wanted.size());
    const KeyIndex rowOf(office_.patients->columns[office_.patients->indexOf("PatientId")]);
    const TableColumn patient(*office_.moments, "PatientId");
    const TableColumn date(*office_.moments, "ChargeDate");
    const TableColumn time(*office_.moments, "ChargeTime");
    for (std::size_t row = 0; row < office_.moments->rowCount(); ++row) {
      const std::uint32_t of = rowOf.row(patient(row));
      if (of != KeyIndex::kNone && wanted[of] != 0)
        moments_[of].push_back(chargeKey(0, date(row), time(row)));
    }
  }

  // Seconds in which more than one of them has a charge; one patient has none twice.
  std::size_t collisionsOf(const Group& group) const {
    std::vector<std::uint64_t> all;
    for (const auto& member : group.members)
      all.insert(all.end(), moments_[member.second].begin(), moments_[member.second].end());
    std::sort(all.begin(), all.end());
    std::size_t count = 0;
    for (std::size_t i = 1; i < all.size(); ++i)
      if (all[i] == all[i - 1] && (i == 1 || all[i - 2] != all[i])) ++count;
    return count;
  }

  void add(const Group& group) {
    std::size_t charges = 0;
    for (const auto& member : group.members) charges += moments_[member.second].size();
    const Value part = countValue(++parts_);
    const std::size_t collisions = collisionsOf(group);
    groupRows_.add({part, textValue(nameOf(group)), countValue(group.members.size()),
                    textValue(likenesses()[group.reason].words)});
    for (const auto& [reason, row] : group.members)
      patientRows_.add({part, patient_.value(row), textValue(names_.text(row)),
                        textValue(account_.text(row)), birth_.value(row),
                        textValue(insurance_.text(row)), textValue(admitted_.text(row)),
                        textValue(likenesses()[reason].words), countValue(moments_[row].size()),
                        countValue(charges - moments_[row].size()), countValue(collisions)});
  }

  const DoublesOffice& office_;
  TableColumn patient_{*office_.patients, "PatientId"};
  TableColumn names_{*office_.patients, "Names"};
  TableColumn birth_{*office_.patients, "DateOfBirth"};
  TableColumn account_{*office_.patients, "AccountNumber"};
  TableColumn insurance_{*office_.patients, "Description"};
  TableColumn admitted_{*office_.patients, "FacilityName"};
  std::vector<Group> groups_;
  std::vector<std::vector<std::uint64_t>> moments_;  // of entry, by patient
  std::size_t parts_ = 0;
  ResultRows groupRows_{
      {"Part", FieldType::integer}, {"Names"}, {"Patients", FieldType::integer}, {"Reason"}};
  ResultRows patientRows_{{"Part", FieldType::integer},
                          {"PatientId", FieldType::integer},
                          {"Names"},
                          {"AccountNumber"},
                          {"DateOfBirth", FieldType::date},
                          {"Insurance"},
                          {"Admitted"},
                          {"Reason"},
                          {"Charges", FieldType::integer},
                          {"Moving", FieldType::integer},
                          {"Collisions", FieldType::integer}};
};

}  // namespace

DoublesOffice readDoublesOffice() {
  OfficeSnapshot snapshot(2);
  DoublesOffice office;
  office.patients = snapshot.read(statements::kPatients);
  office.moments = snapshot.read(statements::kMoments);
  return office;
}

DoublesFound findDoubles(const DoublesOffice& office, Doubles wanted) {
  return Finder(office).find(wanted);
}

}  // namespace bw
