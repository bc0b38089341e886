// Objects whose classes are not loaded: kept, written back unchanged, and themselves again with their class.
#include <gtest/gtest.h>

#include "file/every_class_drawing.h"
#include "file/sample_drawing.h"
#include "file/test_classes.h"
#include "quorl/assoc/manager.h"
#include "quorl/db/core/deep_clone.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/table/dictionary.h"
#include "quorl/file/proxy_entity.h"
#include "quorl/file/proxy_object.h"

using namespace fileTest;

namespace {

constexpr ZnDrawingFormat kBinary = ZnDrawingFormat::kBinary, kText = ZnDrawingFormat::kText;

struct Ids {
  ZnDbObjectId line, gadget, note;
};

// A gadget that points at a line, and a note that watches the line. The classes must be registered.
Ids fill(ZnDbDatabase& database) {
  Ids ids;
  ids.line = append(database.modelSpaceId(), new ZnDbLine({0, 0, 0}, {1, 2, 3}));
  auto* gadget = new Gadget;
  gadget->name = L"a name\nof two lines \u00e4";
  gadget->kind = ZnAtom::of(L"kind of gadget");
  for (int i = 0; i < 100; ++i) gadget->blob += static_cast<char>(i * 7);
  gadget->size = 0.1;
  gadget->parts = {ids.line, database.layerZero(), ZnDbObjectId()};
  ids.gadget = append(database.modelSpaceId(), gadget);
  auto* note = new Note;
  note->watched = ids.line;
  ids.note = addNamed(database, L"NOTE", note);
  ZnDbHolder<ZnDbObject> open;
  EXPECT_EQ(open.openForWrite(ids.note), Quorl::eOk);
  open->attachLinks();
  return ids;
}

Ids idsIn(ZnDbDatabase& database, const Ids& like) {
  Ids ids;
  const std::pair<ZnDbObjectId*, ZnDbObjectId> all[] = {
      {&ids.line, like.line}, {&ids.gadget, like.gadget}, {&ids.note, like.note}};
  for (const auto& [target, source] : all) database.getZnDbObjectId(*target, false, source.handle());
  return ids;
}

void touch(ZnDbObjectId id) {
  ZnDbHolder<ZnDbLine> line;
  ASSERT_EQ(line.openForWrite(id), Quorl::eOk);
  ASSERT_EQ(line->setEndPoint({7, 7, 7}), Quorl::eOk);
}

class Proxies : public testing::Test {
protected:
  // The drawing as its classes write it.
  void SetUp() override {
    const TestClasses loaded;
    ids = fill(drawing);
    binary = written(drawing, kBinary);
    text = written(drawing, kText);
  }
  ZnDbDatabase drawing;
  Ids ids;
  std::string binary, text;
};

// The ways on which a drawing can go while the classes are not loaded.
struct Way {
  const char* name;
  std::vector<ZnDrawingFormat> formats;
};

TEST_F(Proxies, AreWrittenBackUnchangedOnEveryWay) {
  const Way ways[] = {{"binary", {kBinary}},
                      {"text", {kText}},
                      {"binary, text", {kBinary, kText}},
                      {"text, binary", {kText, kBinary}},
                      {"there and back", {kBinary, kText, kBinary, kText}},
                      {"back and there", {kText, kBinary, kText, kBinary}}};
  for (const Way& way : ways) {
    SCOPED_TRACE(way.name);
    std::string bytes = way.formats.front() == kBinary ? binary : text;
    for (const ZnDrawingFormat format : way.formats) {
      const auto unknown = opened(bytes);
      EXPECT_EQ(idsIn(*unknown, ids).gadget.objectClass(), ZnDbProxyEntity::desc());
      EXPECT_EQ(idsIn(*unknown, ids).note.objectClass(), ZnDbProxyObject::desc());
      bytes = written(*unknown, format);
    }
    const TestClasses loaded;
    const auto known = opened(bytes);
    EXPECT_TRUE(idsIn(*known, ids).gadget.isDerivedFrom(Gadget::desc()));
    EXPECT_TRUE(written(*known, kBinary) == binary);
    EXPECT_EQ(written(*known, kText), text);
  }
}

TEST_F(Proxies, KeepTheRegistrationOfTheirClass) {
  for (const std::string& bytes : {binary, text}) {
    const auto unknown = opened(bytes);
    const ZnDbProxyData* data = zndbProxyData(idsIn(*unknown, ids).gadget.slot()->object);
    ASSERT_NE(data, nullptr);
    const ZnDbClassRecord& record = data->cls->record();
    EXPECT_EQ(record.name, L"Gadget");
    EXPECT_EQ(record.tdocName, L"GADGET");
    EXPECT_EQ(record.appName, L"Tests");
    EXPECT_EQ(record.parentName, L"ZnDbEntity");
    EXPECT_EQ(record.version, kVersion);
    EXPECT_EQ(record.maintenanceVersion, kMaintenance);
    EXPECT_EQ(record.proxyFlags, kProxyFlags);
    EXPECT_TRUE(data->cls->isEntity());
  }
}

// The drawing of the fixture lost its classes in SetUp: its objects are proxies by now.
TEST_F(Proxies, ComeWhenTheClassGoesAndGoWhenItComes) {
  EXPECT_EQ(ids.gadget.objectClass(), ZnDbProxyEntity::desc());
  EXPECT_EQ(ids.note.objectClass(), ZnDbProxyObject::desc());
  EXPECT_EQ(ids.line.slot()->watchers, nullptr) << "a proxy watches nothing";
  EXPECT_FALSE(drawing.undoRecorder().canUndo());
  EXPECT_TRUE(written(drawing, kBinary) == binary);
  touch(ids.line);
  for (int round = 0; round < 2; ++round) {
    const TestClasses loaded;
    const ZnDbHolder<Gadget> gadget(ids.gadget);
    ASSERT_TRUE(gadget.isOpen());
    EXPECT_EQ(gadget->parts, (std::vector<ZnDbObjectId>{ids.line, drawing.layerZero(), {}}));
    EXPECT_EQ(gadget->kind, ZnAtom::of(L"kind of gadget"));
    EXPECT_EQ(gadget->ownerId(), drawing.modelSpaceId());
    const auto* note = static_cast<const Note*>(ids.note.slot()->object);
    EXPECT_EQ(note->timesLoaded, 1);
    touch(ids.line);
    EXPECT_EQ(note->heard, 1) << "the link is back";
  }
}

TEST_F(Proxies, StayUntilTheirClassCanReadThem) {
  const auto unknown = opened(binary);
  Note::readStatus = Quorl::eNewerVersion;
  registerTestClasses();
  EXPECT_TRUE(idsIn(*unknown, ids).gadget.isDerivedFrom(Gadget::desc()));
  EXPECT_EQ(idsIn(*unknown, ids).note.objectClass(), ZnDbProxyObject::desc());
  EXPECT_TRUE(written(*unknown, kBinary) == binary);
  Note::readStatus = Quorl::eOk;
  znrxBuildClassHierarchy();
  EXPECT_TRUE(idsIn(*unknown, ids).note.isDerivedFrom(Note::desc()));
  deleteTestClasses();
}

// Traits and owner of a proxy entity are the host's: it can be moved to another layer, and its class finds it
// there.
TEST_F(Proxies, CanBeChangedWhereTheHostKnowsThem) {
  const auto fromBinary = opened(binary), fromText = opened(text);
  for (ZnDbDatabase* database : {fromBinary.get(), fromText.get()}) {
    ZnDbHolder<ZnDbEntity> proxy;
    ASSERT_EQ(proxy.openForWrite(idsIn(*database, ids).gadget), Quorl::eOk);
    EXPECT_EQ(proxy->layerId(), database->layerZero());
    EXPECT_EQ(proxy->setColorIndex(5), Quorl::eOk);
    EXPECT_EQ(proxy->createExtensionDictionary(), Quorl::eOk);
  }
  const TestClasses loaded;
  for (ZnDbDatabase* database : {fromBinary.get(), fromText.get()}) {
    const ZnDbHolder<Gadget> gadget(idsIn(*database, ids).gadget);
    ASSERT_TRUE(gadget.isOpen());
    EXPECT_EQ(gadget->colorIndex(), 5);
    EXPECT_FALSE(gadget->extensionDictionary().isNull());
    EXPECT_NE(idsIn(*database, ids).line.slot()->watchers, nullptr) << "the note watches again";
    EXPECT_EQ(gadget->name, L"a name\nof two lines \u00e4");
  }
}

TEST_F(Proxies, AreClonedErasedAndBroughtBackLikeAnyObject) {
  for (const std::string& bytes : {binary, text}) {
    const auto unknown = opened(bytes);
    const Ids in = idsIn(*unknown, ids);
    ZnDbIdMapping mapping(0, unknown.get(), unknown.get());
    ASSERT_EQ(unknown->deepCloneObjects({in.gadget, in.line}, unknown->paperSpaceId(), mapping), Quorl::eOk);
    ZnDbIdPair gadget(in.gadget), line(in.line);
    ASSERT_TRUE(mapping.compute(gadget) && mapping.compute(line));
    unknown->undoRecorder().startStep();
    erase(in.gadget);
    ASSERT_EQ(unknown->undoRecorder().undo(), Quorl::eOk);
    EXPECT_FALSE(in.gadget.isErased());
    erase(in.note);
    const TestClasses loaded;
    const ZnDbHolder<Gadget> copy(gadget.value());
    ASSERT_TRUE(copy.isOpen());
    EXPECT_EQ(copy->parts.front(), line.value()) << "references among the clones are translated";
    EXPECT_EQ(copy->name, L"a name\nof two lines \u00e4");
    EXPECT_TRUE(in.note.isDerivedFrom(Note::desc()))
        << "what is erased must not outlive its class either way";
    EXPECT_TRUE(in.note.isErased());
    EXPECT_EQ(static_cast<const Note*>(in.note.slot()->object)->heard, 0);
  }
}

class Twin : public Gadget {
public:
  static ZnRxClass* gpDesc;
  ZnRxClass* isA() const override { return gpDesc; }
};
ZnRxClass* Twin::gpDesc = nullptr;

TEST_F(Proxies, TwoClassesMayHaveOneTextName) {
  registerTestClasses();
  const auto make = []() -> ZnRxObject* { return new Twin; };
  Twin::gpDesc = newZnRxClass(L"Twin", L"Gadget", 1, 2, 3, make, L"GADGET", L"Tests");
  ASSERT_NE(Twin::gpDesc, nullptr);
  ZnDbDatabase other;
  const Ids first = fill(other);
  auto* twin = new Twin;
  twin->name = L"twin";
  const ZnDbObjectId second = append(other.modelSpaceId(), twin);
  const std::string bytes = written(other, kText), binaryBefore = written(other, kBinary);
  EXPECT_NE(bytes.find("\nGADGET\n5\n"), std::string::npos);
  EXPECT_NE(bytes.find("\nTwin\n5\n"), std::string::npos);
  const auto read = opened(bytes);
  for (const ZnDbObjectId id : {first.gadget, second}) {
    ZnDbObjectId same;
    ASSERT_EQ(read->getZnDbObjectId(same, false, id.handle()), Quorl::eOk);
    EXPECT_EQ(same.objectClass(), id.objectClass());
  }
  // The twin goes with its ancestor, without which it is no database object.
  deleteTestClasses();
  EXPECT_EQ(second.objectClass(), ZnDbProxyEntity::desc());
  EXPECT_EQ(zndbProxyData(second.slot()->object)->cls->record().name, L"Twin");
  deleteZnRxClass(Twin::gpDesc);
  EXPECT_TRUE(written(other, kBinary) == binaryBefore);
}

// Whatever class of an association is missing, the drawing is worked on as if there were nothing to follow,
// and nothing of it is lost.
TEST(MissingClasses, OfAssociationsEndNothing) {
  const std::string text = unsealed(written(*everyClassDrawing(), kText));
  int missing = 0;
  for (const char* name :
       {"ZnDbAssocAction", "ZnDbAssocNetwork", "ZnDbAssocDependency", "ZnDbAssocGeomDependency",
        "ZnDbAssocEdgeActionParam", "ZnDbAssocVertexActionParam", "ZnDbDimAssoc",
        "ZnDbAssocRadialDimActionBody", "ZnDbAssocDiametricDimActionBody"}) {
    SCOPED_TRACE(name);
    std::string edited = text;
    const size_t at = edited.find("\n1\n" + std::string(name) + '\n');
    if (at == std::string::npos) continue;
    edited[at + 3] = 'X';
    ++missing;
    const auto drawing = opened(sealed(edited));
    ASSERT_TRUE(drawing);
    drawing->undoRecorder().startStep();
    ZnArray<ZnDbObjectId> drawn;
    for (const ZnDbObjectId id : ZnDbHolder<ZnDbBlockTableRecord>(drawing->modelSpaceId())->entityIds())
      if (!id.isErased()) drawn.append(id);
    for (const ZnDbObjectId id : drawn)
      change(id, [](ZnDbEntity& entity) { entity.transformBy(ZnGeMatrix3d::translation({1, 0, 0})); });
    ZnDbAssocManager::evaluateTopLevelNetwork(drawing.get());
    ZnDbIdMapping mapping(ZnDb::kCopyContext, drawing.get(), drawing.get());
    EXPECT_EQ(drawing->deepCloneObjects(drawn, drawing->paperSpaceId(), mapping), Quorl::eOk);
    for (const ZnDbObjectId id : drawn) erase(id);
    ZnDbAssocManager::evaluateTopLevelNetwork(drawing.get());
    drawing->audit(false);
    EXPECT_EQ(written(*opened(written(*drawing, kBinary)), kText), written(*drawing, kText));
    ASSERT_EQ(drawing->undoRecorder().undo(), Quorl::eOk);
    EXPECT_EQ(zndbDrawingText(*opened(written(*drawing, kBinary))), zndbDrawingText(*drawing));
  }
  EXPECT_GE(missing, 8);
}

} // namespace
