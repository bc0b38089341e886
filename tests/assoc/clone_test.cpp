#include "assoc/assoc_fixture.h"
#include "quorl/assoc/dependency.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/core/line_weight.h"

namespace {

class CloneTest : public AssocTest {
protected:
  CloneTest()
      : source(addCircle(2.0))
      , output(addCircle(1.0))
      , bodyId(addSum({source}, output)) {
    evaluate();
  }

  ZnDbObjectId cloneOf(const ZnDbIdMapping& mapping, ZnDbObjectId id) const {
    ZnDbIdPair pair(id);
    return mapping.compute(pair) ? pair.value() : ZnDbObjectId();
  }
  ZnArray<ZnDbObjectId> writers(ZnDbObjectId id) const {
    ZnArray<ZnDbObjectId> actions;
    ZnDbAssocAction::getActionsDependentOnObject(id, false, true, actions);
    return actions;
  }

  ZnDbObjectId source, output, bodyId;
};

} // namespace

TEST_F(CloneTest, an_action_travels_with_what_it_writes) {
  struct Case {
    const char* name;
    bool withSource, withOutput;
    int actionsOfClone;
  };
  for (const Case& c : {Case{"all", true, true, 1}, Case{"output alone", false, true, 1},
                        Case{"source alone", true, false, 0}}) {
    SCOPED_TRACE(c.name);
    ZnArray<ZnDbObjectId> objects;
    if (c.withSource) objects.append(source);
    if (c.withOutput) objects.append(output);
    ZnDbIdMapping mapping(ZnDb::kCopyContext, &db, &db);
    SumBody::postProcessed.clear();
    ASSERT_EQ(db.deepCloneObjects(objects, db.paperSpaceId(), mapping), Quorl::eOk);
    const ZnDbObjectId copiedSource = c.withSource ? cloneOf(mapping, source) : source;
    const ZnDbObjectId copiedOutput = cloneOf(mapping, output);
    EXPECT_EQ(SumBody::postProcessed.size(), static_cast<size_t>(c.actionsOfClone));
    if (!c.withOutput) {
      EXPECT_TRUE(cloneOf(mapping, bodyId).isNull());
      continue;
    }
    EXPECT_EQ(SumBody::postProcessed[0], bodyId) << "the original is asked";
    const ZnArray<ZnDbObjectId> actions = writers(copiedOutput);
    ASSERT_EQ(actions.length(), c.actionsOfClone);
    const ZnDbHolder<ZnDbAssocAction> action(actions[0]);
    EXPECT_EQ(action->owningNetwork()->objectId(),
              ZnDbAssocNetwork::getInstanceFromObject(db.paperSpaceId(), false, false));
    EXPECT_EQ(action->actionBody(), cloneOf(mapping, bodyId));
    // It follows its own source: the copy, or the original that stayed behind.
    setRadius(copiedSource, 30.0);
    evaluate();
    EXPECT_EQ(radiusOf(copiedOutput), 16.0);
    EXPECT_EQ(radiusOf(output), c.withSource ? 2.0 : 16.0);
    setRadius(source, 2.0);
    evaluate();
  }
}

TEST_F(CloneTest, in_another_drawing_what_stayed_behind_is_broken) {
  ZnDbDatabase other;
  ZnDbIdMapping mapping(ZnDb::kCopyInContext, &db, &other);
  ASSERT_EQ(db.deepCloneObjects(ZnArray<ZnDbObjectId>{output}, other.modelSpaceId(), mapping), Quorl::eOk);
  const ZnDbObjectId copiedBody = cloneOf(mapping, bodyId);
  ASSERT_EQ(copiedBody.database(), &other);
  const ZnDbHolder<ZnDbAssocActionBody> body(copiedBody);
  EXPECT_TRUE(body->hasAnyErasedOrBrokenDependencies());
  ZnArray<ZnDbObjectId> reads, writes;
  body->getDependencies(true, false, reads);
  body->getDependencies(false, true, writes);
  ASSERT_EQ(reads.length() + writes.length(), 2);
  EXPECT_TRUE(ZnDbHolder<ZnDbAssocDependency>(reads[0])->dependentOnObject().isNull());
  EXPECT_EQ(ZnDbHolder<ZnDbAssocDependency>(writes[0])->dependentOnObject(), cloneOf(mapping, output));
  EXPECT_TRUE(linkFaults(other).empty());
  EXPECT_EQ(writers(output).length(), 1);
}

// A body that keeps names of sub-entities in an object beside the action takes that along, and writes the
// names anew in the copy.
TEST_F(CloneTest, naming_data_travels_and_is_written_anew) {
  const ZnDbObjectId data = addCircle(7.0);
  SumBody::namingData = data;
  ZnDbIdMapping mapping(ZnDb::kCopyContext, &db, &db);
  ASSERT_EQ(db.deepCloneObjects(ZnArray<ZnDbObjectId>{output}, db.modelSpaceId(), mapping), Quorl::eOk);
  SumBody::namingData.setNull();
  EXPECT_EQ(radiusOf(cloneOf(mapping, data)), 70.0);
  EXPECT_EQ(radiusOf(data), 7.0);
}
