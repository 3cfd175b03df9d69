// Writing a picture into a file. Called by the commands of the terminal program.
#include "editor/draw.h"
#include "editor/model/wininfo.h"
#include "editor/svg_canvas.h"
#include "platform/response.h"
#include "platform/safe_file.h"

namespace velora {

namespace {

// White space around a picture.
constexpr int kMargin = 16;

// A stored picture before a shown one; with a negative component the first of that name.
WinInfo *find_picture(const std::string &name, int component) {
  WinInfo *shown = nullptr;
  for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
    if (wi->name != name || (component >= 0 && wi->cmpnt != component))
      continue;
    if (wi->win == 0)
      return wi;
    if (shown == nullptr)
      shown = wi;
  }
  return shown;
}

} // namespace

int draw_to_svg(const char *name, int component, const char *file) {
  const WinInfo *wi = find_picture(name, component);
  if (wi == nullptr) {
    if (component >= 0)
      orvek_errorf("There is no picture %d of %s\n", component, name);
    else
      orvek_errorf("There is no picture of %s\n", name);
    return 0;
  }
  SvgCanvas canvas;
  const PictureLayout layout = lay_out_picture(wi, canvas);
  draw_layout(wi, layout, canvas);
  Rect extent = layout_extent(layout);
  extent = {extent.left - kMargin, extent.top - kMargin, extent.right + kMargin,
            extent.bottom + kMargin};
  SafeFile out(file);
  if (out.open())
    out.write(canvas.document(extent, format_text("%s %d", name, wi->cmpnt)));
  if (out.replace() != SaveOutcome::saved) {
    orvek_errorf("Can't write %s: %s\n", file, out.reason().c_str());
    return 0;
  }
  return 1;
}

} // namespace velora
