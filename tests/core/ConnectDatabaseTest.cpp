#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "core/ApoyoConeccion.h"
#include "core/Principal.h"
#include "platform/Workgroup.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

class ConnectDatabaseTest : public ::testing::Test {
 protected:
  ConnectDatabaseTest() {
    resetShared();
    std::string pattern = (fs::temp_directory_path() / "bw-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder = pattern;
  }
  ~ConnectDatabaseTest() override {
    resetShared();
    fs::remove_all(folder);
  }

  // Both files of a session; an empty file is an empty database.
  void makeFiles(const std::string& password) {
    DatabasePath = (folder / "office.db").string();
    std::ofstream{DatabasePath};
    std::ofstream(folder / "office.dw") << workgroupText("Kelps", password);
  }

  fs::path folder;
  std::string message = "before";
};

TEST_F(ConnectDatabaseTest, OpensOnceAndThenLeavesTheMessage) {
  makeFiles("Kelps");
  EXPECT_TRUE(ConnectDatabase(message));
  EXPECT_TRUE(DatabaseConnected);
  EXPECT_TRUE(DatabaseConnection.isOpen());
  EXPECT_FALSE(ConnectDatabase(message));
  EXPECT_EQ(message, "before");
}

TEST_F(ConnectDatabaseTest, FailureShowsTheConnectionString) {
  EXPECT_FALSE(ConnectDatabase(message));
  EXPECT_EQ(message, "Falta iniciar Informacion de Bases de datos");
  makeFiles("another");
  EXPECT_FALSE(ConnectDatabase(message));
  EXPECT_EQ(message,
            "Problems stablishing connectionProvider=Microsoft.Jet.OLEDB.4.0;Data Source=" +
                DatabasePath + ";Jet OLEDB:System database=" + (folder / "office.dw").string() +
                ";User Id=Kelps;Password=Kelps");
  EXPECT_FALSE(DatabaseConnected);
  DatabasePath = "x";
  EXPECT_FALSE(ConnectDatabase(message));
  EXPECT_NE(message.find(";Jet OLEDB:System database=w;"), std::string::npos);
}

}  // namespace
}  // namespace bw
