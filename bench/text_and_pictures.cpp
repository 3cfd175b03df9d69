// Building pictures from text and translating them back, for databases of 1,000 clauses and more.
// Each must grow linearly: 1,000 clauses are built in well under 0.3 s, with the guard's look at
// every picture, and 1,000 pictures translated in under 0.5 s.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "editor/builder.h"
#include "editor/model/seg_file.h"
#include "editor/translate.h"
#include "platform/response.h"
#include "platform/safe_file.h"

namespace {

using namespace velora;

// A folder of its own for the files of one run.
std::string base_name() {
  static const std::string folder = [] {
    const auto path = std::filesystem::temp_directory_path() / "velora_bench_text";
    std::filesystem::create_directories(path);
    return path.string();
  }();
  return folder + "/text";
}

// Four clauses a function: constants, patterns, recursion, nested calls.
void write_text(int clauses) {
  std::ofstream text(base_name() + ".ddb", std::ios::binary);
  text << "fdec\n";
  for (int i = 0; i < clauses / 4; ++i)
    text << "fun" << i << " ::= int -> list int -> int ;\n";
  text << ";\nfdef\n";
  for (int i = 0; i < clauses / 4; ++i) {
    const std::string name = "fun" + std::to_string(i);
    text << name << " #0 nil ::= #1 ;\n"
         << name << " ?0 nil ::= + ?0 #1 ;\n"
         << name << " ?0 (: ?2 ?3) ::= + (* ?0 ?2) (" << name << " ?0 (: ?2 ?3)) ;\n"
         << name << " #7 ?1 ::= foldr + #0 (map (+ #1) ?1) ;\n";
  }
  text << ";\n";
}

void BM_build(benchmark::State &state) {
  gSyncFiles = 0;
  write_text(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    std::filesystem::remove(base_name() + ".seg");
    if (build_segments(base_name(), Tidying::never) == 0)
      state.SkipWithError("cannot build");
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_build)->Arg(1000)->Arg(2000)->Arg(4000)->Unit(benchmark::kMillisecond)->Complexity();

void BM_translate(benchmark::State &state) {
  gSyncFiles = 0;
  write_text(static_cast<int>(state.range(0)));
  build_segments(base_name(), Tidying::never);
  std::string file;
  read_whole_file(base_name() + ".seg", file);
  const std::vector<std::unique_ptr<WinInfo>> pictures = pictures_of_text(file);
  const TypeNames formals{"int", "list int"};
  for (auto _ : state) {
    for (const std::unique_ptr<WinInfo> &wi : pictures) {
      std::string lhs;
      std::string rhs;
      std::string why;
      benchmark::DoNotOptimize(picture_clause(wi.get(), formals, lhs, rhs, why));
    }
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_translate)
    ->Arg(1000)
    ->Arg(2000)
    ->Arg(4000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

} // namespace

BENCHMARK_MAIN();
