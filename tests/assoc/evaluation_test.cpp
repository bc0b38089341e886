#include <rapidcheck.h>

#include <algorithm>
#include <map>
#include <set>

#include "assoc/assoc_fixture.h"
#include "quorl/assoc/dependency.h"
#include "quorl/assoc/evaluation_pointer.h"
#include "quorl/assoc/manager.h"

namespace {

using Recorded = std::vector<std::pair<ZnDbObjectId, Quorl::ErrorStatus>>;

class Recorder : public ZnDbAssocEvaluationCallback {
public:
  Recorded failures;
  int begun = 0, ended = 0, used = 0, handedBack = 0;
  ZnDbObjectId replaced;
  ZnDbObject* substitute = nullptr;

  void beginEvaluation(ZnDbAssocAction* action) override {
    ++begun;
    EXPECT_EQ(zndbAssocGetCurrentlyEvaluatedActionPointer(action->database()), action);
    EXPECT_EQ(action->currentEvaluationCallback(), this);
  }
  void endEvaluation(ZnDbAssocAction*) override { ++ended; }
  void reportFailure(ZnDbAssocAction* action, Quorl::ErrorStatus status, ZnDbObjectId, ZnDbObject*,
                     void*) override {
    failures.push_back({action->actionBody(), status});
  }
  void beginUse(ZnDbAssocAction*, ZnDbObjectId id, bool, bool, ZnDbObject*& out) override {
    ++used;
    if (id == replaced) out = substitute;
  }
  void endUse(ZnDbAssocAction*, ZnDbObjectId, ZnDbObject*) override { ++handedBack; }
};

// Asks for no evaluation, only for who would be evaluated.
class Listing : public Recorder {
public:
  int evaluationMode() const override { return kTellActionsOnly; }
  void beginEvaluation(ZnDbAssocAction* action) override { told.push_back(action->actionBody()); }
  std::vector<ZnDbObjectId> told;
};

class EvaluationTest : public AssocTest {
protected:
  // A network of sums over circles: node i writes circle i and reads the circles of its inputs and own
  // sources.
  struct Graph {
    std::vector<std::vector<int>> inputs; // of node i: other nodes
    std::vector<ZnDbObjectId> sources, outputs, bodies;
  };

  Graph build(const std::vector<std::vector<int>>& inputs) {
    Graph graph{inputs, {}, {}, {}};
    for (size_t i = 0; i < inputs.size(); ++i) {
      graph.sources.push_back(addCircle(2.0));
      graph.outputs.push_back(addCircle(1.0));
    }
    for (size_t i = 0; i < inputs.size(); ++i) {
      std::vector<ZnDbObjectId> reads{graph.sources[i]};
      for (const int input : inputs[i]) reads.push_back(graph.outputs[static_cast<size_t>(input)]);
      graph.bodies.push_back(addSum(reads, graph.outputs[i]));
    }
    return graph;
  }

  // The radius of a node by plain recursion.
  double expected(const Graph& graph, size_t node) const {
    double sum = radiusOf(graph.sources[node]);
    for (const int input : graph.inputs[node]) sum += expected(graph, static_cast<size_t>(input));
    return 0.5 * sum + 1.0;
  }

  // Everything that a change of these nodes' sources reaches.
  static std::set<size_t> reached(const Graph& graph, std::set<size_t> nodes) {
    for (bool grown = true; grown;) {
      grown = false;
      for (size_t i = 0; i < graph.inputs.size(); ++i)
        for (const int input : graph.inputs[i])
          if (nodes.count(static_cast<size_t>(input)) && nodes.insert(i).second) grown = true;
    }
    return nodes;
  }

  void expectCurrent(const Graph& graph) const {
    for (size_t i = 0; i < graph.inputs.size(); ++i) {
      EXPECT_EQ(radiusOf(graph.outputs[i]), expected(graph, i)) << "node " << i;
      EXPECT_EQ(statusOf(graph.bodies[i]), kIsUpToDateAssocStatus) << "node " << i;
    }
  }
};

// Node numbers are shuffled, so that neither handles nor the order of creation give the right order away.
std::vector<std::vector<int>> randomAcyclicInputs() {
  const int count = *rc::gen::inRange(1, 10);
  std::vector<int> rank(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) rank[static_cast<size_t>(i)] = i;
  for (size_t i = rank.size(); i > 1; --i) std::swap(rank[i - 1], rank[*rc::gen::inRange<size_t>(0, i)]);
  std::vector<std::vector<int>> inputs(static_cast<size_t>(count));
  for (size_t to = 0; to < inputs.size(); ++to)
    for (size_t from = 0; from < inputs.size(); ++from)
      if (rank[from] < rank[to] && *rc::gen::inRange(0, 3) == 0) inputs[to].push_back(static_cast<int>(from));
  return inputs;
}

} // namespace

TEST_F(EvaluationTest, told_only_nothing_is_evaluated) {
  const Graph graph = build({{}, {0}, {1}});
  Listing listing;
  for (int round = 0; round < 2; ++round) {
    listing.told.clear();
    EXPECT_EQ(evaluate(&listing), Quorl::eOk);
    EXPECT_EQ(listing.told, graph.bodies) << "writers before readers, and all stay marked";
    EXPECT_EQ(radiusOf(graph.outputs[2]), 1.0);
  }
  EXPECT_EQ(evaluate(), Quorl::eOk);
  EXPECT_EQ(radiusOf(graph.outputs[2]), expected(graph, 2));
  listing.told.clear();
  EXPECT_EQ(evaluate(&listing), Quorl::eOk);
  EXPECT_TRUE(listing.told.empty());
}

TEST_F(EvaluationTest, random_networks_agree_with_plain_recursion) {
  EXPECT_TRUE(rc::check([this] {
    const Graph graph = build(randomAcyclicInputs());
    SumBody::evaluated.clear();
    EXPECT_EQ(evaluate(), Quorl::eOk);
    EXPECT_EQ(SumBody::evaluated.size(), graph.bodies.size());
    expectCurrent(graph);
    for (int edit = 0; edit < 3; ++edit) {
      std::set<size_t> changed;
      for (size_t i = 0; i < graph.sources.size(); ++i)
        if (*rc::gen::inRange(0, 4) == 0 || i == 0) {
          setRadius(graph.sources[i], radiusOf(graph.sources[i]) + 1.0);
          changed.insert(i);
        }
      SumBody::evaluated.clear();
      EXPECT_EQ(evaluate(), Quorl::eOk);
      expectCurrent(graph);
      // Every radius grows on the way, so what is reached is exactly what is visited, once each.
      std::set<ZnDbObjectId> visited(SumBody::evaluated.begin(), SumBody::evaluated.end()), wanted;
      for (const size_t node : reached(graph, changed)) wanted.insert(graph.bodies[node]);
      EXPECT_TRUE(visited == wanted);
      EXPECT_EQ(SumBody::evaluated.size(), wanted.size());
    }
    SumBody::evaluated.clear();
    EXPECT_EQ(evaluate(), Quorl::eOk);
    EXPECT_TRUE(SumBody::evaluated.empty());
    RC_ASSERT(!HasFailure());
  }));
}

TEST_F(EvaluationTest, cycles_fail_and_the_rest_goes_on) {
  struct Case {
    const char* name;
    std::vector<std::vector<int>> inputs;
    std::set<size_t> cyclic;
    std::set<size_t> untouched; // wait for a cycle, or are not reached
  };
  const Case cases[] = {
      {"two that wait for each other", {{1}, {0}}, {0, 1}, {}},
      {"a ring of three with one before and one beside", {{}, {0, 3}, {1}, {2}, {0}}, {1, 2, 3}, {}},
      {"one behind the ring is still evaluated", {{1}, {0}, {1}}, {0, 1}, {}},
      {"two rings that share a node", {{1, 2}, {0}, {0}, {}}, {0, 1, 2}, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const Graph graph = build(c.inputs);
    Recorder recorder;
    EXPECT_EQ(evaluate(&recorder), Quorl::eCyclicDependency);
    std::set<ZnDbObjectId> reported;
    for (const auto& [body, status] : recorder.failures) {
      EXPECT_EQ(status, Quorl::eCyclicDependency);
      EXPECT_TRUE(reported.insert(body).second) << "reported twice";
    }
    for (size_t i = 0; i < graph.bodies.size(); ++i) {
      const bool cyclic = c.cyclic.count(i) > 0;
      EXPECT_EQ(statusOf(graph.bodies[i]), cyclic ? kFailedToEvaluateAssocStatus : kIsUpToDateAssocStatus)
          << i;
      EXPECT_EQ(reported.count(graph.bodies[i]) > 0, cyclic) << i;
    }
    // Nothing is left to loop over.
    SumBody::evaluated.clear();
    EXPECT_EQ(evaluate(), Quorl::eOk);
    EXPECT_TRUE(SumBody::evaluated.empty());
  }
}

TEST_F(EvaluationTest, a_broken_cycle_recovers) {
  const Graph graph = build({{1}, {0}});
  evaluate();
  ZnArray<ZnDbObjectId> reads;
  {
    ZnDbHolder<ZnDbAssocActionBody> body;
    ASSERT_EQ(body.openForWrite(graph.bodies[0]), Quorl::eOk);
    body->getDependencies(true, false, reads);
    ASSERT_EQ(reads.length(), 2);
    EXPECT_EQ(body->action()->removeDependency(reads[1], true), Quorl::eOk);
  }
  setRadius(graph.sources[0], 6.0);
  setRadius(graph.sources[1], 4.0);
  EXPECT_EQ(evaluate(), Quorl::eOk);
  EXPECT_EQ(radiusOf(graph.outputs[0]), 4.0);
  EXPECT_EQ(radiusOf(graph.outputs[1]), 5.0);
}

TEST_F(EvaluationTest, marks_tell_direct_from_transitive_changes) {
  const Graph graph = build({{}, {0}});
  evaluate();
  setRadius(graph.sources[0], 8.0);
  EXPECT_EQ(statusOf(graph.bodies[0]), kChangedDirectlyAssocStatus);
  EXPECT_EQ(statusOf(graph.bodies[1]), kIsUpToDateAssocStatus);
  // Alone, the first evaluates and marks the second, which waits for the network.
  ZnDbHolder<ZnDbAssocAction> first(ZnDbAssocActionBody::parentAction(graph.bodies[0]));
  Recorder recorder;
  first->evaluate(&recorder);
  first.close();
  EXPECT_EQ(recorder.begun, 1);
  EXPECT_EQ(recorder.ended, 1);
  EXPECT_EQ(statusOf(graph.bodies[0]), kIsUpToDateAssocStatus);
  EXPECT_EQ(statusOf(graph.bodies[1]), kChangedTransitivelyAssocStatus);
  evaluate();
  expectCurrent(graph);
}

TEST_F(EvaluationTest, suppressed_erased_and_failing_actions_do_not_stop_others) {
  const Graph graph = build({{}, {}, {}, {}});
  evaluate();
  SumBody::evaluated.clear();
  setStatus(graph.bodies[0], kSuppressedAssocStatus);
  SumBody::failing = graph.bodies[1];
  erase(graph.outputs[2]);
  for (const ZnDbObjectId source : graph.sources) setRadius(source, 10.0);
  evaluate();
  EXPECT_EQ(statusOf(graph.bodies[0]), kSuppressedAssocStatus);
  EXPECT_EQ(statusOf(graph.bodies[1]), kFailedToEvaluateAssocStatus);
  EXPECT_EQ(statusOf(graph.bodies[2]), kErasedAssocStatus);
  EXPECT_EQ(radiusOf(graph.outputs[0]), 2.0);
  EXPECT_EQ(radiusOf(graph.outputs[3]), 6.0);
  EXPECT_EQ(SumBody::evaluated.size(), 3u);

  // Each comes back by what ended it, and not before.
  SumBody::failing.setNull();
  setRadius(graph.sources[2], 12.0);
  EXPECT_EQ(statusOf(graph.bodies[2]), kErasedAssocStatus);
  erase(graph.outputs[2], false);
  setStatus(graph.bodies[0], kChangedDirectlyAssocStatus);
  setRadius(graph.sources[1], 12.0);
  evaluate();
  for (size_t i = 0; i < graph.bodies.size(); ++i)
    EXPECT_EQ(statusOf(graph.bodies[i]), kIsUpToDateAssocStatus) << i;
  EXPECT_EQ(radiusOf(graph.outputs[0]), 6.0);
  EXPECT_EQ(radiusOf(graph.outputs[2]), 7.0);
}

TEST_F(EvaluationTest, actions_that_share_an_object_come_to_rest) {
  const ZnDbObjectId shared = addCircle(1.0), source = addCircle(2.0);
  const ZnDbObjectId first = addSum({source}, shared, true), second = addSum({source}, shared, true);
  EXPECT_EQ(evaluate(), Quorl::eOk);
  EXPECT_EQ(radiusOf(shared), 2.0);
  EXPECT_EQ(statusOf(first), kIsUpToDateAssocStatus);
  EXPECT_EQ(statusOf(second), kIsUpToDateAssocStatus);
  EXPECT_LE(SumBody::evaluated.size(), 4u);
}

TEST_F(EvaluationTest, actions_that_undo_each_other_are_stopped) {
  // Both write the shared circle from different sources, so each wakes the other for ever.
  const ZnDbObjectId shared = addCircle(1.0);
  const ZnDbObjectId first = addSum({addCircle(2.0)}, shared, true),
                     second = addSum({addCircle(4.0)}, shared, true);
  const ZnDbObjectId bystander = addSum({addCircle(6.0)}, addCircle(1.0));
  EXPECT_EQ(evaluate(), Quorl::eCyclicDependency);
  EXPECT_TRUE(statusOf(first) == kFailedToEvaluateAssocStatus ||
              statusOf(second) == kFailedToEvaluateAssocStatus);
  EXPECT_EQ(statusOf(bystander), kIsUpToDateAssocStatus);
  EXPECT_FALSE(zndbIsToEvaluate(statusOf(first)) || zndbIsToEvaluate(statusOf(second)));
}

TEST_F(EvaluationTest, a_substitute_takes_the_place_of_the_database_object) {
  const Graph graph = build({{}, {}});
  evaluate();
  ZnDbCircle substitute(ZnGePoint3d(), ZnGeVector3d::kZAxis, 1.0);
  Recorder recorder;
  recorder.replaced = graph.outputs[0];
  recorder.substitute = &substitute;
  setRadius(graph.sources[0], 20.0);
  setRadius(graph.sources[1], 30.0);
  evaluate(&recorder);
  EXPECT_EQ(substitute.radius(), 11.0);
  EXPECT_EQ(radiusOf(graph.outputs[0]), 2.0);
  EXPECT_EQ(radiusOf(graph.outputs[1]), 16.0);
  EXPECT_EQ(recorder.used, 2);
  EXPECT_EQ(recorder.handedBack, 2);
}

TEST_F(EvaluationTest, evaluation_pointer_reports_what_it_cannot_open) {
  const ZnDbObjectId circle = addCircle(1.0);
  struct Case {
    ZnDbObjectId id;
    bool forWrite;
    Quorl::ErrorStatus status;
  };
  const ZnDbHolder<ZnDbCircle> reader(circle);
  const Case cases[] = {
      {circle, false, Quorl::eOk},
      {circle, true, Quorl::eWasOpenForRead},
      {ZnDbObjectId(), false, Quorl::eNullObjectId},
      {db.modelSpaceId(), false, Quorl::eWrongObjectClass},
  };
  for (const Case& c : cases) {
    ZnDbEvalPointer<ZnDbCircle> pointer(c.id, c.forWrite);
    EXPECT_EQ(pointer.status(), c.status);
    EXPECT_EQ(pointer.object() != nullptr, c.status == Quorl::eOk);
  }
  EXPECT_EQ(circle.slot()->readers, 1);
}

TEST_F(EvaluationTest, objects_on_the_way_to_a_nested_entity_mark_the_action) {
  const ZnDbObjectId blockId = addBlock(L"part"), reference = addReference(blockId);
  const ZnDbObjectId nested = HostDrawing::addCircle(0.0, 4.0, blockId);
  const ZnDbObjectId output = addCircle(1.0);
  const ZnDbObjectId body = addSum({}, output);
  addDependency(body, ZnDbCompoundObjectId(ZnDbFullSubentPath(ZnArray<ZnDbObjectId>{reference, nested}, {})),
                true, false);
  evaluate();
  EXPECT_EQ(radiusOf(output), 3.0);
  change<ZnDbBlockReference>(reference, [](ZnDbBlockReference& r) { r.setPosition({5, 0, 0}); });
  EXPECT_EQ(statusOf(body), kChangedDirectlyAssocStatus);
  evaluate();
  setRadius(nested, 6.0);
  EXPECT_EQ(statusOf(body), kChangedDirectlyAssocStatus);
  evaluate();
  EXPECT_EQ(radiusOf(output), 4.0);
}

TEST_F(EvaluationTest, a_dependency_that_only_writes_hears_of_erasing_alone) {
  const ZnDbObjectId output = addCircle(1.0), other = addCircle(1.0);
  const ZnDbObjectId bodyId = addSum({addCircle(2.0)}, output);
  addDependency(bodyId, ZnDbCompoundObjectId(other), false, true);
  evaluate();
  setRadius(other, 5.0);
  EXPECT_EQ(statusOf(bodyId), kIsUpToDateAssocStatus);
  erase(other);
  EXPECT_EQ(statusOf(bodyId), kChangedDirectlyAssocStatus);
}

TEST_F(EvaluationTest, long_chains_are_followed_to_the_end) {
  const int kLength = 3000;
  std::vector<std::vector<int>> inputs(kLength);
  for (int i = 1; i < kLength; ++i) inputs[static_cast<size_t>(kLength - 1 - i)].push_back(kLength - i);
  const Graph graph = build(inputs);
  evaluate();
  // r becomes r / 2 + 2 on the way: the far end has come to its fixed point.
  EXPECT_DOUBLE_EQ(radiusOf(graph.outputs.front()), 4.0);
  EXPECT_EQ(SumBody::evaluated.size(), static_cast<size_t>(kLength));
  EXPECT_EQ(SumBody::evaluated.front(), graph.bodies.back());
}
