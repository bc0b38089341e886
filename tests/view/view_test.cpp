#include "quorl/db/entity/viewport.h"
#include "quorl/view/brevix_util.h"
#include "quorl/view/dim_util.h"
#include "quorl/view/point_ref.h"
#include "quorl/view/share_db.h"
#include "quorl/view/view_rep_block_reference.h"
#include "support/host_drawing.h"

namespace {

class ViewTest : public HostDrawingTest {
protected:
  ViewTest() {
    auto* window = new ZnDbViewport;
    window->setCenterPoint(ZnGePoint3d(100, 50, 0));
    window->setViewCenter(ZnGePoint2d(10, 0));
    window->setCustomScale(0.5);
    viewport = add(window, db.paperSpaceId());
    plainViewport = add(new ZnDbViewport, db.paperSpaceId());
    line = addLine({10, 0, 0}, {14, 0, 0});
  }

  ZnDbObjectId viewport, plainViewport, line;
};

} // namespace

TEST_F(ViewTest, points_seen_through_a_viewport_stand_on_the_sheet) {
  ZnArray<ZnDbSubentId> ends;
  ZnDbHolder<ZnDbLine>(line)->getSubentIds(ZnDb::kVertexSubentType, ends);
  ASSERT_EQ(ends.length(), 2);
  struct Case {
    ZnArray<ZnDbObjectId> path;
    int end;
    ZnGePoint3d point;
  };
  const Case cases[] = {
      {{line}, 1, {14, 0, 0}},
      {{viewport, line}, 0, {100, 50, 0}},
      {{viewport, line}, 1, {102, 50, 0}},
  };
  for (const Case& c : cases) {
    ZnGePoint3d point;
    const ZnDbPointRef reference(ZnDbVertexRef(ZnDbFullSubentPath(c.path, ends[c.end])));
    ASSERT_EQ(reference.evaluatePoint(point), Quorl::eOk);
    EXPECT_EQ(point, c.point);
  }
  ZnGeMatrix3d transform;
  EXPECT_EQ(ZnDbPointRef::mswcsToPswcs(nullptr, transform), Quorl::eNullObjectPointer);
}

TEST_F(ViewTest, the_viewport_of_a_path_and_its_scale) {
  const ZnDbObjectId space = db.modelSpaceId();
  struct Case {
    ZnArray<ZnDbObjectId> path;
    ZnDbObjectId found;
  };
  const Case cases[] = {{ZnArray<ZnDbObjectId>(), {}},
                        {{line}, {}},
                        {{viewport, line}, viewport},
                        {{line, viewport, plainViewport}, viewport},
                        {{space, ZnDbObjectId(), plainViewport}, plainViewport}};
  for (const Case& c : cases) {
    ZnDbObjectId found = line;
    EXPECT_EQ(ShareDB::getViewportIdFromIdPath(c.path, found),
              c.found.isNull() ? Quorl::eKeyNotFound : Quorl::eOk);
    EXPECT_EQ(found, c.found);
  }
  double factor = 7.0;
  EXPECT_EQ(ZnDimUtil::calcDimLFac(line, factor), Quorl::eWrongObjectClass);
  EXPECT_EQ(ZnDimUtil::calcDimLFac({}, factor), Quorl::eNullObjectId);
  EXPECT_EQ(factor, 7.0);
  EXPECT_EQ(ZnDimUtil::calcDimLFac(viewport, factor), Quorl::eOk);
  EXPECT_DOUBLE_EQ(factor, 0.5);
}

TEST_F(ViewTest, a_viewport_counts_while_a_view_names_it) {
  const ZnDbObjectId view = add(new ZnDbViewRepBlockReference(ZnGePoint3d(), addBlock(L"*U")));
  ZnDbObjectId foundView, definition;
  EXPECT_FALSE(DbBrevixUtil::checkBrevixViewport(viewport, &foundView, &definition));
  EXPECT_TRUE(foundView.isNull());
  undo().startStep();
  change<ZnDbViewRepBlockReference>(view, [this](ZnDbViewRepBlockReference& open) {
    EXPECT_EQ(open.setViewportId(line), Quorl::eInvalidInput);
    EXPECT_EQ(open.setViewportId(viewport), Quorl::eOk);
    open.setViewId(line);
  });
  const auto expectNamed = [&](bool named) {
    EXPECT_EQ(DbBrevixUtil::checkBrevixViewport(viewport), named);
    EXPECT_FALSE(DbBrevixUtil::checkBrevixViewport(plainViewport));
    EXPECT_FALSE(DbBrevixUtil::checkBrevixViewport(line));
    EXPECT_FALSE(DbBrevixUtil::checkBrevixViewport({}));
  };
  expectNamed(true);
  EXPECT_TRUE(DbBrevixUtil::checkBrevixViewport(viewport, &foundView, &definition));
  EXPECT_EQ(foundView, view);
  EXPECT_EQ(definition, line);
  EXPECT_EQ(undo().undo(), Quorl::eOk);
  expectNamed(false);
  EXPECT_EQ(undo().redo(), Quorl::eOk);
  expectNamed(true);
  erase(view);
  expectNamed(false);
}
