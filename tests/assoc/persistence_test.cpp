#include <functional>
#include <tuple>

#include "assoc/assoc_fixture.h"
#include "quorl/assoc/dependency.h"

namespace {

class PersistenceTest : public AssocTest {
protected:
  PersistenceTest()
      : source(addCircle(2.0))
      , output(addCircle(1.0))
      , bodyId(addSum({source}, output)) {}

  ZnDbObjectId source, output, bodyId;
};

} // namespace

TEST_F(PersistenceTest, marks_are_found_again_from_the_stored_statuses) {
  evaluate();
  setRadius(source, 10.0);
  // As after reading a file: nothing is queued, then everything is told that it was loaded.
  std::vector<ZnDbAssocAction*> dropped;
  const ZnDbObjectId top = ZnDbAssocNetwork::getInstanceFromDatabase(&db, false);
  static_cast<ZnDbAssocNetwork*>(top.slot()->object)->takeMarked(dropped);
  EXPECT_EQ(dropped.size(), 1u);
  EXPECT_EQ(evaluate(), Quorl::eOk);
  EXPECT_EQ(radiusOf(output), 2.0) << "the mark was taken away";
  for (const ZnDbObjectId id : db.allObjectIds()) id.slot()->object->loaded();
  EXPECT_EQ(evaluate(), Quorl::eOk);
  EXPECT_EQ(radiusOf(output), 6.0);
}

TEST_F(PersistenceTest, undo_and_redo_keep_states_links_and_marks) {
  evaluate();
  struct Step {
    const char* name;
    std::function<void()> change;
  };
  const ZnDbObjectId other = addCircle(20.0);
  ZnDbObjectId added;
  const Step steps[] = {
      {"edit and evaluate",
       [&] {
         setRadius(source, 6.0);
         evaluate();
       }},
      {"edit alone", [&] { setRadius(source, 9.0); }},
      {"a further dependency",
       [&] {
         addDependency(bodyId, ZnDbCompoundObjectId(other), true, false);
         evaluate();
       }},
      {"a further dependency of a new action",
       [&] {
         added = addSum({output}, addCircle(1.0));
         evaluate();
       }},
      {"the source erased",
       [&] {
         erase(source);
         evaluate();
       }},
      {"the output erased",
       [&] {
         erase(output);
         evaluate();
       }},
      {"the action erased", [&] { erase(ZnDbAssocActionBody::parentAction(added)); }},
  };
  using State = std::tuple<double, double, int, int>;
  const auto state = [&] {
    ZnArray<ZnDbObjectId> readers;
    for (const ZnDbObjectId id : {source, other, output})
      ZnDbAssocAction::getActionsDependentOnObject(id, true, true, readers);
    const ZnDbHolder<ZnDbAssocActionBody> body(bodyId);
    return State(radiusOf(source), radiusOf(output), body->status(), readers.length());
  };
  std::vector<State> states{state()};
  for (const Step& step : steps) {
    undo().startStep(ZnString::fromUtf8(step.name));
    step.change();
    states.push_back(state());
  }
  for (int round = 0; round < 2; ++round) {
    for (size_t i = std::size(steps); i-- > 0;) {
      SCOPED_TRACE(std::string("undo of ") + steps[i].name);
      ASSERT_EQ(undo().undo(), Quorl::eOk);
      EXPECT_TRUE(state() == states[i]);
      EXPECT_TRUE(linkFaults(db).empty());
    }
    for (size_t i = 0; i < std::size(steps); ++i) {
      SCOPED_TRACE(std::string("redo of ") + steps[i].name);
      ASSERT_EQ(undo().redo(), Quorl::eOk);
      EXPECT_TRUE(state() == states[i + 1]);
      EXPECT_TRUE(linkFaults(db).empty());
    }
  }
  // Taken back to the edit that was not evaluated: the mark is there, and works.
  for (int i = 0; i < 5; ++i) undo().undo();
  EXPECT_EQ(statusOf(bodyId), kChangedDirectlyAssocStatus);
  evaluate();
  EXPECT_EQ(radiusOf(output), 5.5);
}

TEST_F(PersistenceTest, members_leave_a_network_without_disturbing_the_others) {
  std::vector<ZnDbObjectId> actions{ZnDbAssocActionBody::parentAction(bodyId)};
  for (int i = 0; i < 6; ++i)
    actions.push_back(ZnDbAssocActionBody::parentAction(addSum({source}, addCircle(1.0))));
  const ZnDbObjectId networkId = ZnDbAssocNetwork::getInstanceFromObject(db.modelSpaceId(), false, false);
  const ZnDbObjectId otherId = ZnDbAssocNetwork::getInstanceFromObject(db.paperSpaceId(), true, true);
  ASSERT_FALSE(networkId.isNull() || otherId.isNull());
  auto* network = static_cast<ZnDbAssocNetwork*>(networkId.slot()->object);
  auto* other = static_cast<ZnDbAssocNetwork*>(otherId.slot()->object);
  for (const size_t moved : {1u, 4u}) ASSERT_EQ(other->moveActionHere(actions[moved]), Quorl::eOk);
  EXPECT_EQ(network->removeAction(actions[1], true), Quorl::eInvalidOwner);
  EXPECT_EQ(network->removeAction(actions[3], true), Quorl::eOk);
  EXPECT_TRUE(network->getActions() ==
              (ZnArray<ZnDbObjectId>{actions[0], actions[2], actions[3], actions[5], actions[6]}));
  EXPECT_TRUE(other->getActions() == (ZnArray<ZnDbObjectId>{actions[1], actions[4]}));
  EXPECT_EQ(other->moveActionHere(source), Quorl::eInvalidInput);
  const ZnDbObjectId top = ZnDbAssocNetwork::getInstanceFromDatabase(&db, false);
  EXPECT_TRUE(static_cast<ZnDbAssocNetwork*>(top.slot()->object)->getActions() ==
              (ZnArray<ZnDbObjectId>{networkId, otherId}));
  // Marks in either network are found from the top.
  SumBody::evaluated.clear();
  evaluate();
  EXPECT_EQ(SumBody::evaluated.size(), 6u);
  EXPECT_TRUE(ZnDbAssocNetwork::getInstanceFromObject(source, false, false).isNull());
  const ZnDbObjectId keyed = ZnDbAssocNetwork::getInstanceFromObject(db.modelSpaceId(), true, false, L"K");
  EXPECT_FALSE(keyed.isNull() || keyed == networkId);
}
