// Opening, drawing and saving databases of many pictures, 20 segments each. Each must grow
// linearly, and 2,000 pictures take well under a second.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "editor/draw.h"
#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/svg_canvas.h"

namespace {

using namespace velora;

const std::string &file_name() {
  static const std::string name =
      (std::filesystem::temp_directory_path() / "velora_bench_pictures.seg").string();
  return name;
}

// A result over a tree of boxes and parameters: 11 nodes and 9 arcs.
void make_picture(int number) {
  WinInfo *wi = nullptr;
  NewWinInfo(0, kFunctionPicture, &wi);
  wi->name = "function" + std::to_string(number / 3);
  wi->cmpnt = number % 3;
  setup_for_fdef(wi);
  const auto add = [wi](int tool, const char *label, int x, int y) {
    const int slot = add_node(wi, tool, x, y);
    wi->seg_ments[slot]->label = label;
    return slot;
  };
  put_arc_between(wi, add(kToolFunction, "append", 225, 280), 1, kArc);
  for (int level = 0; level < 4; ++level) {
    const int from = add(kToolFunction, "map", 180 + 10 * level, 220 - 50 * level);
    put_arc_between(wi, from, level == 0 ? 2 : from - 4, kArc);
    put_arc_between(wi, add(kToolParameter, "list ?0", 60 * level, 60), from, kArc);
  }
  add(kToolParameter, "int", 400, 20);
  wi->saved = 1;
}

void make_pictures(int count) {
  FreeAllPictures();
  forget_segment_files();
  for (int i = 0; i < count; ++i)
    make_picture(i);
}

void BM_open(benchmark::State &state) {
  make_pictures(static_cast<int>(state.range(0)));
  SaveAll(file_name());
  for (auto _ : state) {
    FreeAllPictures();
    if (RestoreAll(file_name()) == 0)
      state.SkipWithError("cannot open");
  }
  state.SetComplexityN(state.range(0));
}

void BM_open_again(benchmark::State &state) { // every picture replaces one that is there
  make_pictures(static_cast<int>(state.range(0)));
  SaveAll(file_name());
  for (auto _ : state)
    RestoreAll(file_name());
  state.SetComplexityN(state.range(0));
}

void BM_draw(benchmark::State &state) {
  make_pictures(static_cast<int>(state.range(0)));
  for (auto _ : state)
    for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
      SvgCanvas canvas;
      DrawVeloraWindow(wi, canvas);
      benchmark::DoNotOptimize(canvas.document({0, 0, 450, 360}, wi->name));
    }
  state.SetComplexityN(state.range(0));
}

void BM_save(benchmark::State &state) {
  make_pictures(static_cast<int>(state.range(0)));
  for (auto _ : state)
    if (SaveAll(file_name()) == 0)
      state.SkipWithError("cannot save");
  state.SetComplexityN(state.range(0));
}

void sizes(benchmark::internal::Benchmark *bench) {
  bench->RangeMultiplier(2)
      ->Range(500, 8000)
      ->Unit(benchmark::kMillisecond)
      ->Complexity(benchmark::oN);
}

BENCHMARK(BM_open)->Apply(sizes);
BENCHMARK(BM_open_again)->Apply(sizes);
BENCHMARK(BM_draw)->Apply(sizes);
BENCHMARK(BM_save)->Apply(sizes);

} // namespace

BENCHMARK_MAIN();
