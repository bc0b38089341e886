// Saving and opening drawings of growing size: the time a mark must stay the same.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "bench/marked_drawing.h"
#include "quorl/file/drawing_file.h"

namespace {

std::string scratchFile(const char* ending) {
  return (std::filesystem::temp_directory_path() / (std::string("quorl_bench") + ending)).string();
}

void saveDrawing(benchmark::State& state) {
  MarkedDrawing& drawing = MarkedDrawing::withMarks(static_cast<int>(state.range(0)));
  const std::string path = scratchFile(".bdoc");
  ZnFileError error;
  for (auto _ : state)
    if (zndbSaveDrawing(drawing.database(), path, error) != Quorl::eOk)
      state.SkipWithError(error.text().c_str());
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void openDrawing(benchmark::State& state) {
  const std::string path = scratchFile(".bdoc");
  ZnFileError error;
  MarkedDrawing& drawing = MarkedDrawing::withMarks(static_cast<int>(state.range(0)));
  if (zndbSaveDrawing(drawing.database(), path, error) != Quorl::eOk)
    state.SkipWithError(error.text().c_str());
  for (auto _ : state)
    if (!zndbOpenDrawing(path, error)) state.SkipWithError(error.text().c_str());
  state.SetItemsProcessed(state.iterations() * state.range(0));
  std::filesystem::remove(path);
}

BENCHMARK(saveDrawing)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(openDrawing)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
