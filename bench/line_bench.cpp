// What one center line and one edge extension cost, against the bare work of computing their lines, in
// drawings of growing size.
#include <benchmark/benchmark.h>

#include <cstdlib>

#include "bench/marked_drawing.h"
#include "quorl/db/core/undo.h"
#include "torvi/core/object_wrapper.h"
#include "torvi/dbutils/lyx_utils.h"

namespace {

// A wedge off the grid of marks: edges that meet only on their extensions.
const ZnGeLineSeg3d kUpper(ZnGePoint3d(-60.0, 4.0, 0.0), ZnGePoint3d(-40.0, 14.0, 0.0));
const ZnGeLineSeg3d kLower(ZnGePoint3d(-60.0, -4.0, 0.0), ZnGePoint3d(-40.0, -12.0, 0.0));

// Where the bisector crosses the chord between two points, else the corner.
ZnGePoint3d onBisector(const ZnGeLine3d& bisector, const ZnGePoint3d& from, const ZnGePoint3d& to) {
  const ZnGeLineSeg3d chord(from, to);
  ZnGePoint3d crossing = bisector.pointOnLine();
  return bisector.intersectWith(chord, crossing) && chord.isOn(crossing) ? crossing : bisector.pointOnLine();
}

// The yardstick of a center line: one segment computed from two, with its overshoots, on the heap and freed.
void bareLine(benchmark::State& state) {
  ZnGeLineSeg3d first(kUpper), second(kLower);
  for (auto _ : state) {
    benchmark::DoNotOptimize(&first);
    benchmark::DoNotOptimize(&second);
    ZnGePoint3d corner;
    first.intersectWith(second, corner);
    const ZnGeLine3d bisector(corner,
                              (first.endPoint() - corner).normal() + (second.endPoint() - corner).normal());
    const ZnGePoint3d from = onBisector(bisector, first.startPoint(), second.startPoint());
    const ZnGePoint3d to = onBisector(bisector, first.endPoint(), second.endPoint());
    const ZnGeVector3d past = (to - from).normal() * 0.5;
    ZnGeCurve3d* line = new ZnGeLineSeg3d(from - past, to + past);
    benchmark::DoNotOptimize(line);
    delete line;
  }
}

// The yardstick of an edge extension: two segments from near ends to a little past the crossing.
void bareExtension(benchmark::State& state) {
  ZnGeLineSeg3d edges[] = {kUpper, kLower};
  for (auto _ : state) {
    benchmark::DoNotOptimize(edges);
    ZnGePoint3d crossing;
    edges[0].intersectWith(edges[1], crossing);
    ZnGeCurve3d* lines[2];
    for (int i = 0; i < 2; ++i) {
      const ZnGePoint3d nearEnd = edges[i].closestPointTo(crossing);
      if (nearEnd.isEqualTo(crossing)) std::abort(); // an edge that reaches the crossing needs no extension
      const ZnGeVector3d along = (crossing - nearEnd).normal();
      lines[i] = new ZnGeLineSeg3d(nearEnd + along * 0.625, crossing + along * 1.25);
    }
    benchmark::DoNotOptimize(lines);
    for (ZnGeCurve3d* line : lines) delete line;
  }
}

using Create = Quorl::ErrorStatus (*)(const ZnArray<ZnDbEdgeRef>& edges, ZnDbObjectId& id, ZnDbDatabase* db);

Quorl::ErrorStatus createLine(const ZnArray<ZnDbEdgeRef>& edges, ZnDbObjectId& id, ZnDbDatabase* db) {
  const ZnGePoint3d picks[] = {kUpper.midPoint(), kLower.midPoint()};
  return ZnTorviLyxUtils::createCenterLine(edges, picks, id, db);
}

// One undo step, one edge turned a little, the network evaluated: what a user's change of one edge costs.
void regenerate(benchmark::State& state, Create create) {
  MarkedDrawing& drawing = MarkedDrawing::withMarks(static_cast<int>(state.range(0)));
  ZnDbUndoRecorder& undo = drawing.database().undoRecorder();
  undo.clear();
  const ZnDbObjectId upper = drawing.addLine(kUpper), lower = drawing.addLine(kLower);
  ZnArray<ZnDbEdgeRef> edges;
  for (const ZnDbObjectId id : {upper, lower})
    edges.append(ZnDbEdgeRef(ZnDbFullSubentPath(id, ZnDb::kEdgeSubentType, 0)));
  ZnDbObjectId center;
  if (create(edges, center, &drawing.database()) != Quorl::eOk) state.SkipWithError("nothing was created");
  bool away = false;
  int steps = 0;
  for (auto _ : state) {
    undo.startStep();
    {
      ZnDbHolder<ZnDbLine> line;
      line.openForWrite(upper);
      line->setEndPoint(kUpper.endPoint() + ZnGeVector3d(0.0, away ? 0.0 : 0.25, 0.0));
    }
    away = !away;
    ZnDbAssocManager::evaluateTopLevelNetwork(&drawing.database());
    if (++steps % 256 == 0) undo.clear();
  }
  const ZnDbTorviObjectWrapper wrapper(center);
  if (!wrapper.isFullyAssociative() || !wrapper.doesActionMatchCurrentGeometry())
    state.SkipWithError("it did not follow");
}

void regenerateLine(benchmark::State& state) { regenerate(state, createLine); }
void regenerateExtension(benchmark::State& state) { regenerate(state, ZnTorviLyxUtils::createEdgeExtension); }

BENCHMARK(bareLine);
BENCHMARK(bareExtension);
BENCHMARK(regenerateLine)->Arg(1000)->Iterations(20000);
BENCHMARK(regenerateExtension)->Arg(1000)->Iterations(20000);
BENCHMARK(regenerateLine)->Arg(100000)->Iterations(20000);
BENCHMARK(regenerateExtension)->Arg(100000)->Iterations(20000);
BENCHMARK(regenerateLine)->Arg(1000000)->Iterations(20000);
BENCHMARK(regenerateExtension)->Arg(1000000)->Iterations(20000);

} // namespace
