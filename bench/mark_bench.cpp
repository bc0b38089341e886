// What one center mark costs, against the bare work of computing its lines, in drawings of growing size.
#include <benchmark/benchmark.h>

#include "bench/marked_drawing.h"
#include "quorl/db/core/undo.h"
#include "torvi/core/object_wrapper.h"
#include "torvi/dbutils/lyx_utils.h"

namespace {

// The yardstick: six segments computed from a circle into six heap objects and freed, without any drawing.
void bareMark(benchmark::State& state) {
  ZnGeCircArc3d circle(ZnGePoint3d(3.0, 4.0, 0.0), ZnGeVector3d::kZAxis, 5.0);
  for (auto _ : state) {
    const ZnGePoint3d c = circle.center();
    const double half = circle.radius() * 0.1, start = circle.radius() * 0.2, reach = circle.radius() + 0.5;
    const ZnGeVector3d x = ZnGeVector3d::kXAxis, y = ZnGeVector3d::kYAxis;
    ZnGeCurve3d* lines[] = {
        new ZnGeLineSeg3d(c - x * half, c + x * half),   new ZnGeLineSeg3d(c - y * half, c + y * half),
        new ZnGeLineSeg3d(c - x * reach, c - x * start), new ZnGeLineSeg3d(c + x * start, c + x * reach),
        new ZnGeLineSeg3d(c - y * reach, c - y * start), new ZnGeLineSeg3d(c + y * start, c + y * reach)};
    benchmark::DoNotOptimize(lines);
    for (ZnGeCurve3d* line : lines) delete line;
  }
}

// One undo step, the circle moved, the network evaluated: what a user's move of one circle costs.
void regenerateOne(benchmark::State& state) {
  MarkedDrawing& drawing = MarkedDrawing::withMarks(static_cast<int>(state.range(0)));
  const ZnDbObjectId circleId = drawing.circle(drawing.count() / 2);
  ZnDbUndoRecorder& undo = drawing.database().undoRecorder();
  ZnGeMatrix3d there, back;
  there.setToTranslation(ZnGeVector3d(0.25, 0.0, 0.0));
  back.setToTranslation(ZnGeVector3d(-0.25, 0.0, 0.0));
  bool away = false;
  int steps = 0;
  for (auto _ : state) {
    undo.startStep();
    {
      ZnDbHolder<ZnDbCircle> circle;
      circle.openForWrite(circleId);
      circle->transformBy(away ? back : there);
    }
    away = !away;
    ZnDbAssocManager::evaluateTopLevelNetwork(&drawing.database());
    if (++steps % 256 == 0) undo.clear();
  }
  const bool matches =
      ZnDbTorviObjectWrapper(drawing.mark(drawing.count() / 2)).doesActionMatchCurrentGeometry();
  if (!matches) state.SkipWithError("the mark did not follow");
}

void createOne(benchmark::State& state) {
  MarkedDrawing& drawing = MarkedDrawing::withMarks(static_cast<int>(state.range(0)));
  std::vector<ZnDbEdgeRef> edges;
  for (int i = 0; i < static_cast<int>(state.max_iterations); ++i)
    edges.emplace_back(ZnDbFullSubentPath(drawing.addCircle(), ZnDb::kEdgeSubentType, 0));
  ZnDbUndoRecorder& undo = drawing.database().undoRecorder();
  undo.clear();
  size_t next = 0;
  for (auto _ : state) {
    undo.startStep();
    ZnDbObjectId mark;
    if (ZnTorviLyxUtils::createCenterMark(edges[next++], mark, &drawing.database()) != Quorl::eOk)
      state.SkipWithError("no mark was created");
  }
  undo.clear();
}

void askOne(benchmark::State& state) {
  MarkedDrawing& drawing = MarkedDrawing::withMarks(static_cast<int>(state.range(0)));
  const ZnDbTorviObjectWrapper mark(drawing.mark(drawing.count() / 3));
  bool matches = true;
  for (auto _ : state) matches = mark.doesActionMatchCurrentGeometry() && matches;
  if (!matches) state.SkipWithError("an up-to-date mark says that it is not");
}

// Enough for single pages of fresh memory to even out. Where memory is touched for the first time since the
// machine started, a virtual machine's host has to find it, which may cost as much as all the rest: run
// twice.
constexpr int kCreations = 4000;

BENCHMARK(bareMark);
BENCHMARK(regenerateOne)->Arg(1000)->Iterations(20000);
BENCHMARK(askOne)->Arg(1000)->Iterations(20000);
BENCHMARK(createOne)->Arg(1000)->Iterations(kCreations);
BENCHMARK(regenerateOne)->Arg(100000)->Iterations(20000);
BENCHMARK(askOne)->Arg(100000)->Iterations(20000);
BENCHMARK(createOne)->Arg(100000)->Iterations(kCreations);
BENCHMARK(regenerateOne)->Arg(1000000)->Iterations(20000);
BENCHMARK(askOne)->Arg(1000000)->Iterations(20000);
BENCHMARK(createOne)->Arg(1000000)->Iterations(kCreations);

} // namespace
