#include "engine/EngineTransaction.h"
#include "tests/tools/ToolsTest.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

class LoadTest : public ToolsTest {
 protected:
  LoadTest() { createDatabase(file_, out_); }

  Exit load(const LoadOptions& options = {}) {
    out_.str("");
    return loadTables(file_, folder_ / "tables", out_, nullptr, options);
  }
  void table(const std::string& name, const std::string& text) {
    folder_.write("tables/" + name + ".tsv", text);
  }
  void insurances(const std::string& rows) {
    table("Insurance", "InsuranceCode\tDescription\tBillingInsuranceCode\n" + rows);
  }
  void patients(const std::string& rows) {
    table("Patient",
          "PatientId\tNames\tDateOfBirth\tAccountNumber\tInsuranceCode\tInFacilityCode\t"
          "InWardCode\tInDoctorCode\tLastChargeDate\tZITS\n" +
              rows);
  }
  void doctors(const std::string& rows) {
    table("Doctors", "DoctorCode\tDescription\tBillingDoctorCode\n" + rows);
  }
};

TEST_F(LoadTest, LoadsInTheOrderOfRelationsWhateverTheFilesLookLike) {
  // Sorted by name, each of these stands before what it refers to.
  table("Diagnosis",
        "\xEF\xBB\xBF"
        "Description\tdiagnosiscode\tDiagnosisFamilyCode\tRealDiagnosisCode\tBillingDiagnosisCode"
        "\r\nL'été \"1\"\t7\t3\tR;--\t\r\n");
  table("DIAGNOSISFAMILY", "DiagnosisFamilyCode\tDiagnosisFamilyDescription\n3\tHeart");
  insurances("1\tMutual\t\n");
  patients("25000\tAda\t1950-01-31\t\t1\t0\t0\t0\t\t1999-12-23 10:20:32\n");
  // A lookup row that stands already gets its new text, though rows may use it; a new one is added.
  table("ChargeTypes", "ChargeTypeCode\tDescription\tDoctorCaption\n2\tIt's out\tBy\n3\tC\tD\n");
  ASSERT_EQ(load(), Exit::done) << out_.str();
  EXPECT_EQ(cells("SELECT * FROM Diagnosis"), "7|L'été \"1\"|3|R;--||0|");
  EXPECT_EQ(cells("SELECT AccountNumber, LastChargeDate IS NULL, ZITS FROM Patient"),
            "|1|12/23/1999 10:20:32 AM|");
  EXPECT_EQ(cells("SELECT * FROM ChargeTypes"), "1|Inpatient|Attending|2|It's out|By|3|C|D|");
  EXPECT_TRUE(has(out_.str(), {"Loaded 6 rows"}));
}

TEST_F(LoadTest, NamesEveryRefusedRowAndLoadsNothing) {
  insurances("1\tMutual\t\n1\tTwice\t\n");
  patients(
      "1\tAda\t1950-02-31\t\t1\t0\t0\t0\t\t\n"
      "2\tBea\t1950-01-31\t\t9\t0\t0\t0\t\t\n"
      "3\tCora\t1950-01-31\t\t1\t0\t9\t0\t\t\n"
      "4\tDora\n"
      "40000\tEve\t\t\t1\t0\t0\t0\t\t\n"
      "5\t\xFF\t\t\t1.5\t0\t0\t0\t\t\n"
      "6\tFay\t\t\t\t0\t0\t0\t\t\n"
      "7\tFine\t\t\t1\t0\t0\t0\t\t\n");
  EXPECT_EQ(load(), Exit::refused);
  EXPECT_EQ(
      out_.str(),
      "Insurance.tsv, line 3, InsuranceCode: There is a record with the same key already.\n"
      "Patient.tsv, line 2, DateOfBirth: \"1950-02-31\" is not a date like 2021-03-09.\n"
      "Patient.tsv, line 3, InsuranceCode: there is no such row in Insurance.\n"
      "Patient.tsv, line 4, InWardCode: there is no such row in FacilityWards.\n"
      "Patient.tsv, line 5: the row has 2 cells, the header 10.\n"
      "Patient.tsv, line 6, PatientId: PatientId is out of range: the number is too large or too "
      "small to be stored.\n"
      "Patient.tsv, line 7, Names: \"\xFF\" is not a text in UTF-8.\n"
      "Patient.tsv, line 7, InsuranceCode: \"1.5\" is not a whole number.\n"
      "Patient.tsv, line 8, InsuranceCode: A value is missing: Patient.InsuranceCode.\n"
      "Nothing was loaded. Refused: 9.\n");
  EXPECT_EQ(cells("SELECT count(*) FROM Patient") + cells("SELECT count(*) FROM Insurance"),
            "0|0|");
}

TEST_F(LoadTest, ReadsWhatSpreadsheetsWrite) {
  const LoadOptions windows{.code = TextCode::windows1252};
  folder_.write("tables/Doctors.CSV",
                "\"DoctorCode\";Description;BillingDoctorCode\r\n"
                "1;\"M\xfcller; \"\"Jr.\"\"\r\n\x80\";\r\n"
                "\"2\";5\" tube;\"\"\r\n");
  ASSERT_EQ(load(windows), Exit::done) << out_.str();
  EXPECT_EQ(cells("SELECT * FROM Doctors"), "1|Müller; \"Jr.\"\r\n€||2|5\" tube||");

  const auto refusal = [&](const std::string& rows) {
    folder_.write("tables/Doctors.csv", "DoctorCode,Description,BillingDoctorCode\n" + rows);
    return refusalOf([&] { load(windows); });
  };
  std::filesystem::remove(folder_ / "tables/Doctors.CSV");
  EXPECT_EQ(refusal("3,\"a\nb\",\n4,\"open,\n5,c,\n"),
            "Doctors.csv, line 4: a quoted cell does not end.");
  EXPECT_EQ(refusal("3,\"a\"b,\n"),
            "Doctors.csv, line 2: text stands behind the closing quote of a cell.");
  EXPECT_EQ(refusal("3,a,\n4,\x81,\n"), "Doctors.csv, line 3: this is no text in Windows-1252.");
  EXPECT_EQ(cells("SELECT count(*) FROM Doctors"), "2|");
}

TEST_F(LoadTest, UpdatesCataloguesAloneAndOnlyWhenAsked) {
  insurances("1\tMutual\tA\n2\tOld\t\n");
  patients("1\tAda\t\t\t1\t0\t0\t0\t\t\n");
  ASSERT_EQ(load(), Exit::done) << out_.str();
  std::filesystem::remove(folder_ / "tables/Patient.tsv");
  insurances("3\tNew\t\n1\tMUTUAL\tA\n2\tOld\t\n");
  EXPECT_EQ(load(), Exit::refused);
  EXPECT_EQ(load({.dryRun = true, .update = true}), Exit::done);
  const std::string count = "Insurance: 3 rows (new: 1, changed: 1, as they stood: 1)\n";
  EXPECT_EQ(out_.str(), count + "Only tried: 3 rows from " + (folder_ / "tables").string() +
                            " would be taken. Nothing was loaded.\n");
  const std::string all = "SELECT InsuranceCode, Description FROM Insurance";
  EXPECT_EQ(cells(all), "1|Mutual|2|Old|");
  ASSERT_EQ(load({.update = true}), Exit::done);
  EXPECT_EQ(out_.str().substr(0, count.size()), count);
  EXPECT_EQ(cells(all), "1|MUTUAL|2|Old|3|New|");

  // A number that stands twice in the file, and a patient who is there.
  insurances("1\tA\t\n1\tB\t\n");
  patients("1\tEve\t\t\t1\t0\t0\t0\t\t\n");
  EXPECT_EQ(load({.update = true}), Exit::refused);
  EXPECT_TRUE(
      has(out_.str(), {"Insurance.tsv, line 3, InsuranceCode", "Patient.tsv, line 2, PatientId"}));
  EXPECT_EQ(cells(all) + cells("SELECT Names FROM Patient"), "1|MUTUAL|2|Old|3|New|Ada|");
}

TEST_F(LoadTest, NamesUnknownAndMissingColumns) {
  table("Doctors", "DoctorCode\tName\tdoctorcode\n1\tOne\t1\n");
  EXPECT_EQ(load(), Exit::refused);
  EXPECT_EQ(out_.str(),
            "Doctors.tsv, line 1, Name: the table has no column of this name.\n"
            "Doctors.tsv, line 1, DoctorCode: the column stands twice.\n"
            "Doctors.tsv, line 1, Description: the column is missing.\n"
            "Doctors.tsv, line 1, BillingDoctorCode: the column is missing.\n"
            "Nothing was loaded. Refused: 4.\n");
}

TEST_F(LoadTest, TheListOfTablesTellsWhatFilesMayHold) {
  printTables(out_);
  EXPECT_TRUE(has(
      out_.str(),
      {"\nPatient: patients\n",
       "\n  PatientId       number: a whole number from -32768 to 32767, not 0; key\n",
       "\n  DateOfBirth     date of birth: a date like 2021-03-09, or empty\n",
       "\n  InWardCode      ward of the admission: a whole number from -32768 to 32767; a row of "
       "FacilityWards, or 0 for none\n",
       "\n  Description     name: a text in UTF-8 of at most 255 characters\n",
       "\n  checked       for the program alone: 0; may be left out\n",
       "\n  PatientId, ChargeDate, ChargeTime: a row of PatientCharges\n"}));
}

TEST_F(LoadTest, StopsListingAfterFiftyRefusals) {
  std::string rows;
  for (int i = 0; i < 80; ++i) rows += "x\ty\tz\n";
  doctors(rows);
  EXPECT_EQ(load(), Exit::refused);
  EXPECT_TRUE(has(out_.str(), {"line 51, ", "stopped after 50"}));
  EXPECT_FALSE(has(out_.str(), {"line 52, "}));
}

TEST_F(LoadTest, RefusesFoldersAndStationsThatItCannotLoadFrom) {
  EXPECT_THROW(load(), Refused);  // no folder
  table("Paitent", "a\n");
  EXPECT_THROW(load(), Refused);
  std::filesystem::remove(folder_ / "tables/Paitent.tsv");
  EXPECT_THROW(load(), Refused);  // no files
  doctors("");
  EXPECT_THROW(loadTables(folder_ / "none.db", folder_ / "tables", out_, nullptr), RuntimeError);
  {
    const std::unique_ptr<Engine> other = openSqlite(file_);
    const EngineTransaction held(*other, TransactionKind::writing);
    EXPECT_THROW(load(), RuntimeError) << "before the first row";
  }
  doctors("1\tOne\t\n");
  ASSERT_EQ(load(), Exit::done);
  EXPECT_EQ(load(), Exit::refused);  // the row stands already
}

TEST_F(LoadTest, TheCheckFindsWhatTheEngineWouldRefuse) {
  {
    const std::unique_ptr<Engine> engine = openSqlite(file_);
    for (const char* damage :
         {"PRAGMA foreign_keys=OFF", "PRAGMA ignore_check_constraints=ON",
          "INSERT INTO Patient (PatientId, Names, DateOfBirth, InsuranceCode, InFacilityCode) "
          "VALUES (1, 'Ada', '2003-02-31', 9, 0)",
          "INSERT INTO ChargeDiagnosis VALUES (1, '2003-06-15', '14:05:09', 3)",
          "INSERT INTO Doctors VALUES (40000, 'Far', '')", "DELETE FROM Frequency",
          "DROP VIEW Coverage", "CREATE VIEW Coverage AS SELECT 1 AS DoctorCode"})
      engine->execute(damage);
  }
  EXPECT_TRUE(has(
      checked(Exit::findings),
      {"Frequency has no rows", "Patient: DateOfBirth holds no date (rows: 1, first: PatientId 1)",
       "Patient: InsuranceCode names no row of Insurance (rows: 1, first: PatientId 1)",
       "Doctors: DoctorCode holds no number, or one out of range (rows: 1",
       "ChargeDiagnosis: DiagnosisCode names no row of Diagnosis",
       "ChargeDiagnosis: PatientId, ChargeDate, ChargeTime names no row of PatientCharges",
       "Coverage declares another type for the column DoctorCode",
       "Coverage lacks the column CoveringDoctorCode"}));

  std::filesystem::remove(folder_ / "office.dw");
  std::filesystem::permissions(file_, std::filesystem::perms::group_read,
                               std::filesystem::perm_options::add);
  run("DROP TABLE PatientHistory");
  EXPECT_TRUE(has(checked(Exit::findings), {"The workgroup file cannot be read: ", "Other users",
                                            "PatientHistory cannot be read: "}));
}

}  // namespace
}  // namespace bw
