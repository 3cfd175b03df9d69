// Reads arbitrary bytes as a segment file, draws every picture that comes out, saves them and reads
// them again: the second reading must find nothing wrong and give the same file.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "editor/draw.h"
#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/svg_canvas.h"
#include "platform/response.h"

using namespace velora;

namespace {

// Counts the messages that beep.
class CountingConsole : public NullConsole {
public:
  void warn(std::string_view, int) override { ++warnings; }
  int ask(const std::string &, std::span<const std::string>) override { return 1; }
  int warnings = 0;
};

std::string folder() {
  static const std::string name = [] {
    std::string made = (std::filesystem::temp_directory_path() / "velora_fuzz_seg_XXXXXX").string();
    if (mkdtemp(made.data()) == nullptr)
      std::abort();
    return made;
  }();
  return name;
}

void require(bool holds, const char *what) {
  if (holds)
    return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

std::string saved_again(const std::string &file) {
  require(SaveAll(file) == 1, "what was read cannot be saved");
  std::string text;
  require(read_whole_file(file, text), "what was saved cannot be opened");
  return text;
}

void use_pictures() {
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
    SvgCanvas canvas;
    DrawVeloraWindow(wi, canvas);
    search_for_segment(10, 10, 0, wi);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static CountingConsole console;
  gConsole = &console;
  gSyncFiles = 0;
  const std::string input = folder() + "/in.seg";
  const std::string output = folder() + "/out.seg";
  if (std::FILE *file = std::fopen(input.c_str(), "wb"); file != nullptr) {
    std::fwrite(data, 1, size, file);
    std::fclose(file);
  }
  RestoreAll(input);
  use_pictures();
  bool sound = true; // a name that would end the file is refused, which is no fault
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    sound &= !wi->name.starts_with("$$$$");
  if (sound) {
    const std::string first = saved_again(output);
    FreeAllPictures();
    console.warnings = 0;
    require(RestoreAll(output) == 1 && console.warnings == 0, "what was saved is damaged");
    require(saved_again(output) == first, "reading and saving changed the file");
  }
  FreeAllPictures();
  forget_segment_files();
  std::filesystem::remove_all(folder() + "/in.seg.damaged");
  return 0;
}
