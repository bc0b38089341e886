// The store of values and edges that all bodies share, and the format in which a body is filed.
#include <memory>
#include <optional>

#include "assoc/tdoc_list_filer.h"
#include "quorl/db/memory_filer.h"
#include "torvi_core/scripted_body.h"

namespace {

using Body = ScriptedMarkBody;

class ParamStore : public ScriptedTest {
protected:
  void SetUp() override {
    ScriptedTest::SetUp();
    circle_ = addCircle({0.0, 0.0, 0.0}, 5.0);
    center_ = make({circle_});
  }
  ZnDbObjectId circle_, center_;
};

TEST_F(ParamStore, ValuesReadByTheirTypeAndElseByTheDefault) {
  changeBody(center_, [&](Body& body) {
    EXPECT_EQ(body.setIntParam(L"int", 7), Quorl::eOk);
    EXPECT_EQ(body.setDoubleParam(L"double", 2.5), Quorl::eOk);
    EXPECT_EQ(body.setBoolParam(L"yes", true), Quorl::eOk);
    EXPECT_EQ(body.setBoolParam(L"no", false), Quorl::eOk);
    EXPECT_EQ(body.setObjectIdParam(L"id", circle_), Quorl::eOk);
    EXPECT_EQ(body.setPoint3dParam(L"point", {1.0, 2.0, 3.0}), Quorl::eOk);
    body.setValueParam(L"text", ZnDbEvalVariant(L"no handle"));
    body.setValueParam(L"handle", ZnDbEvalVariant(handleText(circle_.handle())));
  });
  struct {
    const wchar_t* name;
    int asInt;
    double asDouble;
    bool orTrue, orFalse, isCircle;
    Quorl::ErrorStatus asPoint;
  } const rows[] = {{L"int", 7, -1.5, true, false, false, Quorl::eInvalidInput},
                    {L"double", -3, 2.5, true, true, false, Quorl::eInvalidInput},
                    {L"yes", -3, 1.0, true, true, false, Quorl::eInvalidInput},
                    {L"no", -3, 0.0, false, false, false, Quorl::eInvalidInput},
                    {L"id", -3, -1.5, true, false, true, Quorl::eInvalidInput},
                    {L"point", -3, -1.5, true, false, false, Quorl::eOk},
                    {L"text", -3, -1.5, true, false, false, Quorl::eInvalidInput},
                    {L"handle", -3, -1.5, true, false, true, Quorl::eInvalidInput},
                    {L"Int", -3, -1.5, true, false, false, Quorl::eKeyNotFound}};
  ZnDbHolder<Body> body(bodyOf(center_));
  for (const auto& row : rows) {
    SCOPED_TRACE(ZnString(row.name).utf8());
    EXPECT_EQ(body->getIntParam(row.name, -3), row.asInt);
    EXPECT_EQ(body->getDoubleParam(row.name, -1.5), row.asDouble);
    EXPECT_EQ(body->getBoolParam(row.name, true), row.orTrue);
    EXPECT_EQ(body->getBoolParam(row.name, false), row.orFalse);
    EXPECT_EQ(body->getObjectIdParam(row.name), row.isCircle ? circle_ : ZnDbObjectId());
    ZnGePoint3d point(9.0, 9.0, 9.0);
    EXPECT_EQ(body->getPoint3dParam(row.name, point), row.asPoint);
    EXPECT_EQ(point, row.asPoint == Quorl::eOk ? ZnGePoint3d(1.0, 2.0, 3.0) : ZnGePoint3d(9.0, 9.0, 9.0));
  }
  ZnArray<ZnString> names;
  body->ownedValueParamNames(names);
  ASSERT_GE(names.length(), 9);
  for (const ZnString& name : names) {
    ZnDbEvalVariant value;
    ZnString expression(L"x"), evaluator(L"x");
    EXPECT_EQ(body->getValueParam(name, value, expression, evaluator), Quorl::eOk);
    EXPECT_TRUE(expression.isEmpty() && evaluator.isEmpty()) << name.utf8();
    EXPECT_EQ(body->getValueParam(name, value, 1), Quorl::eOutOfRange) << name.utf8();
  }
}

TEST_F(ParamStore, ABodyInNoActionHasNothing) {
  Body body;
  ZnDbEvalVariant value;
  EXPECT_EQ(body.setIntParam(L"n", 1), Quorl::eNotInDatabase);
  EXPECT_EQ(body.setObjectIdParam(L"n", circle_), Quorl::eNotInDatabase);
  EXPECT_EQ(body.getIntParam(L"n", 4), 4);
  EXPECT_TRUE(body.getObjectIdParam(L"n").isNull());
  EXPECT_EQ(body.edgeRefCount(), 0);
  ZnArray<ZnDbEdgeRef> edges{edgeOf(circle_)};
  EXPECT_EQ(body.getEdgeRefs(edges), Quorl::eNothingToDo);
  EXPECT_TRUE(edges.isEmpty());
  EXPECT_FALSE(body.isAssociative(false));
  EXPECT_TRUE(body.centerObjectId().isNull());
  EXPECT_EQ(body.eraseCenterEntity(), Quorl::eOk);
  EXPECT_NE(body.createCenterEntity(db_.get()), Quorl::eOk);
  EXPECT_FALSE(body.doesActionMatchCurrentGeometry());
}

TEST_F(ParamStore, EdgesKeepTheirPlacesWhenEntitiesGo) {
  const ZnDbObjectId line = addLine({0.0, 0.0, 0.0}, {4.0, 0.0, 0.0});
  const ZnDbObjectId block = addEmptyBlock();
  const ZnDbObjectId inner = add(new ZnDbCircle({0.0, 0.0, 0.0}, ZnGeVector3d::kZAxis, 1.0), block);
  const ZnDbObjectId reference = addReference(block);
  ScriptedBuilder builder(db_.get());
  const ZnDbEdgeRef edges[] = {edgeOf(circle_), edgeOf(line), edgeAlong({reference, inner})};
  for (const ZnDbEdgeRef& edge : edges) builder.addInputEdge(edge);
  ZnDbObjectId center;
  ASSERT_EQ(builder.createTorvi(center), Quorl::eOk);
  struct {
    ZnDbObjectId gone;
    bool live[3];
  } const rows[] = {{{}, {true, true, true}},
                    {inner, {true, true, true}}, // the outermost object decides
                    {circle_, {false, true, true}},
                    {reference, {false, true, false}}};
  for (const auto& row : rows) {
    if (!row.gone.isNull()) erase(row.gone);
    ZnDbHolder<Body> body(bodyOf(center));
    ZnArray<ZnDbEdgeRef> held;
    EXPECT_EQ(body->edgeRefCount(), 3);
    EXPECT_EQ(body->getEdgeRefs(held), Quorl::eOk);
    ASSERT_EQ(held.length(), 3);
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(held[i], row.live[i] ? edges[i] : ZnDbEdgeRef()) << i;
      EXPECT_EQ(body->getInputEdge(i), held[i]) << i;
    }
    EXPECT_TRUE(body->getInputEdge(3).isEmpty() && body->getInputEdge(-1).isEmpty());
    EXPECT_TRUE(body->getEdgeRef(circle_).isEmpty()) << "no parameter";
  }
}

TEST_F(ParamStore, SettingAnEdgeCountsAllParameters) {
  const ZnDbObjectId other = addCircle({9.0, 0.0, 0.0}, 2.0);
  changeBody(center_, [&](Body& body) {
    ZnDbObjectId id;
    int index = 0;
    EXPECT_EQ(body.addParam(L"Other", ZnDbAssocEdgeActionParam::desc(), id, index), Quorl::eOk);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(body.addParam(Body::inputEdgeParamName(), ZnDbAssocEdgeActionParam::desc(), id, index),
              Quorl::eOk);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(body.setEdgeRef(2, edgeOf(other)), Quorl::eOk);
    EXPECT_EQ(body.edgeRefCount(), 2);
    EXPECT_EQ(body.getInputEdge(1), edgeOf(other));
    EXPECT_EQ(body.getInputEdge(0), edgeOf(circle_));
    EXPECT_EQ(body.setEdgeRef(3, edgeOf(other)), Quorl::eNullObjectId);
    EXPECT_EQ(body.setEdgeRef(2, ZnDbEdgeRef()), Quorl::eOk);
    EXPECT_TRUE(body.getInputEdge(1).isEmpty());
  });
}

TEST_F(ParamStore, KeysOfOutputsLoseLettersOfThePrefix) {
  struct {
    const wchar_t* key;
    const char* listed;
  } const rows[] = {
      {L"1-2", "1-2"}, {L"Edge1", "1"},  {L"put", ""},          {L"", ""},
      {L"k1", "k1"},   {L"tOp-d", "-d"}, {L"OutputEdge7", "7"}, {L"x OutputEdge", "x OutputEdge"}};
  changeBody(center_, [&](Body& body) {
    body.setObjectIdParam(L"MyOutputEdge5", circle_);
    body.setObjectIdParam(L"outputEdge6", circle_);
    for (const auto& row : rows) EXPECT_EQ(body.setOutputEdge(row.key, circle_), Quorl::eOk);
  });
  ZnDbHolder<Body> body(bodyOf(center_));
  ZnArray<ZnString> keys{ZnString(L"before")};
  body->getOutputEdgeKeys(keys);
  ASSERT_EQ(keys.length(), 1 + static_cast<int>(std::size(rows)));
  EXPECT_EQ(keys[0].utf8(), "before");
  for (int i = 1; i < keys.length(); ++i) {
    EXPECT_EQ(keys[i].utf8(), rows[i - 1].listed);
    EXPECT_EQ(body->getOutputEdge(rows[i - 1].key), circle_);
  }
}

TEST_F(ParamStore, RenamingAnOutput) {
  struct {
    const wchar_t *from, *to;
    Quorl::ErrorStatus status;
    const char* left; // keys afterwards
  } const rows[] = {{L"a1", L"b1", Quorl::eOk, "c1 b1 "},
                    {L"a1", L"a1", Quorl::eOk, "a1 c1 "},
                    {L"x", L"x", Quorl::eOk, "a1 c1 "},
                    {L"x", L"y", Quorl::eInvalidInput, "a1 c1 "},
                    {L"A1", L"y", Quorl::eInvalidInput, "a1 c1 "},
                    {L"a1", L"", Quorl::eOk, "c1 "},
                    {L"a1", L"c1", Quorl::eOk, "c1 "},
                    {L"x", L"", Quorl::eInvalidInput, "a1 c1 "}};
  for (const auto& row : rows) {
    SCOPED_TRACE(ZnString(row.from).utf8() + " to " + ZnString(row.to).utf8());
    const ZnDbObjectId center = make({circle_});
    changeBody(center, [&](Body& body) {
      body.setOutputEdge(L"a1", circle_);
      body.setOutputEdge(L"c1", center_);
      EXPECT_EQ(body.renameOutputEdgeKey(row.from, row.to), row.status);
      ZnArray<ZnString> keys;
      body.getOutputEdgeKeys(keys);
      std::string left;
      for (const ZnString& key : keys) left += key.utf8() + " ";
      EXPECT_EQ(left, row.left);
      if (row.status == Quorl::eOk && *row.to && *row.from != L'x') {
        EXPECT_EQ(body.getOutputEdge(row.to), circle_);
      }
    });
  }
}

// Fields of the object level alone, before which and after which nothing else stands.
std::string objectFields(const ZnDbObject& object) {
  ZnDbMemoryFiler filer(ZnDbFiler::kFile, object.database());
  EXPECT_EQ(object.ZnDbObject::bdocOutFields(filer), Quorl::eOk);
  return filer.takeBytes();
}

TEST_F(ParamStore, TheBinaryFormIsTheObjectAndAVersion) {
  ZnDbHolder<Body> body(bodyOf(center_));
  const std::string object = objectFields(*body);
  ZnDbMemoryFiler out(ZnDbFiler::kFile, db_.get());
  EXPECT_EQ(body->bdocOutFields(out), Quorl::eOk);
  EXPECT_EQ(out.bytes(), object + std::string(2, '\0'));
  struct {
    std::string bytes;
    Quorl::ErrorStatus status;
  } const rows[] = {{object + std::string(2, '\0'), Quorl::eOk},
                    {object + std::string("\1\0", 2), Quorl::eNewerVersion},
                    {object + std::string("\377\377", 2), Quorl::eNewerVersion},
                    {object, Quorl::eFilerError},
                    {object.substr(0, object.size() / 2), Quorl::eFilerError}};
  for (const auto& row : rows) {
    ZnDbMemoryFiler in(ZnDbFiler::kFile, db_.get());
    in.setBytes(row.bytes);
    Body read;
    EXPECT_EQ(read.bdocInFields(in), row.status) << row.bytes.size();
    if (row.status != Quorl::eFilerError) {
      EXPECT_EQ(read.ownerId(), body->ownerId());
    }
  }
  ZnDbMemoryFiler failing(ZnDbFiler::kFile, db_.get());
  failing.setStatus(Quorl::eFileAccess);
  EXPECT_EQ(body->bdocOutFields(failing), Quorl::eFileAccess);
  EXPECT_EQ(failing.bytes(), object);
}

// Refuses one marker, as a disk that is full does.
class FailingAtMarker : public TdocListFiler {
public:
  using TdocListFiler::TdocListFiler;
  void wrSubclassMarker(const wchar_t* name) override {
    TdocListFiler::wrSubclassMarker(name);
    if (ZnString(name) == L"ZnDbTorviActionBody") setStatus(Quorl::eFileAccess);
  }
};

TEST_F(ParamStore, TheTextFormHasOneMarkerForAllClasses) {
  for (ZnRxClass* cls :
       {ZnDbCenterMarkActionBody::desc(), ScriptedPlainBody::desc(), ScriptedMarkBody::desc()}) {
    const std::unique_ptr<ZnDbObject> body(static_cast<ZnDbObject*>(cls->create()));
    TdocListFiler object(db_.get()), out(db_.get());
    EXPECT_EQ(body->ZnDbObject::tdocOutFields(object), Quorl::eOk);
    EXPECT_EQ(body->tdocOutFields(out), Quorl::eOk);
    ASSERT_EQ(out.items.size(), object.items.size() + 2);
    const ZnDbTdocItem& marker = out.items[object.items.size()];
    EXPECT_EQ(marker.code, 100);
    EXPECT_EQ(marker.text.utf8(), "ZnDbTorviActionBody");
    EXPECT_EQ(out.items.back().code, 90);
    EXPECT_EQ(out.items.back().integer, 0);
    FailingAtMarker failing(db_.get());
    EXPECT_EQ(body->tdocOutFields(failing), Quorl::eFileAccess);
    EXPECT_EQ(failing.items.size(), object.items.size() + 1);
  }
}

TEST_F(ParamStore, ReadingTheTextForm) {
  ZnDbHolder<Body> body(bodyOf(center_));
  TdocListFiler object(db_.get());
  ASSERT_EQ(body->ZnDbObject::tdocOutFields(object), Quorl::eOk);
  ZnDbTdocItem marker, other;
  marker.code = other.code = 100;
  marker.text = L"ZnDbTorviActionBody";
  other.text = L"ZnDbTorviActionBodyBase";
  const auto number = [](int code, int value) {
    ZnDbTdocItem item;
    item.code = code;
    item.integer = value;
    return item;
  };
  struct {
    std::vector<ZnDbTdocItem> items;
    Quorl::ErrorStatus status;
    int nextCode; // of the item left to read; 0 for none
  } const rows[] = {{{marker, number(90, 0)}, Quorl::eOk, 0},
                    {{marker, number(90, 0), number(70, 3)}, Quorl::eOk, 70},
                    {{marker, number(90, 1)}, Quorl::eNewerVersion, 0},
                    {{marker, number(90, -1)}, Quorl::eNewerVersion, 0},
                    {{marker, number(70, 0)}, Quorl::eUnexpectedGroupCode, 70},
                    {{marker}, Quorl::eFilerError, 0},
                    {{other, number(90, 1)}, Quorl::eOk, 100},
                    {{}, Quorl::eOk, 0}};
  for (size_t i = 0; i < std::size(rows); ++i) {
    SCOPED_TRACE(i);
    TdocListFiler in(db_.get());
    in.items = object.items;
    in.items.insert(in.items.end(), rows[i].items.begin(), rows[i].items.end());
    Body read;
    EXPECT_EQ(read.tdocInFields(in), rows[i].status);
    EXPECT_EQ(read.ownerId(), body->ownerId());
    ZnDbTdocItem next;
    EXPECT_EQ(in.readItem(next) == Quorl::eOk, rows[i].nextCode != 0);
    EXPECT_EQ(next.code, rows[i].nextCode);
  }
  TdocListFiler failing(db_.get());
  failing.setStatus(Quorl::eFileAccess);
  Body read;
  EXPECT_EQ(read.tdocInFields(failing), Quorl::eFileAccess);
}

} // namespace
