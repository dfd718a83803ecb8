#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

#include "core/Principal.h"
#include "data/SavedQueries.h"
#include "reports/ApoyoImpresion.h"
#include "reports/ApoyoMyView.h"
#include "tests/data/DataFixture.h"
#include "tests/server/TestDatabase.h"
#include "tests/tools/TemporaryFolder.h"
#include "text/Text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

class DocumentTest : public DataTest {
 protected:
  DocumentTest() {
    seedOffice();
    services().view = [this](const fs::path&) { ++viewed; };
  }

  void writeDoctors(const char* statement = "SELECT * FROM Doctors") {
    ListReportWrite(DatabaseConnection.Read(statement), document, 8, 11, "", "Doctors (All)", "",
                    "Description,2;", "Description,2;");
  }
  std::string document_() { return folder.read("documents/DoctorsView.myv"); }
  std::ptrdiff_t files() const {
    return std::distance(fs::directory_iterator(document.parent_path()), {});
  }

  TemporaryFolder folder;
  fs::path document = folder / "documents/DoctorsView.myv";
  int viewed = 0;
};

TEST_F(DocumentTest, IsTheUsersAloneAndReplacesTheOneBefore) {
  folder.write("documents/DoctorsView.myv", "before");
  fs::remove_all(document.parent_path());
  writeDoctors();
  // What a process of this number left when it was ended.
  folder.write("documents/DoctorsView.myv." + std::to_string(getpid()), "half");
  writeDoctors();
  EXPECT_EQ(fs::status(document).permissions(), fs::perms{0600});
  EXPECT_EQ(fs::status(document.parent_path()).permissions(), fs::perms{0700});
  EXPECT_EQ(files(), 1);
  EXPECT_EQ(viewed, 2);
}

TEST_F(DocumentTest, WithoutRecordsNothingIsWrittenOrStarted) {
  writeDoctors("SELECT * FROM Doctors WHERE DoctorCode=99");
  EXPECT_FALSE(fs::exists(document.parent_path()));
  EXPECT_EQ(viewed, 0);
}

TEST_F(DocumentTest, ADiskThatIsFullLeavesTheOldDocument) {
  folder.write("documents/DoctorsView.myv", "before");
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit full{.rlim_cur = 1000, .rlim_max = before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  writeDoctors();
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(takeMessages(), Strings{"The document cannot be written: " + document.string() +
                                    ": File too large. The document that was there before is "
                                    "unchanged."});
  EXPECT_EQ(document_(), "before");
  EXPECT_EQ(files(), 1);
  EXPECT_EQ(viewed, 0);
}

TEST_F(DocumentTest, AFolderThatCannotBeMadeIsTold) {
  folder.write("documents", "a file, not a folder");
  writeDoctors();
  EXPECT_EQ(takeMessages().size(), 1U);
  EXPECT_EQ(viewed, 0);
}

TEST_F(DocumentTest, AnUnknownFieldEndsTheReportAndLeavesTheOldDocument) {
  folder.write("documents/DoctorsView.myv", "before");
  EXPECT_THROW(ListReportWrite(DatabaseConnection.Read("SELECT * FROM Doctors"), document, 8, 11,
                               "", "", "", "A,1;", "NoSuchField,1;"),
               RuntimeError);
  EXPECT_EQ(document_(), "before");
  EXPECT_EQ(files(), 1);
  EXPECT_THROW(ViewerFooterBar(1, 1, 1), RuntimeError);
}

TEST_F(DocumentTest, AMissingViewerRaisesBehindACompleteDocument) {
  services().view = [](const fs::path&) { throw RuntimeError(ErrorNumber::fileNotFound); };
  try {
    writeDoctors();
    ADD_FAILURE();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.text(), "File not found");
  }
  EXPECT_TRUE(document_().ends_with(",\r\n"));
}

TEST_F(DocumentTest, ARowThatIsBeingEditedShowsItsNewValuesAndNoValueIsEmpty) {
  const RecordSetRef doctors = DatabaseConnection.Read("SELECT * FROM Doctors");
  ViewerDocument open(document, 8, 11);
  const auto cells = [&] { ViewerRowCells(doctors, 0, 0, 1, kBlack, 10, 0, "Description,1;", 1); };
  cells();
  doctors->set("Description", "changed");
  cells();
  doctors->Update();
  cells();
  doctors->set("Description", "again");
  cells();
  doctors->set("Description", Value());
  doctors->Update();
  cells();
  open.close();
  std::string expected = "MYVIEWER10,8,11\r\n";
  for (const char* text : {"Ames", "changed", "changed", "again", ""})
    expected += std::string("1,0,0,1440,1440,,0,0,1,,,0,,Times New Roman,10,0,1,,") + text + "\r\n";
  EXPECT_EQ(document_(), expected);
}

TEST_F(DocumentTest, TextsThatAreLookedUpPrintAsThoseThatTheEngineDelivered) {
  run(relationsOff());
  run("INSERT INTO Doctors VALUES (5, 'Núñez-Lindqvist, María Josefa', '')");
  run("INSERT INTO PatientCharges VALUES "
      "(25000, #06/03/2003#, #08:00:00#, #06/02/2003#, 1, 1, 9, 5, 1, 7), "
      "(25001, #06/02/2003#, #08:00:00#, #06/02/2003#, 1, 1, 5, 2, 3, NULL)");
  const auto printed = [this](std::span<const LookedUpQuery> lookedUp) {
    DatabaseConnection.lookedUpQueries = lookedUp;
    const RecordSetRef charges = DatabaseConnection.Read("SELECT * FROM ChargesDescriptive");
    ViewerDocument open(document, 8, 11);
    const char* few = "Names,2;Doctor,2;";
    const std::pair<const char*, const char*> tables[] = {
        {"ChargeDate DESC",
         "Names,1;DateOfBirth,1;Doctor,2;ReferDoctor,2;StatusDescription,1;PrintLot,1;"},
        {"ChargeDate DESC", few},
        {"ChargeDate", few}};
    for (const auto& [sort, columns] : tables) {
      charges->setSort(sort);
      for (charges->MoveFirst(); !charges->EOF_(); charges->MoveNext())
        ViewerRowCells(charges, 0, 0, 1, kBlack, 10, 0, columns, 1);
      charges->MoveFirst();
      charges->set("Doctor", "written");
      charges->Update();
    }
    open.close();
    return document_();
  };
  const std::string expected = printed({});
  EXPECT_NE(expected.find(toWindows1252("Núñez-Lindqvist, María Josefa")), expected.npos);
  EXPECT_TRUE(expected.ends_with(",written\r\n"));  // of the first charge, by then the last
  EXPECT_EQ(printed(lookedUpQueries()), expected);
}

TEST_F(DocumentTest, LongWorkIsShownAndEndsAlsoWhenItFails) {
  services().patience = {};
  std::vector<bool> ended;
  services().progress = [&](const WorkProgress& work) { ended.push_back(work.ended); };
  writeDoctors();
  ASSERT_GE(ended.size(), 2U);
  EXPECT_FALSE(ended.front());
  EXPECT_TRUE(ended.back());
}

}  // namespace
}  // namespace bw
