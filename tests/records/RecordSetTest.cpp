#include "records/RecordSet.h"

#include <functional>
#include <map>

#include "tests/records/Rows.h"
#include "tests/text/Raised.h"

namespace bw {
namespace {

std::string numberOf(ErrorNumber number) { return "!" + std::to_string(static_cast<int>(number)); }

using Steps = std::map<std::string, std::function<void(RecordSet&, const std::string&)>>;
const Steps kSteps{{"at", [](auto& it, auto& to) { it.setAbsolutePosition(std::stol(to)); }},
                   {"first", [](auto& it, auto&) { it.MoveFirst(); }},
                   {"next", [](auto& it, auto&) { it.MoveNext(); }},
                   {"find", [](auto& it, auto& what) { it.Find(what); }},
                   {"filter", [](auto& it, auto& by) { it.setFilter(by); }},
                   {"sort", [](auto& it, auto& by) { it.setSort(by); }},
                   {"add", [](auto& it, auto&) { it.AddNew(); }},
                   {"update", [](auto& it, auto&) { it.Update(); }},
                   {"delete", [](auto& it, auto&) { it.Delete(); }},
                   {"name", [](auto& it, auto& value) { it.set("Names", value); }},
                   {"look", [](auto&, auto&) {}}};

// A record set under a script of steps. Each step is a word and, behind a blank, its argument;
// afterwards the set tells where it stands: "2/3 Beta" is position, count and current name, an
// error raised by the step in front ("!3001 1/3 Alpha"). "order" tells the names of the view.
class Stage {
 public:
  explicit Stage(std::shared_ptr<RowStore> store, LockType lock = LockType::optimistic)
      : set(std::move(store), lock) {}

  std::string tell(const std::string& step) {
    const std::size_t blank = step.find(' ');
    const std::string word = step.substr(0, blank);
    const std::string argument = blank == std::string::npos ? "" : step.substr(blank + 1);
    if (word == "order") return names();
    const auto error = raisedBy([&] { kSteps.at(word)(set, argument); });
    return (error ? numberOf(*error) + " " : "") + place();
  }

  RecordSet set;

 private:
  std::string place() const {
    std::string name;
    const auto error = raisedBy([&] { name = set.isNull("Names") ? "null" : set.text("Names"); });
    return std::to_string(set.AbsolutePosition()) + "/" + std::to_string(set.RecordCount()) + " " +
           (error ? numberOf(*error) : name);
  }

  std::string names() const {
    std::string text;
    const Column& column = set.rows()->columns[set.rows()->indexOf("Names")];
    for (const std::uint32_t index : set.view()) {
      if (!text.empty()) text += ' ';
      text += column.isNull(index) ? "null" : textOf(column.value(index));
    }
    return text;
  }
};

struct Script {
  const char* name;
  std::vector<Field> fields;
  std::vector<Row> rows;
  std::vector<std::pair<const char*, const char*>> steps;  // and what is told behind each
  LockType lock = LockType::optimistic;
};

const std::vector<Field> kNames{{"Code", FieldType::smallint}, {"Names", FieldType::text}};
const std::vector<Row> kGreek{row(1, "Beta"), row(2, "Alpha"), row(3, "Delta")};
const std::vector<Row> kLetters{row(1, "a"), row(2, "b"), row(3, "c"), row(4, "d"), row(5, "e")};

const std::vector<Field> kTyped{
    {"Names", FieldType::text}, {"Type", FieldType::smallint}, {"checked", FieldType::smallint}};

const std::vector<Field> kCharges{{"Names", FieldType::text},
                                  {"PatientId", FieldType::smallint},
                                  {"ChargeDate", FieldType::date},
                                  {"ChargeTime", FieldType::time}};

Row charge(const char* name, int patient, int dayOfMonth, int hour) {
  return {std::string(name), static_cast<std::int64_t>(patient), *makeDate(2003, 6, dayOfMonth),
          *makeTime(hour, 0, 0)};
}
const std::vector<Row> kFourCharges{charge("5/1/10", 5, 1, 10), charge("7/2/11", 7, 2, 11),
                                    charge("5/2/12", 5, 2, 12), charge("8/2/11", 8, 2, 11)};

// clang-format off
const Script kScripts[] = {
    {"EveryMoveCompletesTheEdit", kNames, kGreek,
     {{"sort Names", "2/3 Beta"}, {"at 1", "1/3 Alpha"}, {"name Omega", "1/3 Omega"},
      {"next", "-3/3 !3021"}, {"order", "Beta Delta Omega"}, {"first", "1/3 Beta"},
      {"name Pi", "1/3 Pi"}, {"at 3", "3/3 Pi"}, {"name Aa", "3/3 Aa"},
      {"find Names='aa'", "1/3 Aa"}, {"name Psi", "1/3 Psi"}, {"sort ", "1/3 Psi"},
      {"add", "-1/3 null"}, {"name One", "-1/3 One"}, {"add", "-1/4 null"},
      {"name Two", "-1/4 Two"}, {"filter Code>0", "1/3 Psi"}, {"filter ", "1/5 Psi"},
      {"order", "Psi Omega Delta One Two"}}},
    {"DeletedRowIsFollowedByItsNext", kNames, kLetters,
     {{"at 2", "2/5 b"}, {"delete", "-1/4 !3021"}, {"update", "-1/4 !3021"},
      {"delete", "!3021 -1/4 !3021"}, {"name x", "!3021 -1/4 !3021"}, {"next", "2/4 c"},
      {"at 4", "4/4 e"}, {"delete", "-1/3 !3021"}, {"next", "-3/3 !3021"},
      {"next", "!3021 -3/3 !3021"}, {"at 2", "2/3 c"}, {"delete", "-1/2 !3021"},
      {"sort Names DESC", "-1/2 !3021"}, {"next", "1/2 d"}, {"delete", "-1/1 !3021"},
      {"find Code=1", "1/1 a"}, {"delete", "-1/0 !3021"}, {"next", "-1/0 !3021"},
      {"first", "!3021 -1/0 !3021"}}},
    {"PositionOutsideTheCount", kNames, kGreek,
     {{"at 0", "!3001 1/3 Beta"}, {"at -1", "!3001 1/3 Beta"}, {"at 4", "-3/3 !3021"},
      {"name x", "!3021 -3/3 !3021"}, {"delete", "!3021 -3/3 !3021"},
      {"next", "!3021 -3/3 !3021"}, {"at 3", "3/3 Delta"}}},
    // Three finds in a row are no search for a key: each starts where the one before has stopped.
    {"FindsStartOnTheCurrentRow", kCharges, kFourCharges,
     {{"find PatientId=5", "1/4 5/1/10"}, {"find ChargeDate=#06/02/2003#", "2/4 7/2/11"},
      {"find ChargeTime = #12:00:00#", "3/4 5/2/12"}, {"first", "1/4 5/1/10"},
      {"find PatientId=5", "1/4 5/1/10"}, {"find ChargeDate=#2003/6/2#", "2/4 7/2/11"},
      {"find ChargeTime=#13:00:00#", "-3/4 !3021"}, {"first", "1/4 5/1/10"},
      {"find ChargeDate=#6/3/2003#", "-3/4 !3021"}, {"find ChargeTime=#14:00:00#", "-3/4 !3021"},
      {"first", "1/4 5/1/10"}, {"find chargedate=#06/02/2003#", "2/4 7/2/11"},
      {"find [ChargeTime] =#11:00:00 AM#", "2/4 7/2/11"}}},
    {"FindRefusesWhatIsNoSingleClause", kNames, kGreek,
     {{"find Code=3 and Names='Delta'", "!3001 1/3 Beta"}, {"find Code", "!3001 1/3 Beta"},
      {"find Lost=1", "!3265 1/3 Beta"}, {"find Code='x'", "!3001 1/3 Beta"},
      {"find Names<>'BETA'", "2/3 Alpha"}}},
    {"FilterCountsAndStandsOnItsFirstRow", kTyped,
     {row("a", 1, 0), row("b", 1, 0), row("c", 2, 0), row("d", 2, 0)},
     {{"at 3", "3/4 c"}, {"filter Type=2", "1/2 c"}, {"at 2", "2/2 d"},
      {"filter type = 9", "-1/0 !3021"}, {"find Type=1", "-1/0 !3021"},
      {"filter Lost=1", "!3265 -1/0 !3021"}, {"filter ", "1/4 a"},
      {"filter Type=2 or Type=1 and Names='c'", "1/1 c"},
      {"filter Names='A' OR Names='D'", "1/2 a"},
      {"filter (Type=1 or Type=2) and Names='a'", "!3001 1/2 a"},
      {"filter [Type]>=1 and [Type]<2 and Names<>'a'", "1/1 b"}}},
    {"ReadOnlySetRefusesEachStep", kNames, kGreek,
     {{"name x", "!3251 1/3 Beta"}, {"add", "!3251 1/3 Beta"},
      {"name x", "!3251 1/3 Beta"}, {"update", "1/3 Beta"}, {"delete", "!3251 1/3 Beta"},
      {"sort Names", "2/3 Beta"}, {"filter Code<3", "1/2 Alpha"}, {"order", "Alpha Beta"}}, LockType::readOnly},
    {"EmptySet", kNames, {},
     {{"look", "-1/0 !3021"}, {"first", "!3021 -1/0 !3021"}, {"next", "!3021 -1/0 !3021"},
      {"find Code=1", "-1/0 !3021"}, {"sort Names", "-1/0 !3021"}, {"at 1", "-1/0 !3021"},
      {"add", "-1/0 null"}, {"update", "1/1 null"}, {"name x", "1/1 x"}, {"next", "-3/1 !3021"}}},
    {"UnstoredNewRowIsDroppedByDelete", kNames, kGreek,
     {{"at 2", "2/3 Alpha"}, {"add", "-1/3 null"}, {"name x", "-1/3 x"},
      {"delete", "2/3 Alpha"}, {"order", "Beta Alpha Delta"}}}};
// clang-format on

TEST(RecordSetTest, StandsWhereTheRulesSay) {
  for (const Script& script : kScripts) {
    SCOPED_TRACE(script.name);
    Stage stage(makeStore(script.fields, script.rows), script.lock);
    int number = 0;
    for (const auto& [step, told] : script.steps)
      EXPECT_EQ(stage.tell(step), told) << "step " << ++number << ": " << step;
  }
}

TEST(RecordSetFieldsTest, AreFoundByNameOrIndexAndConverted) {
  RecordSet set(makeStore({{"PatientId", FieldType::smallint},
                           {"Lot", FieldType::integer},
                           {"Names", FieldType::text},
                           {"Born", FieldType::date}},
                          {row(nullptr, nullptr, nullptr, nullptr)}),
                LockType::optimistic);
  const std::string longText(300, 'x');  // the database's matter
  for (const auto& [field, value, text] :
       {std::tuple<const char*, Value, std::string>{"patientid", "00012", "12"},
        {"NAMES", longText, longText},
        {"Born", "6/15/2003", "6/15/2003"}}) {
    set.set(field, value);
    EXPECT_EQ(set.text(field), text) << "before the update";
    set.Update();
    EXPECT_EQ(set.text(field), text);
    set.set(field, Value());
    set.Update();
    EXPECT_TRUE(set.isNull(field));
  }
  EXPECT_EQ(set.fieldName(2), "Names");
  set.set(std::size_t{2}, "by index");
  EXPECT_EQ(set.text("NAMES"), "by index");
  for (const int lot : {1, 70001}) set.set("Lot", lot);
  EXPECT_EQ(set.textOrEmpty("PatientId"), "");
  const std::pair<std::function<void()>, ErrorNumber> refused[] = {
      {[&] { set.set("PatientId", 32768); }, ErrorNumber::multipleStep},
      {[&] { set.set("PatientId", "x"); }, ErrorNumber::wrongType},
      {[&] { set.set("Lost", 1); }, ErrorNumber::noSuchItem},
      {[&] { (void)set.value(std::size_t{7}); }, ErrorNumber::noSuchItem},
      {[&] { (void)set.text("PatientId"); }, ErrorNumber::invalidNull},
      {[&] { (void)set.code("PatientId"); }, ErrorNumber::invalidNull},
      {[&] { (void)set.code("Lot"); }, ErrorNumber::overflow}};
  for (const auto& [use, number] : refused) EXPECT_EQ(raisedBy(use), number);
}

TEST(RecordSetFieldsTest, ColumnWithoutATypeTakesItFromItsFirstValue) {
  RecordSet set(makeStore({{"checked", FieldType::untyped}, {"Born", FieldType::untyped}}, {}),
                LockType::optimistic);
  set.AddNew();
  set.set("checked", 1);
  set.set("Born", Value(*makeDate(2003, 6, 15)));
  set.Update();
  EXPECT_EQ(raisedBy([&] { set.set("checked", "x"); }), ErrorNumber::wrongType);
  EXPECT_EQ(set.text("Born"), "6/15/2003");
  set.setFilter("checked=1");
  EXPECT_EQ(set.RecordCount(), 1);
}

TEST(RecordSetFieldsTest, SortIsReadBackAsItWasSet) {
  RecordSet set(makeStore(kNames, kGreek), LockType::readOnly);
  set.setSort(" Names , Code DESC");
  EXPECT_EQ(set.Sort(), " Names , Code DESC");
  EXPECT_THROW(set.setSort("Lost"), RuntimeError);
  EXPECT_EQ(set.Sort(), " Names , Code DESC");
}

TEST(RecordSetFieldsTest, ClosedOrUnsetSetRaisesOnEveryUse) {
  RecordSet set(makeStore(kNames, kGreek), LockType::optimistic);
  set.set("Names", "pending");
  set.Close();
  set.Close();
  // clang-format off
  const std::vector<std::function<void()>> uses{
      [&] { (void)set.RecordCount(); }, [&] { (void)set.EOF_(); },
      [&] { (void)set.AbsolutePosition(); }, [&] { set.setAbsolutePosition(1); },
      [&] { set.MoveFirst(); }, [&] { set.MoveNext(); }, [&] { set.AddNew(); },
      [&] { set.Update(); }, [&] { set.Delete(); }, [&] { set.Find("Code=1"); },
      [&] { set.setFilter(""); }, [&] { set.setSort(""); }, [&] { (void)set.value("Code"); },
      [&] { set.set("Code", 1); }, [&] { (void)set.view(); }};
  // clang-format on
  for (std::size_t i = 0; i < uses.size(); ++i)
    EXPECT_EQ(raisedBy(uses[i]), ErrorNumber::closed) << i;
  const RecordSetRef unset;
  EXPECT_EQ(raisedBy([&] { (void)unset->RecordCount(); }), ErrorNumber::objectNotSet);
}

}  // namespace
}  // namespace bw
