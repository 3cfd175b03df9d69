// Opening and saving whole databases, code and pictures together, at growing sizes: the times must
// grow with the size. The largest has 10,000 clauses and 2,000 pictures of 20 segments.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "core/events.h"
#include "core/symbols.h"
#include "db/f_dbops.h"
#include "db/vel_dbop.h"
#include "db/vel_util.h"
#include "editor/model/wininfo.h"
#include "eval/registry.h"
#include "platform/response.h"

namespace {

using namespace velora;
namespace fs = std::filesystem;

constexpr int kClausesPerFunction = 5;
constexpr int kClausesPerPicture = 5;
constexpr int kNodes = 10; // and as many arcs less one, and a result

void write_text(int clauses) {
  std::ofstream out("big.ddb");
  out << "tdec\n;\ncdec\n;\nfdec\n";
  const int functions = clauses / kClausesPerFunction;
  for (int f = 0; f < functions; ++f)
    out << "\tfun" << f << " ::= int->list int ->int ;\n";
  out << ";\nfdec\n;\nfdef\n";
  for (int c = 0; c < clauses; ++c) {
    const int f = c / kClausesPerFunction;
    out << "\n  fun" << f << " #" << c % kClausesPerFunction << " (: ?0 ?1)  ::=\n      + (fun"
        << (f + 1) % functions << " (- ?0 #1) ?1) (fun" << f / 2 << " ?0\n       (: #" << c
        << " (: ?0 nil)))  ;\n";
  }
  out << ";\n";
}

void write_picture(std::ofstream &out, int number) {
  const int segments = 2 * kNodes;
  out << "fun" << number << " 0 " << segments << " 1 12\n";
  for (int i = 1; i <= kNodes + 1; ++i) {
    out << "label" << i << ' ' << i << " 2 0 " << 20 * i << " 40 " << 20 * i + 18 << " 60\n";
    out << (i > 1 && i <= kNodes ? "B" + std::to_string(kNodes + i) : "") << '\n';
    out << (i < kNodes ? "F" + std::to_string(kNodes + 1 + i) : "") << '\n';
  }
  for (int i = 1; i < kNodes; ++i)
    out << "~ " << kNodes + 1 + i << " 3 0 0 0 10 10\nB" << i << "\nF" << i + 1 << '\n';
}

void write_pictures(int pictures) {
  std::ofstream out("big.seg");
  for (int i = 0; i < pictures; ++i)
    write_picture(out, i);
  out << "$$$$";
}

void start_once() {
  static const int code = [] {
    set_stack_limit(std::size_t{6} << 20);
    gLibDir = VELORA_SOURCE_DIR "/lib";
    gProgressDots = 0;
    const int answer = init_Velora();
    const fs::path folder = fs::temp_directory_path() / "velora-bench";
    fs::create_directories(folder);
    fs::current_path(folder);
    return answer;
  }();
  if (code != 0)
    std::abort();
}

void prepare(int clauses) {
  start_once();
  fs::remove("big.seg.bak");
  fs::remove("big.ddb.bak");
  write_text(clauses);
  write_pictures(clauses / kClausesPerPicture);
}

void open_big() {
  Setup_Global_DDB_name("big");
  if (OpenDataBaseFile() == 0)
    std::abort();
}

void OpenDatabase(benchmark::State &state) {
  prepare(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    open_big();
    state.PauseTiming();
    ResetVelora();
    free_retired();
    state.ResumeTiming();
  }
  state.SetComplexityN(state.range(0));
}

void SaveDatabase(benchmark::State &state) {
  prepare(static_cast<int>(state.range(0)));
  open_big();
  for (auto _ : state)
    if (SaveDataBase("") == 0)
      std::abort();
  ResetVelora();
  free_retired();
  state.SetComplexityN(state.range(0));
}

BENCHMARK(OpenDatabase)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveDatabase)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
