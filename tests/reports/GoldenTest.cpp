#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>

#include "core/Principal.h"
#include "reports/ApoyoImpresion.h"
#include "tests/data/DataFixture.h"
#include "tests/tools/TemporaryFolder.h"
#include "viewer/CsvExport.h"

// A folder of golden/ is a case: case.tsv tells what is reported, expected.myv is the document and
// expected.csv the table that the viewer makes of it, byte by byte. A new case is a new folder.
// "more" names a file beside golden/ with lines that several cases share.

namespace bw {
namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

std::vector<std::string> caseNames() {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(GOLDEN_FOLDER))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

std::string tableOf(const std::string& document) {
  std::string csv;
  EXPECT_TRUE(exportCsv(
      Document{DocumentBytes(document)}, [&csv](std::string_view piece) { csv += piece; },
      [](std::size_t, std::size_t) { return true; }));
  return csv;
}

class GoldenTest : public DataTest, public ::testing::WithParamInterface<std::string> {
 protected:
  GoldenTest() { seedOffice(); }

  void read(const fs::path& file, std::map<std::string, std::string>& settings) {
    std::ifstream lines(file);
    ASSERT_TRUE(lines) << file;
    for (std::string line; std::getline(lines, line);) {
      const std::size_t tab = line.find('\t');
      const std::string key = line.substr(0, tab);
      const std::string value = line.substr(tab + 1);
      if (key == "sql")
        run(value);
      else if (key == "more")
        read(fs::path(GOLDEN_FOLDER) / ".." / value, settings);
      else
        settings[key] = value;
    }
  }

  void write(std::map<std::string, std::string>& settings, const fs::path& document) {
    const RecordSetRef records = DatabaseConnection.Read(settings["records"]);
    double width = 0;
    double height = 0;
    std::istringstream(settings["page"]) >> width >> height;
    const bool real = settings["codes"] == "real";
    const std::string& title = settings["title"];
    const std::string& subtitles = settings["subtitles"];
    if (settings["report"] == "list")
      ListReportWrite(records, document, width, height, "", title, subtitles, settings["heads"],
                      settings["fields"]);
    else if (settings["report"] == "detail")
      ChargesDetailReport(records, document, width, height, "", title, subtitles, real);
    else if (settings["report"] == "billing")
      ChargesBillingReport(records, document, width, height, "", title, subtitles, real);
    else
      ADD_FAILURE() << "There is no report " << settings["report"];
  }

  TemporaryFolder folder;
};

TEST_P(GoldenTest, IsWrittenByteByByte) {
  const fs::path golden = fs::path(GOLDEN_FOLDER) / GetParam();
  const fs::path document = folder / "report.myv";
  services().view = [](const fs::path&) {};
  std::map<std::string, std::string> settings;
  read(golden / "case.tsv", settings);
  write(settings, document);
  EXPECT_EQ(contents(document), contents(golden / "expected.myv"));
  EXPECT_EQ(tableOf(contents(document)), contents(golden / "expected.csv"));
}

INSTANTIATE_TEST_SUITE_P(Cases, GoldenTest, ::testing::ValuesIn(caseNames()),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace bw
