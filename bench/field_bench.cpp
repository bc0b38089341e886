// What the fields of objects cost in memory: keeping states for undo, taking them back, copying, comparing.
#include <benchmark/benchmark.h>

#include "quorl/db/core/database.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/core/memory_filer.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/table/block_table.h"

namespace {

constexpr int kCircles = 1000;

struct Circles {
  ZnDbDatabase drawing;
  std::vector<ZnDbObjectId> ids;

  Circles() {
    ZnDbHolder<ZnDbBlockTableRecord> space;
    space.openForWrite(drawing.modelSpaceId());
    for (int i = 0; i < kCircles; ++i) {
      auto* circle = new ZnDbCircle(ZnGePoint3d(i, 0.0, 0.0), ZnGeVector3d::kZAxis, 2.0);
      ids.emplace_back();
      space->appendZnDbEntity(ids.back(), circle);
      circle->close();
    }
  }
  void changeAll() {
    drawing.undoRecorder().startStep();
    for (const ZnDbObjectId id : ids) {
      ZnDbHolder<ZnDbCircle> circle;
      circle.openForWrite(id);
      circle->setRadius(3.0);
    }
  }
};

void keepStates(benchmark::State& state) {
  Circles circles;
  for (auto _ : state) {
    circles.changeAll();
    state.PauseTiming();
    circles.drawing.undoRecorder().clear();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kCircles);
}

void undoAndRedo(benchmark::State& state) {
  Circles circles;
  circles.changeAll();
  for (auto _ : state) {
    circles.drawing.undoRecorder().undo();
    circles.drawing.undoRecorder().redo();
  }
  state.SetItemsProcessed(state.iterations() * kCircles * 2);
}

void writeFields(benchmark::State& state) {
  Circles circles;
  ZnDbMemoryFiler filer(ZnDbFiler::kUndo);
  for (auto _ : state)
    for (const ZnDbObjectId id : circles.ids) {
      filer.clear();
      id.slot()->object->bdocOutFields(filer);
      benchmark::DoNotOptimize(filer.bytes().data());
    }
  state.SetItemsProcessed(state.iterations() * kCircles);
}

void cloneObjects(benchmark::State& state) {
  Circles circles;
  for (auto _ : state)
    for (const ZnDbObjectId id : circles.ids) delete id.slot()->object->clone();
  state.SetItemsProcessed(state.iterations() * kCircles);
}

void deepClone(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    {
      Circles circles;
      ZnArray<ZnDbObjectId> wanted;
      for (const ZnDbObjectId id : circles.ids) wanted.append(id);
      ZnDbIdMapping mapping(0, &circles.drawing, &circles.drawing);
      state.ResumeTiming();
      circles.drawing.deepCloneObjects(wanted, circles.drawing.modelSpaceId(), mapping);
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kCircles);
}

BENCHMARK(keepStates)->Unit(benchmark::kMicrosecond);
BENCHMARK(undoAndRedo)->Unit(benchmark::kMicrosecond);
BENCHMARK(writeFields)->Unit(benchmark::kMicrosecond);
BENCHMARK(cloneObjects)->Unit(benchmark::kMicrosecond);
BENCHMARK(deepClone)->Unit(benchmark::kMicrosecond)->Iterations(200);

} // namespace
