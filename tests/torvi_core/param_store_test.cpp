// The store of values and edges that all bodies share, and the format in which a body is filed.
#include "quorl/db/core/memory_filer.h"
#include "quorl/file/drawing_file.h"
#include "torvi_core/scripted_body.h"

namespace {

using Body = ScriptedMarkBody;
using ParamStore = CenterTest;

std::string keysOf(const Body& body) {
  ZnArray<ZnString> keys;
  body.getOutputEdgeKeys(keys);
  std::string text;
  for (const ZnString& key : keys) text += key.utf8() + ",";
  return text;
}

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
    bool orTrue, orFalse;
    ZnDbObjectId asId;
    Quorl::ErrorStatus asPoint = Quorl::eInvalidInput;
  } const rows[] = {{L"int", 7, -1.5, true, false, {}},
                    {L"double", -3, 2.5, true, true, {}},
                    {L"yes", -3, 1.0, true, true, {}},
                    {L"no", -3, 0.0, false, false, {}},
                    {L"id", -3, -1.5, true, false, circle_},
                    {L"point", -3, -1.5, true, false, {}, Quorl::eOk},
                    {L"text", -3, -1.5, true, false, {}},
                    {L"handle", -3, -1.5, true, false, circle_},
                    {L"Int", -3, -1.5, true, false, {}, Quorl::eKeyNotFound}};
  ZnDbHolder<Body> body(bodyOf(center_));
  for (const auto& row : rows) {
    SCOPED_TRACE(ZnString(row.name).utf8());
    EXPECT_EQ(body->getIntParam(row.name, -3), row.asInt);
    EXPECT_EQ(body->getDoubleParam(row.name, -1.5), row.asDouble);
    EXPECT_EQ(body->getBoolParam(row.name, true), row.orTrue);
    EXPECT_EQ(body->getBoolParam(row.name, false), row.orFalse);
    EXPECT_EQ(body->getObjectIdParam(row.name), row.asId);
    ZnGePoint3d point;
    EXPECT_EQ(body->getPoint3dParam(row.name, point), row.asPoint);
    EXPECT_EQ(point.z, row.asPoint == Quorl::eOk ? 3.0 : 0.0);
  }
}

TEST_F(ParamStore, ABodyInNoActionHasNothing) {
  Body body;
  EXPECT_EQ(body.setIntParam(L"n", 1), Quorl::eNotInDatabase);
  EXPECT_EQ(body.setObjectIdParam(L"n", circle_), Quorl::eNotInDatabase);
  EXPECT_EQ(body.getIntParam(L"n", 4), 4);
  ZnArray<ZnDbEdgeRef> edges{edgeOf(circle_)};
  EXPECT_EQ(body.getEdgeRefs(edges), Quorl::eNothingToDo);
  EXPECT_TRUE(edges.isEmpty() && body.getObjectIdParam(L"n").isNull() && body.centerObjectId().isNull());
  EXPECT_FALSE(body.isAssociative(false) || body.doesActionMatchCurrentGeometry());
  EXPECT_EQ(body.eraseCenterEntity(), Quorl::eOk);
  EXPECT_NE(body.createCenterEntity(db_.get()), Quorl::eOk);
}

TEST_F(ParamStore, SettingAnEdgeCountsAllParameters) {
  const ZnDbObjectId other = addCircle({9.0, 0.0, 0.0}, 2.0);
  changeBody(center_, [&](Body& body) {
    ZnDbObjectId id;
    int index = 0;
    for (const ZnString& name : {ZnString(L"Other"), Body::inputEdgeParamName()})
      EXPECT_EQ(body.addParam(name, ZnDbAssocEdgeActionParam::desc(), id, index), Quorl::eOk);
    EXPECT_EQ(body.setEdgeRef(2, edgeOf(other)), Quorl::eOk);
    EXPECT_EQ(body.edgeRefCount(), 2);
    EXPECT_EQ(body.getInputEdge(1), edgeOf(other));
    EXPECT_EQ(body.getInputEdge(0), edgeOf(circle_));
    EXPECT_EQ(body.setEdgeRef(3, edgeOf(other)), Quorl::eNullObjectId);
  });
}

TEST_F(ParamStore, KeysOfOutputsLoseLettersOfThePrefix) {
  const wchar_t* const kKeys[] = {L"1-2", L"Edge1", L"put",         L"",
                                  L"k1",  L"tOp-d", L"OutputEdge7", L"x Output"};
  changeBody(center_, [&](Body& body) {
    body.setObjectIdParam(L"MyOutputEdge5", circle_);
    body.setObjectIdParam(L"outputEdge6", circle_);
    for (const wchar_t* key : kKeys) {
      EXPECT_EQ(body.setOutputEdge(key, circle_), Quorl::eOk);
      EXPECT_EQ(body.getOutputEdge(key), circle_);
    }
    EXPECT_EQ(keysOf(body), "1-2,1,,,k1,-d,7,x Output,");
  });
}

TEST_F(ParamStore, RenamingAnOutput) {
  struct {
    const wchar_t *from, *to;
    Quorl::ErrorStatus status;
    const char* left; // keys afterwards
  } const rows[] = {{L"a1", L"b1", Quorl::eOk, "c1,b1,"},
                    {L"a1", L"a1", Quorl::eOk, "a1,c1,"},
                    {L"x", L"x", Quorl::eOk, "a1,c1,"},
                    {L"x", L"y", Quorl::eInvalidInput, "a1,c1,"},
                    {L"A1", L"y", Quorl::eInvalidInput, "a1,c1,"},
                    {L"a1", L"", Quorl::eOk, "c1,"},
                    {L"a1", L"c1", Quorl::eOk, "c1,"},
                    {L"x", L"", Quorl::eInvalidInput, "a1,c1,"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(ZnString(row.from).utf8() + " to " + ZnString(row.to).utf8());
    changeBody(make({circle_}), [&](Body& body) {
      body.setOutputEdge(L"a1", circle_);
      body.setOutputEdge(L"c1", center_);
      EXPECT_EQ(body.renameOutputEdgeKey(row.from, row.to), row.status);
      EXPECT_EQ(keysOf(body), row.left);
      const bool there = row.status == Quorl::eOk && *row.to && *row.from != L'x';
      EXPECT_EQ(body.getOutputEdge(row.to), there ? circle_ : ZnDbObjectId());
    });
  }
}

// The version stands behind the object's own fields.
TEST_F(ParamStore, BodiesOfALaterVersionAreRefused) {
  ZnDbMemoryFiler out(ZnDbFiler::kFile, db_.get());
  ZnDbHolder<Body>(bodyOf(center_))->bdocOutFields(out);
  const std::string whole(out.bytes()), object = whole.substr(0, whole.size() - 2);
  const std::pair<std::string, Quorl::ErrorStatus> binaries[] = {
      {whole, Quorl::eOk},
      {object + std::string("\1\0", 2), Quorl::eNewerVersion},
      {object + std::string("\377\377", 2), Quorl::eNewerVersion},
      {object, Quorl::eFilerError},
      {object.substr(0, object.size() / 2), Quorl::eFilerError}};
  for (const auto& [bytes, status] : binaries) {
    ZnDbMemoryFiler in(ZnDbFiler::kFile, db_.get());
    in.setBytes(bytes);
    EXPECT_EQ(Body().bdocInFields(in), status) << bytes.size();
  }
  std::string text;
  ZnFileError error;
  ASSERT_EQ(zndbDrawingToBytes(*db_, ZnDrawingFormat::kText, text, error), Quorl::eOk);
  const std::string marker = "100\nZnDbTorviActionBody\n";
  const std::pair<std::string, Quorl::ErrorStatus> texts[] = {{"90\n0\n", Quorl::eOk},
                                                              {"90\n1\n", Quorl::eNewerVersion},
                                                              {"90\n-1\n", Quorl::eNewerVersion},
                                                              {"70\n0\n", Quorl::eUnexpectedGroupCode}};
  const size_t at = text.find(marker + texts[0].first) + marker.size();
  ASSERT_GT(at, marker.size());
  for (const auto& [version, status] : texts) {
    std::string changed = text;
    changed.replace(at, texts[0].first.size(), version);
    // The reader says what the checksum of the changed text is.
    const bool isWhole = zndbDrawingFromBytes(changed, error) != nullptr;
    const std::string said = error.text();
    const size_t is = said.find(" is "), expected = said.find(", expected ");
    ASSERT_EQ(isWhole, status == Quorl::eOk) << said;
    if (isWhole) continue;
    const std::string stored = said.substr(expected + 11), actual = said.substr(is + 4, expected - is - 4);
    changed.replace(changed.find(stored), stored.size(), actual);
    error = {};
    EXPECT_FALSE(zndbDrawingFromBytes(changed, error)) << version;
    EXPECT_EQ(error.status, status) << error.text();
  }
}

} // namespace
