#include "bench/marked_drawing.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "quorl/db/core/undo.h"
#include "torvi/dbutils/lyx_utils.h"

namespace {

constexpr double kRadius = 5.0;
constexpr double kPitch = 20.0;

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "bench: %s\n", what);
  std::exit(1);
}

} // namespace

MarkedDrawing::MarkedDrawing(int marks) {
  require(znrxLoadModule(L"ZnDbTorvi.lyx", false, false) == Quorl::eOk, "the module does not load");
  database_ = std::make_unique<ZnDbDatabase>();
  zndbHostApplicationServices()->setWorkingDatabase(database_.get());
  // The history of building is nobody's to undo.
  database_->undoRecorder().setRecording(false);
  const int columns = static_cast<int>(std::ceil(std::sqrt(marks)));
  for (int i = 0; i < marks; ++i) {
    circles_.push_back(addCircleAt(kPitch * (i % columns), kPitch * (i / columns)));
    ZnDbObjectId mark;
    const ZnDbEdgeRef edge(ZnDbFullSubentPath(circles_.back(), ZnDb::kEdgeSubentType, 0));
    require(ZnTorviLyxUtils::createCenterMark(edge, mark, database_.get()) == Quorl::eOk,
            "a mark is not created");
    marks_.push_back(mark);
  }
  database_->undoRecorder().setRecording(true);
}

ZnDbObjectId MarkedDrawing::add(ZnDbEntity* entity) {
  ZnDbHolder<ZnDbBlockTableRecord> space;
  require(space.openForWrite(database_->currentSpaceId()) == Quorl::eOk, "the space does not open");
  ZnDbObjectId id;
  require(space->appendZnDbEntity(id, entity) == Quorl::eOk, "an entity is not appended");
  entity->close();
  return id;
}

ZnDbObjectId MarkedDrawing::addCircleAt(double x, double y) {
  return add(new ZnDbCircle(ZnGePoint3d(x, y, 0.0), ZnGeVector3d::kZAxis, kRadius));
}

ZnDbObjectId MarkedDrawing::addLine(const ZnGeLineSeg3d& line) {
  return add(new ZnDbLine(line.startPoint(), line.endPoint()));
}

ZnDbObjectId MarkedDrawing::addCircle() { return addCircleAt(-kPitch, kPitch * extra_++); }

MarkedDrawing& MarkedDrawing::withMarks(int marks) {
  static std::unique_ptr<MarkedDrawing> drawing;
  if (!drawing || drawing->count() != marks) {
    drawing.reset();
    drawing = std::make_unique<MarkedDrawing>(marks);
  }
  return *drawing;
}
