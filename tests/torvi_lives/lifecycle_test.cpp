// Clones, explodes, saves and changes of whole drawings, as the host tells of them.
#include <set>

#include "quorl/assoc/dim_assoc.h"
#include "quorl/db/core/working_globals.h"
#include "quorl/db/entity/aligned_dimension.h"
#include "quorl/edit/explode.h"
#include "support/drawing_text.h"
#include "torvi/lifecycle/deep_clone_utils.h"
#include "torvi_lives/lives.h"

namespace {

using Utils = ZnTorviDeepCloneUtils;
using Lyx = ZnTorviLyxUtils;

class Lifecycle : public LivesTest {
protected:
  // A block with these lines and circles, and a mark in model space on the first of them, seen through the
  // path.
  ZnDbObjectId blockOf(std::initializer_list<const char*> inputs) {
    const ZnDbObjectId block = addEmptyBlock();
    for (const char* input : inputs) edges_.push_back(addInput(input, block));
    return block;
  }
  ZnDbObjectId markAlong(const ZnArray<ZnDbObjectId>& path) {
    ZnDbObjectId id;
    EXPECT_EQ(Lyx::createCenterMark(edgeAlong(path), id, db_.get()), Quorl::eOk);
    return id;
  }
  ZnDbIdMapping clone(int context, std::initializer_list<ZnDbObjectId> ids, ZnDbObjectId owner) {
    ZnDbIdMapping mapping(context, db_.get(), owner.database());
    EXPECT_EQ(db_->deepCloneObjects(ZnArray<ZnDbObjectId>(ids), owner, mapping), Quorl::eOk);
    return mapping;
  }
  static bool follows(ZnDbObjectId center) { return wrapperOf(center).isAssociative(); }
  static ZnGePoint3d placeOf(ZnDbObjectId center) {
    return ZnDbHolder<ZnDbBlockReference>(center)->position();
  }

  Ids edges_;
};

TEST_F(Lifecycle, ExplodedBlocksHandTheirEdgesOver) {
  const ZnDbObjectId inner = blockOf({"3,4 r5"}), outer = addEmptyBlock();
  const ZnDbObjectId nested = addReference(inner, ZnGeMatrix3d::translation({10, 0, 0}), outer);
  const ZnDbObjectId shown = addReference(outer, ZnGeMatrix3d::scaling(2.0)), other = addReference(outer);
  const ZnDbObjectId mark = markAlong({shown, nested, edges_[0]}),
                     otherMark = markAlong({other, nested, edges_[0]});
  const ZnGePoint3d at = placeOf(mark), otherAt = placeOf(otherMark);
  const std::string before = contentOf(*db_);
  db_->undoRecorder().startStep();
  ZnArray<ZnDbObjectId> made, circles;
  ASSERT_EQ(zndbExplode(shown, made), Quorl::eOk);
  ASSERT_EQ(zndbExplode(made[0], circles), Quorl::eOk);
  change<ZnDbEntity>(circles[0], [](ZnDbEntity& circle) {
    circle.transformBy(ZnGeMatrix3d::translation({0, 7, 0}));
  });
  evaluateChanges();
  EXPECT_TRUE(follows(mark) && near(placeOf(mark), at + ZnGeVector3d(0, 7, 0)));
  erase(other); // which was not exploded: its mark has nothing to do with the clones of the other
  evaluateChanges();
  EXPECT_TRUE(!follows(otherMark) && near(placeOf(otherMark), otherAt));
  undo();
  EXPECT_EQ(contentOf(*db_), before);
}

TEST_F(Lifecycle, AnUnevenScaleMakesEllipsesThatNoMarkFollows) {
  const ZnDbObjectId block = blockOf({"3,4 r5", "0,0 9,0"});
  const ZnDbObjectId shown = addReference(block);
  const ZnDbObjectId mark = markAlong({shown, edges_[0]});
  change<ZnDbBlockReference>(shown, [&](ZnDbBlockReference& reference) {
    reference.setBlockTransform(ZnGeMatrix3d::scaling(ZnGeVector3d(2, 1, 1)));
  });
  ZnArray<ZnDbObjectId> made;
  ASSERT_EQ(zndbExplode(shown, made), Quorl::eOk);
  ASSERT_EQ(made.length(), 2);
  EXPECT_EQ(made[0].objectClass()->name(), ZnString(L"ZnDbEllipse"));
  evaluateChanges();
  EXPECT_FALSE(follows(mark));
  EXPECT_NE(printed_.utf8().find("center mark"), std::string::npos) << printed_.utf8();
}

TEST_F(Lifecycle, AnExplodedCenterObjectIsPlainLinesInItsColor) {
  const Center mark = make(kSamples[0]);
  change<ZnDbEntity>(mark.id, [](ZnDbEntity& reference) { reference.setColorIndex(3); });
  const ZnDbObjectId block = DrawingTest::blockOf(mark.id);
  ZnArray<ZnDbObjectId> made;
  ASSERT_EQ(zndbExplode(mark.id, made), Quorl::eOk);
  evaluateChanges();
  ASSERT_EQ(made.length(), 6);
  for (const ZnDbObjectId line : made) EXPECT_EQ(ZnDbHolder<ZnDbEntity>(line)->colorIndex(), 3);
  EXPECT_FALSE(block.isErased());
  ZnFileError error;
  ASSERT_EQ(zndbSaveDrawing(*db_, testing::TempDir() + "exploded.bdoc", error), Quorl::eOk);
  EXPECT_TRUE(block.isErased()) << "purged by the save";
}

// What becomes of a mark and of its clone when these are cloned: c its circle, m itself.
TEST_F(Lifecycle, ClonesKeepWhatComesAlong) {
  struct {
    int context;
    const char* what;
    bool sourceFollows, cloneFollows;
  } const rows[] = {{ZnDb::kCopyContext, "cm", true, true},    {ZnDb::kCopyContext, "m", true, false},
                    {ZnDb::kCopyContext, "c", true, false},    {ZnDb::kCopyInContext, "m", true, false},
                    {ZnDb::kBlockContext, "c", false, false},  {ZnDb::kBlockContext, "cm", true, true},
                    {ZnDb::kBlockContext, "m", false, false},  {ZnDb::kCopyOutContext, "c", false, false},
                    {ZnDb::kCopyOutContext, "cm", true, true}, {ZnDb::kInsertContext, "m", true, true}};
  for (const bool isLong : {false, true})
    for (const auto& row : rows) {
      SCOPED_TRACE(std::string(row.what) + " in context " + std::to_string(row.context) +
                   (isLong ? ", long" : ""));
      ZnDbWorkingGlobals work;
      work.globals.isLongTransactionActive = isLong;
      printed_ = ZnString();
      const Center mark = make(kSamples[0]);
      ZnDbDatabase elsewhere;
      ZnArray<ZnDbObjectId> ids;
      for (const char* c = row.what; *c; ++c) ids.append(*c == 'c' ? mark.inputs[0] : mark.id);
      const ZnDbObjectId owner = row.context == ZnDb::kCopyOutContext ? elsewhere.modelSpaceId()
                                 : row.context == ZnDb::kBlockContext ? addEmptyBlock()
                                                                      : db_->modelSpaceId();
      ZnDbIdMapping mapping(row.context, db_.get(), owner.database());
      ASSERT_EQ(db_->deepCloneObjects(ids, owner, mapping), Quorl::eOk);
      evaluateChanges();
      EXPECT_EQ(follows(mark.id), isLong || row.sourceFollows);
      const ZnDbObjectId copy = Utils::getClonedId(mapping, mark.id);
      if (!copy.isNull()) {
        EXPECT_EQ(follows(copy), row.cloneFollows || (isLong && owner.database() == db_.get()));
      }
      EXPECT_TRUE(printed_.isEmpty()) << printed_.utf8();
    }
}

TEST_F(Lifecycle, PurgedAtTheSaveOfTheirOwnDrawing) {
  const ZnDbObjectId used = addEmptyBlock(), unused = addEmptyBlock();
  const ZnDbObjectId reference = addReference(used);
  ZnDbDatabase elsewhere;
  for (const ZnDbObjectId id : {used, unused, unused, ZnDbObjectId()}) Utils::markBlockTableRecordToPurge(id);
  Utils::purgeMarkedBlockTableRecords(&elsewhere);
  EXPECT_FALSE(used.isErased() || unused.isErased());
  Utils::purgeMarkedBlockTableRecords(db_.get());
  EXPECT_TRUE(!used.isErased() && unused.isErased());
  erase(reference); // too late: the list has forgotten it
  Utils::purgeMarkedBlockTableRecords(db_.get());
  EXPECT_FALSE(used.isErased());
}

// An erased mark, whose block a save took away, comes back whole.
TEST_F(Lifecycle, UndoAfterASaveBringsAnErasedMarkBack) {
  const Center mark = make(kSamples[0]);
  const ZnDbObjectId block = DrawingTest::blockOf(mark.id);
  erase(mark.id);
  evaluateChanges();
  db_->undoRecorder().startStep();
  ZnFileError error;
  const auto save = [&] {
    ASSERT_EQ(zndbSaveDrawing(*db_, testing::TempDir() + "erased.bdoc", error), Quorl::eOk);
  };
  save();
  EXPECT_TRUE(block.isErased());
  undo();
  EXPECT_FALSE(mark.id.isErased() || block.isErased());
  EXPECT_TRUE(looksLike(mark.id, mark.before));
  save();
  redo();
  EXPECT_TRUE(mark.id.isErased());
}

TEST_F(Lifecycle, OldFilesLetGoOfWhatDoesNotFit) {
  struct {
    int version, maintenance;
    bool isChecked;
  } const rows[] = {{30, 500, true}, {31, 124, true}, {31, 125, false}, {33, 0, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.version) + "." + std::to_string(row.maintenance));
    const Center fits = make(kSamples[0]), moved = make(kSamples[0]);
    move(moved.inputs, ZnGeMatrix3d::translation({1, 0, 0}));
    db_->setOriginalFileSavedBy(row.version, row.maintenance);
    ZnRxEvent::instance().tell([&](ZnRxEventReactor& reactor) { reactor.firstOpenCompleted(db_.get()); });
    EXPECT_TRUE(follows(fits.id));
    EXPECT_EQ(follows(moved.id), !row.isChecked);
    evaluateChanges();
  }
}

TEST_F(Lifecycle, ScalesLayersAndViewportsBringUpToDateWhatDependsOnThem) {
  const Center mark = make(kSamples[0]);
  const ZnDbObjectId layer = layerOf(mark.id), plain = addLinetype(L"PLAIN", {}, false);
  const auto linetypeOfLayer = [&](ZnDbObjectId linetype) {
    change<ZnDbLayerTableRecord>(layer,
                                 [&](ZnDbLayerTableRecord& record) { record.setLinetypeObjectId(linetype); });
  };
  // A stale object tells whether it was evaluated.
  const auto isEvaluated = [&](auto&& deed) {
    move(mark.inputs, ZnGeMatrix3d::translation({1, 0, 0}));
    const bool stale = !wrapperOf(mark.id).doesActionMatchCurrentGeometry();
    deed();
    const bool evaluated = wrapperOf(mark.id).doesActionMatchCurrentGeometry();
    evaluateChanges();
    return stale && evaluated;
  };
  EXPECT_TRUE(isEvaluated([&] { db_->setLtscale(2.0); }));
  change<ZnDbEntity>(mark.id, [&](ZnDbEntity& entity) { entity.setLinetype(db_->byLayerLinetype()); });
  EXPECT_TRUE(isEvaluated([&] { linetypeOfLayer(plain); }));
  EXPECT_FALSE(isEvaluated([&] {
    ZnDbWorkingGlobals work;
    work.globals.isLayerUpdateStopped = true;
    linetypeOfLayer(db_->continuousLinetype());
  }));
  EXPECT_TRUE(isEvaluated([&] { Lyx::updateAllCenterActions(db_.get()); }));
  EXPECT_TRUE(isEvaluated([&] { Lyx::updateAllCenterActions(nullptr); }));
  EXPECT_TRUE(isEvaluated([&] { Lyx::updateAllByLayerLinetypeCenterMarks(db_.get(), nullptr); }));
  change<ZnDbEntity>(mark.id, [&](ZnDbEntity& entity) { entity.setLinetype(plain); });
  EXPECT_FALSE(isEvaluated([&] { linetypeOfLayer(plain); })) << "its linetype is its own";
}

TEST_F(Lifecycle, UpToDateObjectsAreLeftAlone) {
  for (const Sample& sample : kSamples) make(sample);
  evaluateChanges();
  // What is evaluated is told of as modified.
  struct Modified : ZnDbDatabaseReactor {
    void objectModified(ZnDbDatabase*, const ZnDbObject*) override { ++count; }
    int count = 0;
  } modified;
  db_->addReactor(&modified);
  Lyx::updateAllCenterActions(db_.get());
  db_->removeReactor(&modified);
  EXPECT_EQ(modified.count, 0);
}

TEST_F(Lifecycle, ViewportsAreRecordedAndUpdated) {
  const ZnDbObjectId circle = addInput("3,4 r5"), window = addViewport(0.5);
  ASSERT_EQ(db_->setCurrentSpaceId(db_->paperSpaceId()), Quorl::eOk);
  const ZnDbObjectId mark = markAlong({window, circle});
  const auto scale = [&](double to) {
    change<ZnDbViewport>(window, [&](ZnDbViewport& viewport) { viewport.setCustomScale(to); });
  };
  Lyx::setRecordUpdate(false);
  scale(0.25);
  EXPECT_TRUE(Lyx::viewportsToUpdate().isEmpty());
  Lyx::setRecordUpdate(true);
  scale(0.2);
  scale(0.1);
  EXPECT_TRUE(Lyx::getRecordUpdate() && ZnTorviLyxUtils::m_bRecordUpdate);
  EXPECT_EQ(Lyx::viewportsToUpdate(), ZnArray<ZnDbObjectId>{window});
  EXPECT_FALSE(wrapperOf(mark).doesActionMatchCurrentGeometry());
  Lyx::updateCenterObjDependOnViewport(window);
  EXPECT_TRUE(wrapperOf(mark).doesActionMatchCurrentGeometry());
  Lyx::viewportsToUpdate().removeAll();
  Lyx::setRecordUpdate(false);
}

TEST_F(Lifecycle, StateOfTheProcess) {
  Lyx::setIsLongTransactionActive(db_.get(), true);
  Lyx::setIsLongTransactionActive(db_.get(), true);
  Lyx::setIsLongTransactionActive(db_.get(), false);
  EXPECT_TRUE(Lyx::isLongTransactionActive(db_.get()) && Lyx::isLongTransactionActive());
  Lyx::setIsLongTransactionActive(db_.get(), false);
  EXPECT_FALSE(Lyx::isLongTransactionActive(db_.get()) || Lyx::isLongTransactionActive());
  zndbDefaultGlobals().isLongTransactionActive = true;
  EXPECT_TRUE(Lyx::isLongTransactionActive());
  zndbDefaultGlobals().isLongTransactionActive = false;
  Lyx::setAssocEvalRelaxed(true);
  EXPECT_TRUE(Lyx::isAssocEvalRelaxed());
  Lyx::setAssocEvalRelaxed(false);
  ZnArray<ZnDbObjectId> blocks;
  Lyx::getAllLocalBlockTableRecords(blocks, db_.get());
  EXPECT_TRUE(blocks.contains(db_->modelSpaceId()));
  const int local = blocks.length();
  change<ZnDbBlockTableRecord>(addEmptyBlock(), [](auto& block) { block.setIsFromExternalReference(true); });
  blocks.removeAll();
  Lyx::getAllLocalBlockTableRecords(blocks, db_.get());
  EXPECT_EQ(blocks.length(), local);
}

} // namespace
