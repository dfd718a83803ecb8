#include "core/AsisRutinasApoyo.h"
#include "core/AsisRutinasRecordsets.h"
#include "tests/records/Rows.h"

namespace bw {
namespace {

RecordSetRef makeSet(const std::vector<Field>& fields, const std::vector<Row>& rows,
                     LockType lock = LockType::optimistic) {
  return RecordSetRef(std::make_shared<RecordSet>(makeStore(fields, rows), lock));
}

std::string toldFromFirst(const RecordSetRef& set) {
  set->MoveFirst();
  return told(*set);
}

// The target knows a field that the source lacks, and one that cannot take the source's text.
const std::vector<Field> kTarget{
    {"Code", FieldType::smallint}, {"Names", FieldType::text}, {"checked", FieldType::smallint}};
const std::vector<Field> kSource{{"names", FieldType::text}, {"CODE", FieldType::text}};

class RecordsetCopyTest : public ::testing::Test {
 protected:
  RecordSetRef target = makeSet(kTarget, {row(1, "a", 1), row(2, "b", 1)});
  RecordSetRef source = makeSet(kSource, {row("x", "7"), row("y", "none"), row("z", nullptr)});
};

TEST_F(RecordsetCopyTest, CopyOfAllPassesOverWhatCannotBeCopied) {
  RecordsetCopyAll(target, source);
  EXPECT_TRUE(source->EOF_());
  EXPECT_EQ(toldFromFirst(target), "1|a|1 2|b|1 7|x|null null|y|null null|z|null");
}

TEST_F(RecordsetCopyTest, CopyOfOneLeavesTheSourceWhereItIs) {
  source->setAbsolutePosition(2);
  RecordsetAppendFirst(target, source);
  EXPECT_EQ(target->AbsolutePosition(), 3);
  target->setAbsolutePosition(1);
  source->setAbsolutePosition(1);
  RecordsetUpdateCurrent(target, source);
  EXPECT_EQ(source->AbsolutePosition(), 1);
  EXPECT_EQ(toldFromFirst(target), "7|x|1 2|b|1 null|y|null");
}

TEST_F(RecordsetCopyTest, EmptyUnsetOrReadOnlySetsAreLeftAlone) {
  const RecordSetRef empty = makeSet(kSource, {});
  const RecordSetRef fixed = makeSet(kTarget, {row(1, "a", 1)}, LockType::readOnly);
  for (const RecordSetRef& from : {empty, RecordSetRef()}) {
    RecordsetCopyAll(target, from);
    RecordsetAppendFirst(target, from);
    RecordsetUpdateCurrent(target, from);
  }
  EXPECT_EQ(target->RecordCount(), 2);
  RecordsetCopyAll(fixed, source);
  RecordsetCopyAll(RecordSetRef(), source);
  EXPECT_EQ(toldFromFirst(fixed), "1|a|1");
}

TEST(TokensTest, AreTakenOffTheFrontUpToTheirSeparator) {
  std::string list = "1,,b c;d";
  EXPECT_EQ(TakeToken(list), "1");
  EXPECT_EQ(TakeToken(list), "");
  EXPECT_EQ(list, "b c;d");
  EXPECT_EQ(TakeTokenSemicolon(list), "b c");
  EXPECT_EQ(TakeToken(list), "d");
  EXPECT_EQ(list, "");
  EXPECT_EQ(TakeTokenSemicolon(list), "");
}

}  // namespace
}  // namespace bw
