#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <set>

#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLCharges.h"
#include "data/BWSQLPatients.h"
#include "data/SavedQueries.h"
#include "data/Schema.h"
#include "engine/PostgresEngine.h"
#include "text/Text.h"

// Desks, a process each, that insert, post, delete and move charges while somebody kills the server
// or cuts the connections. Each keeps account of what it was told and compares it in the end:
//   desks ADDRESS DESKS ROUNDS
// Says "again" on a line whenever some hundred changes were acknowledged, for whoever kills, and
// ends after so many. 0 when nothing that was acknowledged is missing and nothing else is there.

namespace bw {
namespace {

constexpr int kChangesARound = 400;
constexpr std::int16_t kFirstPatient = 25000;  // each desk has two

struct Shared {
  std::atomic<int> acknowledged{0};
  std::atomic<bool> ended{false};
};

struct Key {
  std::int16_t patient;
  std::int32_t second;  // of the day on which all are entered
  auto operator<=>(const Key&) const = default;
};

// What became of a charge: one of several states, when the answer to a change was that it is
// unknown.
using States = std::set<int>;  // of its status; kGone
constexpr int kGone = -1;

class Desk {
 public:
  Desk(int number, Shared& shared)
      : shared_(shared), random_(static_cast<unsigned>(number)),
        home_(static_cast<std::int16_t>(kFirstPatient + 2 * number)) {
    services().now = [this] { return DateTime{day_, TimeOfDay{second_}}; };
    services().message = [](const std::string&) {};
  }

  void work() {
    while (!shared_.ended) {
      const auto chance = random_() % 20;
      if (chance < 10 || charges_.empty())
        insert();
      else if (chance < 18)
        change(chance < 15);
      else
        move();
    }
  }

  // The number of faults.
  int compare() {
    int faults = 0;
    std::map<Key, int> stored;
    const RecordSetRef rows = readThrough(
        concat("SELECT c.*, (SELECT count(*) FROM ChargeDiagnosis d WHERE d.PatientId = "
               "c.PatientId AND d.ChargeTime = c.ChargeTime) AS details FROM PatientCharges c "
               "WHERE c.PatientId IN (",
               home_, ", ", home_ + 1, ")"));
    for (; !rows->EOF_(); rows->MoveNext()) {
      const Key key{rows->code("PatientId"), rows->time("ChargeTime").second};
      stored[key] = rows->code("Status");
      if (rows->integer("details") == 2) continue;
      std::cerr << "half a charge of patient " << key.patient << '\n';
      ++faults;
    }
    for (const auto& [key, states] : charges_) {
      const auto found = stored.find(key);
      const int state = found == stored.end() ? kGone : found->second;
      if (states.contains(state)) continue;
      std::cerr << "patient " << key.patient << ", second " << key.second << ": " << state
                << " instead of " << *states.begin() << '\n';
      ++faults;
    }
    for (const auto& [key, state] : stored) faults += charges_.contains(key) ? 0 : 1;
    std::cerr << concat("desk of ", home_, ": ", charges_.size(), " charges, ", lost_, " lost, ",
                        unknown_, " unknown, ", faults, " faults\n");
    return faults;
  }

 private:
  // What a routine's answer means; an error that hides its text is never one of the unknown.
  bool isDone(int result, const std::string& message) {
    isUnknown_ = message == refusalSentence(Refusal::unknown);
    unknown_ += isUnknown_ ? 1 : 0;
    lost_ += result != 0 && !isUnknown_ ? 1 : 0;
    if (result == 0) ++shared_.acknowledged;
    return result == 0;
  }
  // Notes what became of a charge that was to get into a state.
  template <class Change>
  void attempt(States& states, int state, Change change) {
    std::string message;
    if (isDone(change(message), message))
      states = {state};
    else if (isUnknown_)
      states.insert(state);
  }
  std::int16_t either() {
    return static_cast<std::int16_t>(home_ + static_cast<int>(random_() % 2));
  }

  void insert() {
    const Key key{either(), ++second_};
    attempt(charges_[key] = {kGone}, 0, [&](std::string& message) {
      Date date;
      TimeOfDay time;
      return ChargeInsert(key.patient, date, time, day_, 1, 1, 1, 1, ";1;2;", ";1;", 0, message);
    });
  }
  // Posts or deletes any that is there.
  void change(bool posts) {
    auto charge = charges_.begin();
    std::advance(charge, static_cast<std::ptrdiff_t>(random_() % charges_.size()));
    if (charge->second.contains(kGone)) return;
    const auto& [patient, second] = charge->first;
    attempt(charge->second, posts ? 1 : kGone,
            [&, patient = patient, second = second](std::string& message) {
              return posts ? ChargeSetPrintLot(patient, day_, {second}, 7, 1, message)
                           : ChargeDelete(patient, day_, {second}, message);
            });
  }
  // All charges of one patient to the other.
  void move() {
    const std::int16_t from = either();
    const auto to = static_cast<std::int16_t>(2 * home_ + 1 - from);
    std::string message;
    const bool done = isDone(PatientTransferCharges(to, from, message), message);
    if (!done && !isUnknown_) return;
    if (isUnknown_) std::_Exit(3);  // nothing tells where each of them is: nothing to compare
    std::map<Key, States> moved;
    for (const auto& [key, states] : charges_) moved[{to, key.second}] = states;
    for (const auto& [key, states] : charges_)
      if (key.patient == to && !states.contains(kGone)) moved[key] = states;
    charges_ = std::move(moved);
  }

  // After the last blow the first attempts may find the server not up yet.
  static RecordSetRef readThrough(const std::string& statement) {
    for (int tries = 0;; ++tries) try {
        return DatabaseConnection.Read(statement);
      } catch (const RuntimeError&) {
        if (tries == 100) throw;
        usleep(100000);
      }
  }

  Shared& shared_;
  std::mt19937 random_;
  std::int16_t home_;
  Date day_ = *makeDate(2003, 6, 15);
  std::int32_t second_ = 0;
  std::map<Key, States> charges_;
  bool isUnknown_ = false;
  int lost_ = 0;
  int unknown_ = 0;
};

void makeOffice(const std::string& address, int desks) {
  const std::unique_ptr<Engine> engine = openPostgres(address);
  createSchema(*engine);
  for (const char* statement :
       {"INSERT INTO Insurance VALUES (1, 'Mutual', '')",
        "INSERT INTO DiagnosisFamily VALUES (1, 'Heart')",
        "INSERT INTO Diagnosis (DiagnosisCode, DiagnosisFamilyCode) VALUES (1, 1), (2, 1)",
        "INSERT INTO Procedures (ProcedureCode) VALUES (1)",
        "INSERT INTO Facility VALUES (1, 'General', 1, '', '')",
        "INSERT INTO Doctors VALUES (1, 'Ames', '')",
        "INSERT INTO EvaluationManagement VALUES (1, 'Visit', 1, 1, 2, '', '', 1, 1, 2)"})
    engine->execute(statement);
  engine->execute(concat("INSERT INTO Patient (PatientId, InsuranceCode) SELECT ", kFirstPatient,
                         " + i, 1 FROM generate_series(0, ", 2 * desks - 1, ") AS i"));
}

int runDesk(const std::string& address, int number, Shared& shared) {
  DatabaseConnection = officeConnection(openPostgres(address));
  Desk desk(number, shared);
  desk.work();
  return desk.compare() == 0 ? 0 : 1;
}

int runAll(const std::string& address, int desks, int rounds) {
  makeOffice(address, desks);
  void* memory =
      mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  auto& shared = *new (memory) Shared;
  for (int number = 0; number < desks; ++number)
    if (fork() == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      std::_Exit(runDesk(address, number, shared));
    }
  for (int round = 0; round < rounds; ++round) {
    const int before = shared.acknowledged;
    while (shared.acknowledged < before + kChangesARound) usleep(1000);
    std::cout << "again" << std::endl;
    std::string answer;
    if (!std::getline(std::cin, answer)) return 2;  // nobody is there to kill any more
  }
  shared.ended = true;
  int faults = 0;
  for (int status = 0; wait(&status) > 0;) faults += status == 0 ? 0 : 1;
  std::cerr << concat(static_cast<int>(shared.acknowledged), " changes, ", faults,
                      " desks with faults\n");
  return faults == 0 ? 0 : 1;
}

}  // namespace
}  // namespace bw

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  return bw::runAll(argv[1], std::atoi(argv[2]), std::atoi(argv[3]));
}
