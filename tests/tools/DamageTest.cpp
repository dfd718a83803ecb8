#include <map>

#include "tests/tools/ToolsTest.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

constexpr std::size_t kPage = 4096;

// A practice office whose pages are damaged one way after another.
class DamageTest : public ToolsTest {
 protected:
  DamageTest() {
    makePractice();
    const std::unique_ptr<Engine> engine = openSqlite(file_);
    const std::shared_ptr<RowStore> trees =
        engine->read("SELECT name, rootpage FROM sqlite_schema WHERE rootpage > 0");
    for (std::size_t row = 0; row < trees->rowCount(); ++row) {
      names_.push_back(textOrEmpty(trees->columns[0].value(row)));
      roots_.push_back(static_cast<std::size_t>(trees->columns[1].raw(row)));
    }
  }
  void SetUp() override {
    sound_ = folder_.read("office.db");
    ASSERT_GT(sound_.size() / kPage, roots_.size());
  }

  std::size_t number(std::size_t at, int bytes) const {
    std::size_t value = 0;
    for (int i = 0; i < bytes; ++i)
      value = value << 8U | static_cast<unsigned char>(sound_[at + static_cast<std::size_t>(i)]);
    return value;
  }
  std::size_t firstLeaf(std::size_t page) const {
    constexpr std::size_t kFirstCell = 12;
    for (;;) {
      const std::size_t start = (page - 1) * kPage;
      if (sound_[start] != 2 && sound_[start] != 5) return page;
      page = number(start + number(start + kFirstCell, 2), 4);
    }
  }
  std::string page(std::size_t number) const { return sound_.substr((number - 1) * kPage, kPage); }
  bool isRefused(const std::string& damaged) const {
    folder_.write("office.db", damaged);
    try {
      openSqlite(file_);
    } catch (const DatabaseRefusal& refusal) {
      return refusal.why() == Refusal::damaged;
    }
    return false;
  }
  std::string with(std::map<std::size_t, std::string> pages) const {
    std::string text = sound_;
    for (const auto& [number, content] : pages) text.replace((number - 1) * kPage, kPage, content);
    return text;
  }

  std::vector<std::string> names_;
  std::vector<std::size_t> roots_;
  std::string sound_;
};

TEST_F(DamageTest, NoTreeWhoseBeginningIsLostIsOpened) {
  EXPECT_FALSE(isRefused(sound_));
  const std::string zeros(kPage, '\0');
  for (std::size_t i = 0; i < roots_.size(); ++i) {
    EXPECT_TRUE(isRefused(with({{roots_[i], zeros}}))) << names_[i];
    EXPECT_TRUE(isRefused(with({{firstLeaf(roots_[i]), zeros}}))) << names_[i];
  }
  for (const std::size_t lost : {std::size_t{1}, kPage / 2, kPage, sound_.size() / 2})
    EXPECT_TRUE(isRefused(sound_.substr(0, sound_.size() - lost))) << lost;
}

TEST_F(DamageTest, NoTwoTreesThatChangedPlacesAreOpened) {
  for (std::size_t i = 0; i < roots_.size(); ++i)
    for (std::size_t apart = 1; apart < 4; ++apart) {
      const std::size_t other = (i + apart) % roots_.size();
      const std::size_t a = firstLeaf(roots_[i]);
      const std::size_t b = firstLeaf(roots_[other]);
      EXPECT_TRUE(
          isRefused(with({{roots_[i], page(roots_[other])}, {roots_[other], page(roots_[i])}})))
          << names_[i] << " " << names_[other];
      EXPECT_TRUE(isRefused(with({{a, page(b)}, {b, page(a)}})))
          << "first leaf: " << names_[i] << " " << names_[other];
    }
}

TEST_F(DamageTest, TheCheckTellsWhereTheDamageIs) {
  const std::string zeros(kPage, '\0');
  std::size_t inner = 0;
  for (std::size_t i = 0; i < roots_.size(); ++i)
    if (names_[i] == "PatientCharges") inner = firstLeaf(roots_[i]) + 1;
  folder_.write("office.db", with({{inner, zeros}}));
  EXPECT_TRUE(has(checked(Exit::findings), {": rows cannot be read behind the one with "}));
  for (const std::size_t lost : {kPage, sound_.size() - 100}) {
    folder_.write("office.db", sound_.substr(0, sound_.size() - lost));
    EXPECT_TRUE(has(checked(Exit::findings), {"damaged"}));
  }
  folder_.write("office.db", sound_);
  run("UPDATE Doctors SET Description = CAST(x'FF41' AS TEXT) WHERE DoctorCode = 1");
  std::filesystem::permissions(folder_.path(), std::filesystem::perms::others_write,
                               std::filesystem::perm_options::add);
  EXPECT_TRUE(has(checked(Exit::findings),
                  {"Doctors: the text in Description cannot be read (DoctorCode 1)",
                   "Other users of this computer can write into the folder"}));
}

}  // namespace
}  // namespace bw
