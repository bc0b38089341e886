// Builders: the difference that an edit keeps, and the sequences that write it.
#include "torvi_core/scripted_body.h"

namespace {

using Body = ScriptedMarkBody;

class Builder : public ScriptedTest {
protected:
  void SetUp() override {
    ScriptedTest::SetUp();
    for (int i = 0; i < 4; ++i) circles_.push_back(addCircle({10.0 * i, 0.0, 0.0}, 1.0));
  }
  ZnDbEdgeRef edge(char name) const { return edgeOf(circles_[static_cast<size_t>(name - 'a')]); }
  // Names of edges: a to d the circles, - an empty one, ? anything else.
  std::string names(const ZnArray<ZnDbEdgeRef>& edges) const {
    std::string text;
    for (const ZnDbEdgeRef& held : edges) {
      char name = held.isEmpty() ? '-' : '?';
      for (char c = 'a'; c <= 'd'; ++c)
        if (held == edge(c)) name = c;
      text += name;
    }
    return text;
  }
  std::string held(ZnDbObjectId center) const {
    ZnArray<ZnDbEdgeRef> edges;
    ask(center, [&](const Body& body) { return body.getEdgeRefs(edges); });
    return names(edges);
  }
  // +x adds, -x removes, ! clears, = sets to edge d alone.
  void apply(ScriptedBuilder& builder, const std::string& steps) const {
    for (size_t i = 0; i < steps.size(); ++i) {
      if (steps[i] == '!') builder.clearInput();
      if (steps[i] == '=') builder.setInputEdges({edge('d')});
      if (steps[i] == '+') builder.addInputEdge(edge(steps[i + 1]));
      if (steps[i] == '-') builder.removeInputEdge(edge(steps[i + 1]));
    }
  }
  std::vector<ZnDbObjectId> circles_;
};

TEST_F(Builder, AnEditWritesTheDifference) {
  struct {
    const char* what;
    std::string broken; // of the loaded object's a, b
    std::string steps, wanted;
    bool changed;
    std::string written; // edges of the body afterwards
  } const rows[] = {
      {"nothing", "", "", "ab", false, "ab"},
      {"add", "", "+c", "abc", true, "abc"},
      {"remove", "", "-a", "b", true, "-b"},
      {"add and remove", "", "+c-c", "ab", false, "ab"},
      {"remove and add", "", "-a+a", "ba", false, "ab"},
      {"exchange", "", "-b+d", "ad", true, "a-d"},
      {"clear", "", "!", "", true, "--"},
      {"clear and anew", "", "!+c", "c", true, "--c"},
      {"clear and the same", "", "!+a+b", "ab", false, "ab"},
      {"remove a stranger", "", "-c", "ab", true, "ab"},
      {"with an emptied edge", "a", "", "b", false, "-b"},
      {"with an emptied edge, cleared", "a", "!", "", true, "--"},
      {"with an emptied edge, one more", "b", "+d", "ad", true, "a-d"},
      {"set keeps no difference", "", "=", "d", false, "ab"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const ZnDbObjectId center = make({circles_[0], circles_[1]});
    changeBody(center, [&](Body& body) {
      for (const char c : row.broken) body.breakAssociativity(c - 'a');
    });
    ScriptedBuilder builder(db_.get());
    ASSERT_EQ(builder.loadTorvi(center), Quorl::eOk);
    EXPECT_TRUE(builder.objectLoaded());
    apply(builder, row.steps);
    EXPECT_EQ(names(builder.inputEdges()), row.wanted);
    EXPECT_EQ(builder.hasInputEdgeChangesInEdit(), row.changed);
    script.log.clear();
    EXPECT_EQ(builder.modifyTorvi(), Quorl::eOk);
    EXPECT_EQ(held(center), row.written);
    EXPECT_EQ(script.count("evaluate"), 1);
  }
}

TEST_F(Builder, WithoutALoadedObjectEdgesAreAList) {
  const std::pair<std::string, std::string> rows[] = {{"+a+a-a", "a"}, {"-a", ""}, {"+a!", ""}, {"+b=", "d"}};
  for (const auto& [steps, wanted] : rows) {
    ScriptedBuilder builder(db_.get());
    builder.setPickPoints({ZnGePoint3d(1.0, 2.0, 3.0)});
    apply(builder, steps);
    EXPECT_EQ(names(builder.inputEdges()), wanted) << steps;
    EXPECT_EQ(builder.removeInputEdge(edge('a')), wanted == "a");
    EXPECT_FALSE(builder.objectLoaded() || builder.hasInputEdgeChangesInEdit());
    EXPECT_EQ(builder.pickPoints().length(), steps.back() == '!' ? 0 : 1);
    EXPECT_EQ(builder.modifyTorvi(), Quorl::eNothingToDo);
  }
}

TEST_F(Builder, LoadingWhatCannotBeEdited) {
  ScriptedBuilder builder(db_.get());
  for (const ZnDbObjectId id : {addReference(addEmptyBlock()), circles_[0], ZnDbObjectId()})
    EXPECT_EQ(builder.loadTorvi(id), Quorl::eInvalidInput);
  const ZnDbObjectId edgeless = make({circles_[0]});
  ASSERT_EQ(builder.loadTorvi(edgeless), Quorl::eOk);
  changeBody(edgeless, [](Body& body) {
    for (const ZnDbObjectId id : body.paramsAtName(Body::inputEdgeParamName())) body.removeParam(id, true);
  });
  EXPECT_EQ(builder.loadTorvi(edgeless), Quorl::eOk);
  EXPECT_FALSE(builder.objectLoaded()) << "an object without edges loads as nothing";
}

TEST_F(Builder, NeitherDatabaseNorClassCanBeLeftOut) {
  ZnDbObjectId center;
  EXPECT_EQ(ScriptedBuilder(db_.get(), ZnDbLine::desc()).createTorvi(center), Quorl::eWrongObjectClass);
  zndbHostApplicationServices()->setWorkingDatabase(nullptr);
  EXPECT_EQ(ScriptedBuilder(nullptr).createTorvi(center), Quorl::eNoDatabase);
  EXPECT_EQ(ZnTorviLyxUtils::createCenterMark(edge('a'), center, nullptr), Quorl::eNoDatabase);
  zndbHostApplicationServices()->setWorkingDatabase(db_.get());
  EXPECT_TRUE(center.isNull());
}

} // namespace
