#include "engine/RelaxedSync.h"

#include <cerrno>

#include "core/Principal.h"
#include "tests/crash/Office.h"
#include "tests/text/Raised.h"

namespace bw {
namespace {

class RelaxedSyncTest : public CrashTest {
 protected:
  void SetUp() override {
    makeAnew(file_);
    connect(file_);
    full_ = synchronous();
  }
  static std::string synchronous() { return rows("PRAGMA synchronous"); }

  std::string full_;
};

TEST_F(RelaxedSyncTest, LastsAsLongAsItLivesAndNotWhereItCannotBe) {
  {
    RelaxedSync relaxed(DatabaseConnection);
    EXPECT_NE(synchronous(), full_);
    relaxed.finish();
    EXPECT_EQ(synchronous(), full_);
  }
  { const RelaxedSync relaxed(DatabaseConnection); }
  EXPECT_EQ(synchronous(), full_);
  DatabaseConnection.BeginTrans();
  { const RelaxedSync relaxed(DatabaseConnection); }
  DatabaseConnection.RollbackTrans();
  EXPECT_EQ(synchronous(), full_);
  closeConnection();
  const RelaxedSync relaxed(DatabaseConnection);
}

TEST_F(RelaxedSyncTest, WhatIsStoredAlreadyIsNotToldAsLost) {
  const struct {
    Fault fault;
    const char* reason;
  } cases[] = {
      {{.call = Call::sync, .nth = 1, .error = EIO, .lasts = true},
       "the disk did not confirm it. Please make a copy of the database on another disk."},
      {{.call = Call::write, .nth = 1, .error = ENOSPC, .lasts = true},
       "the disk is full. Please make room. The next record that is stored makes it safe."}};
  for (const auto& [fault, reason] : cases) {
    RelaxedSync relaxed(DatabaseConnection);
    run("UPDATE Insurance SET BillingInsuranceCode = 'L'");
    const FaultyDisk disk(fault);
    EXPECT_EQ(refusalOf([&] { relaxed.finish(); }),
              std::string("Everything that was done is stored, but it is not safe from a power cut "
                          "yet: ") +
                  reason);
    EXPECT_EQ(rows("SELECT DISTINCT BillingInsuranceCode FROM Insurance"), "L");
  }
  EXPECT_EQ(synchronous(), full_);
}

}  // namespace
}  // namespace bw
