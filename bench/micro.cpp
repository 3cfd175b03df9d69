// Microbenchmarks of what every command leans on: finding symbols, loading text, collecting,
// reducing. They run on the program's own stack size and without a console.
#include <benchmark/benchmark.h>
#include <pthread.h>

#include <cstdio>
#include <string>

#include "core/events.h"
#include "core/space.h"
#include "core/symbols.h"
#include "eval/registry.h"
#include "front/cint.h"
#include "front/parser.h"
#include "platform/response.h"
#include "shell/return_point.h"

namespace {

using namespace velora;

void find_a_symbol(benchmark::State &state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(find_symbol("str_to_words", 0));
}
BENCHMARK(find_a_symbol);

void miss_a_symbol(benchmark::State &state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(find_symbol("no_such_name", 0));
}
BENCHMARK(miss_a_symbol);

void answer_a_query(benchmark::State &state) {
  for (auto _ : state)
    run_command([] { return cint_query("+ #1 #2"); });
}
BENCHMARK(answer_a_query);

void reduce_a_fold(benchmark::State &state) {
  for (auto _ : state)
    run_command([] { return cint_query("foldr + #0 (list_of_int #1 #1000 #1)"); });
  state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(reduce_a_fold);

// A list of `range` elements hangs on a root while the pool is collected.
void collect_a_list(benchmark::State &state) {
  run_command([&] {
    Root list(LMakeInteger(0));
    for (std::int64_t i = 0; i < state.range(0); ++i) {
      Root head(LMakeInteger(static_cast<std::int32_t>(i)));
      list = LMakeApplyNode(head, list);
    }
    for (auto _ : state)
      garbage_collect();
    return 1;
  });
  init_free_list();
  state.SetItemsProcessed(state.iterations() * state.range(0) * 2);
}
BENCHMARK(collect_a_list)->Arg(1000)->Arg(8000);

void load_clauses(benchmark::State &state) {
  const char *name = "/tmp/velora-micro.ddb";
  if (std::FILE *f = std::fopen(name, "w")) {
    for (int i = 0; i < 200; ++i)
      std::fprintf(f, "fdec\nbm%d ::= int -> int ;\n;\nfdef\nbm%d ?0 ::= + ?0 #%d ;\n;\n", i, i, i);
    std::fclose(f);
  }
  for (auto _ : state)
    run_command([&] { return load_file(name, 1); });
  std::remove(name);
  state.SetItemsProcessed(state.iterations() * 200);
}
BENCHMARK(load_clauses);

void *run_all(void *) {
  set_stack_limit(std::size_t{512} << 20);
  gLibDir = VELORA_SOURCE_DIR "/lib";
  gConsolePrompt = 0;
  gProgressDots = 0;
  run_command([] { return init_Velora() == 0 ? 1 : 0; });
  benchmark::RunSpecifiedBenchmarks();
  return nullptr;
}

} // namespace

int main(int argc, char **argv) {
  benchmark::Initialize(&argc, argv);
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, std::size_t{512} << 20);
  pthread_t thread;
  if (pthread_create(&thread, &attributes, run_all, nullptr) != 0)
    return 1;
  pthread_join(thread, nullptr);
  return 0;
}
