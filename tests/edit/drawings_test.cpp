// What goes from one drawing to another: copies, inserts, external drawings; and what is purged.
#include <filesystem>
#include <fstream>

#include "quorl/assoc/dim_assoc.h"
#include "quorl/db/core/event_reactor.h"
#include "quorl/db/core/transaction.h"
#include "quorl/db/entity/aligned_dimension.h"
#include "quorl/edit/external_drawing.h"
#include "quorl/edit/purge.h"
#include "quorl/edit/transfer.h"
#include "support/drawing_text.h"
#include "support/host_drawing.h"

namespace {

namespace fs = std::filesystem;

class Drawings : public testing::Test, public HostDrawing {
protected:
  void SetUp() override {
    folder_ = fs::path(testing::TempDir()) / testing::UnitTest::GetInstance()->current_test_info()->name();
    fs::create_directories(folder_);
    db.setFileName(ZnString::fromUtf8((folder_ / "host.bdoc").string()));
  }
  void TearDown() override {
    for (const ZnString& fault : db.audit(false)) ADD_FAILURE() << fault.utf8();
    fs::remove_all(folder_);
  }

  // A line from 0,0 to x,0 on a layer "Steel", saved under that name.
  struct Part : HostDrawing {
    explicit Part(double x) {
      line = addLine({0, 0, 0}, {x, 0, 0});
      change(line, [this](ZnDbEntity& e) { e.setLayer(addLayer(L"Steel", [](auto&) {})); });
    }
    void save(const fs::path& path) {
      ZnFileError error;
      ASSERT_EQ(zndbSaveDrawing(db, path.string(), error), Quorl::eOk) << error.text();
    }
    ZnDbObjectId line;
  };
  std::string at(const char* name) const { return (folder_ / name).string(); }

  ZnDbObjectId attach(const char* name) {
    ZnDbObjectId block;
    ZnFileError error;
    EXPECT_TRUE(zndbAttachDrawing(db, name, ZnString::fromUtf8(fs::path(name).stem().string()), block, error))
        << error.text();
    return block;
  }
  std::vector<ZnDbObjectId> live(ZnDbObjectId block) const {
    std::vector<ZnDbObjectId> ids;
    for (const ZnDbObjectId id : ZnDbHolder<ZnDbBlockTableRecord>(block)->entityIds())
      if (!id.isErased()) ids.push_back(id);
    return ids;
  }
  static ZnString layerOf(ZnDbObjectId id) { return ZnDbHolder<ZnDbEntity>(id)->layer(); }
  bool hasLayer(const wchar_t* name) const {
    return ZnDbHolder<ZnDbLayerTable>(db.layerTableId())->has(name);
  }
  // Undo takes a deed back, byte for byte, and redo does it again.
  template<class Deed> void asOneStep(Deed&& deed) {
    const std::string before = contentOf(db);
    db.undoRecorder().startStep();
    deed();
    const std::string after = contentOf(db);
    ASSERT_EQ(db.undoRecorder().undo(), Quorl::eOk);
    EXPECT_EQ(contentOf(db), before);
    ASSERT_EQ(db.undoRecorder().redo(), Quorl::eOk);
    EXPECT_EQ(contentOf(db), after);
  }

  fs::path folder_;
};

TEST_F(Drawings, AnExternalDrawingIsReadAgain) {
  Part(10).save(folder_ / "part.bdoc");
  ZnDbObjectId block;
  asOneStep([&] { block = attach("part.bdoc"); });
  ASSERT_EQ(live(block).size(), 1u);
  const ZnDbObjectId line = live(block)[0], shown = addReference(block);
  EXPECT_EQ(layerOf(line), ZnString(L"part|Steel"));
  const ZnDbObjectId dimension = add(new ZnDbAlignedDimension({0, 0, 0}, {10, 0, 0}, {5, 3, 0}));
  ZnDbObjectId id;
  ZnDbCompoundObjectId path;
  path.set(line, {shown});
  ASSERT_EQ(ZnDbDimAssoc::post(dimension, {{1, path, {ZnDb::kVertexSubentType, 1}}}, id), Quorl::eOk);

  Part changed(25);
  changed.addCircle(3, 1);
  changed.save(folder_ / "part.bdoc");
  ZnFileError error;
  asOneStep([&] { ASSERT_TRUE(zndbReloadDrawing(block, error)) << error.text(); });
  EXPECT_EQ(live(block).size(), 2u);
  EXPECT_EQ(ZnDbHolder<ZnDbAlignedDimension>(dimension)->secondExtensionPoint().x, 25.0);

  asOneStep([&] { ASSERT_TRUE(zndbUnloadDrawing(block, error)); });
  EXPECT_TRUE(zndbExternalDrawings(db).at(0).isUnloaded);
  ZnGeBoundBlock3d box;
  EXPECT_NE(ZnDbHolder<ZnDbEntity>(shown)->getGeomExtents(box), Quorl::eOk);
  ASSERT_TRUE(zndbReloadDrawing(block, error));
  fs::remove(folder_ / "part.bdoc");
  EXPECT_TRUE(zndbExternalDrawings(db).at(0).isMissing);
  const std::string before = contentOf(db);
  EXPECT_FALSE(zndbReloadDrawing(block, error));
  EXPECT_NE(error.text().find("part.bdoc"), std::string::npos);
  EXPECT_EQ(contentOf(db), before) << "as it was last read";

  ZnFileError saving;
  ASSERT_EQ(zndbSaveDrawing(db, at("host.bdoc"), saving), Quorl::eOk);
  const std::unique_ptr<ZnDbDatabase> again = zndbOpenDrawing(at("host.bdoc"), saving);
  ASSERT_TRUE(again) << saving.text();
  EXPECT_EQ(contentOf(*again), contentOf(db));

  asOneStep([&] { ASSERT_TRUE(zndbBindDrawing(block, error)) << error.text(); });
  EXPECT_EQ(layerOf(live(block)[0]), ZnString(L"part$0$Steel"));
  EXPECT_TRUE(zndbExternalDrawings(db).empty());
}

TEST_F(Drawings, DetachingTakesAllThatCame) {
  Part(10).save(folder_ / "part.bdoc");
  const ZnDbObjectId block = attach("part.bdoc");
  addReference(block);
  ZnFileError error;
  asOneStep([&] { ASSERT_TRUE(zndbDetachDrawing(block, error)) << error.text(); });
  EXPECT_FALSE(hasLayer(L"part|Steel") || !block.isErased());
}

TEST_F(Drawings, NestedOnesAreFollowedAndLoopsRefused) {
  Part(10).save(folder_ / "inner.bdoc");
  {
    HostDrawing middle;
    middle.db.setFileName(ZnString::fromUtf8(at("middle.bdoc")));
    ZnDbObjectId block;
    ZnFileError error;
    ASSERT_TRUE(zndbAttachDrawing(middle.db, "inner.bdoc", L"inner", block, error)) << error.text();
    middle.addReference(block);
    ASSERT_EQ(zndbSaveDrawing(middle.db, at("middle.bdoc"), error), Quorl::eOk);
  }
  const ZnDbObjectId block = attach("middle.bdoc");
  const ZnDbObjectId shown = addReference(block), nested = live(block).at(0);
  const auto innerLine = [&] {
    return live(ZnDbHolder<ZnDbBlockReference>(live(block).at(0))->blockTableRecord()).at(0);
  };
  const ZnDbObjectId dimension = add(new ZnDbAlignedDimension({0, 0, 0}, {10, 0, 0}, {5, 3, 0}));
  ZnDbObjectId id;
  ZnDbCompoundObjectId path;
  path.set(innerLine(), {shown, nested});
  ASSERT_EQ(ZnDbDimAssoc::post(dimension, {{1, path, {ZnDb::kVertexSubentType, 1}}}, id), Quorl::eOk);
  for (const double x : {30.0, 40.0}) {
    Part(x).save(folder_ / "inner.bdoc");
    ZnFileError error;
    ASSERT_TRUE(zndbReloadDrawing(block, error)) << error.text();
    EXPECT_EQ(ZnDbHolder<ZnDbAlignedDimension>(dimension)->secondExtensionPoint().x, x);
  }
  EXPECT_EQ(layerOf(innerLine()), ZnString(L"middle|inner|Steel"));

  // The innermost one comes to show the outermost.
  ZnFileError error;
  ASSERT_EQ(zndbSaveDrawing(db, at("host.bdoc"), error), Quorl::eOk);
  HostDrawing inner;
  inner.db.setFileName(ZnString::fromUtf8(at("inner.bdoc")));
  ZnDbObjectId loop;
  ASSERT_FALSE(zndbAttachDrawing(inner.db, "inner.bdoc", L"itself", loop, error));
  ASSERT_FALSE(zndbAttachDrawing(inner.db, "host.bdoc", L"host", loop, error));
  EXPECT_NE(error.text().find("inner.bdoc > host.bdoc > middle.bdoc > inner.bdoc"), std::string::npos)
      << error.text();
  EXPECT_TRUE(zndbExternalDrawings(inner.db).empty());
}

TEST_F(Drawings, RefusedAttachmentsLeaveNothing) {
  { std::ofstream(folder_ / "damaged.bdoc") << "no drawing"; }
  addBlock(L"taken");
  const size_t before = db.objectCount();
  Part(1).save(folder_ / "taken.bdoc");
  for (const char* name : {"missing.bdoc", "damaged.bdoc", "taken.bdoc"}) {
    ZnDbObjectId block;
    ZnFileError error;
    EXPECT_FALSE(
        zndbAttachDrawing(db, name, ZnString::fromUtf8(fs::path(name).stem().string()), block, error));
    EXPECT_NE(error.text().find(name), std::string::npos) << error.text();
    EXPECT_EQ(db.objectCount(), before) << name;
  }
}

TEST_F(Drawings, NamesThatBothHaveAreSharedOrKeptApart) {
  Part part(10);
  addLayer(L"Steel", [](auto&) {});
  struct Told : ZnRxEventReactor {
    void beginInsert(ZnDbDatabase*, const wchar_t*, ZnDbDatabase*) override { text += "begin "; }
    void otherInsert(ZnDbDatabase*, ZnDbIdMapping&, ZnDbDatabase*) override { text += "other "; }
    void endInsert(ZnDbDatabase*) override { text += "end "; }
    std::string text;
  } told;
  ZnRxEvent::instance().addReactor(&told);
  const std::pair<bool, const wchar_t*> rows[] = {
      {false, L"Steel"}, {true, L"part$0$Steel"}, {true, L"part$0$Steel-1"}};
  for (const auto& row : rows) {
    ZnArray<ZnDbObjectId> made;
    ASSERT_EQ(zndbInsertDrawing(db.modelSpaceId(), part.db, ZnGeMatrix3d::scaling(2.0),
                                {row.first, L"part$0$"}, made),
              Quorl::eOk);
    ASSERT_EQ(made.length(), 1);
    EXPECT_EQ(layerOf(made[0]), ZnString(row.second));
    EXPECT_EQ(ZnDbHolder<ZnDbLine>(made[0])->endPoint().x, 20.0);
  }
  ZnRxEvent::instance().removeReactor(&told);
  EXPECT_EQ(told.text, "begin other end begin other end begin other end ");
}

TEST_F(Drawings, InsertedAsABlockAndCopiedOut) {
  Part part(10);
  ZnDbObjectId block;
  ASSERT_EQ(zndbInsertAsBlock(db, L"part", part.db, {}, block), Quorl::eOk);
  ZnDbObjectId second;
  EXPECT_EQ(zndbInsertAsBlock(db, L"part", part.db, {}, second), Quorl::eDuplicateKey);
  addReference(block);
  HostDrawing elsewhere;
  ASSERT_EQ(zndbCopyOut({live(db.modelSpaceId())[0]}, elsewhere.db, {3, 0, 0}), Quorl::eOk);
  ZnGeBoundBlock3d box;
  ASSERT_EQ(ZnDbHolder<ZnDbBlockTableRecord>(elsewhere.db.modelSpaceId())->getGeomExtents(box), Quorl::eOk);
  EXPECT_EQ(box.max().x, 7.0);
  // A block that would come to show itself.
  HostDrawing other;
  const ZnDbObjectId inner = other.addBlock(L"outer");
  other.addLine({0, 0, 0}, {1, 0, 0}, inner);
  other.addReference(inner);
  ZnDbTransaction transaction(db);
  EXPECT_NE(zndbInsertAsBlock(db, L"outer", other.db, {}, block), Quorl::eOk);
}

TEST_F(Drawings, PurgingTakesWhatNothingNeeds) {
  const ZnDbObjectId used = addBlock(L"used"), inner = addBlock(L"inner"), outer = addBlock(L"outer");
  const ZnDbObjectId steel = addLayer(L"Steel", [](auto&) {}), brass = addLayer(L"Brass", [](auto&) {});
  addReference(inner, outer);
  const ZnDbObjectId line = addLine({0, 0, 0}, {1, 0, 0}, inner), kept = addLine({0, 0, 0}, {1, 0, 0}, used);
  change(line, [&](ZnDbEntity& e) { e.setLayer(steel); });
  change(kept, [&](ZnDbEntity& e) { e.setLayer(brass); });
  addReference(used);
  asOneStep([&] {
    EXPECT_EQ(zndbPurge(db, ZnDbLayerTableRecord::desc()).length(), 0);
    EXPECT_EQ(zndbPurge(db, ZnDbBlockTableRecord::desc()).length(), 2);
    EXPECT_EQ(zndbPurge(db).contains(steel), true);
  });
  EXPECT_TRUE(inner.isErased() && outer.isErased() && steel.isErased());
  EXPECT_FALSE(used.isErased() || brass.isErased() || db.layerZero().isErased());
}

} // namespace
