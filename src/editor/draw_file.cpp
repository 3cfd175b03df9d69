// Writing a picture into a file. Called by the commands of the terminal program.
#include "editor/draw.h"
#include "editor/hand/hand.h"
#include "editor/model/vel_segs.h"
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

std::string picture_as_svg(const WinInfo *wi, const std::string &title) {
  SvgCanvas canvas;
  const PictureLayout layout = lay_out_picture(wi);
  draw_layout(wi, layout, canvas);
  if (wi->win != 0)
    draw_hand(wi, layout, canvas); // what lies over a shown picture is part of how it looks
  Rect extent = layout_extent(layout);
  if (wi->win != 0) {
    // A shown picture is drawn with the ground that its window shows.
    const Rect area = picture_area(wi);
    extent = {std::min(extent.left, 0), std::min(extent.top, 0), std::max(extent.right, area.right),
              std::max(extent.bottom, area.bottom)};
  }
  extent = {extent.left - kMargin, extent.top - kMargin, extent.right + kMargin,
            extent.bottom + kMargin};
  return canvas.document(extent, title);
}

int draw_to_svg(const char *name, int component, const char *file) {
  const WinInfo *wi = find_picture(name, component);
  if (wi == nullptr) {
    if (component >= 0)
      orvek_errorf("There is no picture %d of %s\n", component, name);
    else
      orvek_errorf("There is no picture of %s\n", name);
    return 0;
  }
  return save_svg(wi, file);
}

int save_svg(const WinInfo *wi, const char *file) {
  std::string reason;
  if (!may_replace_protected(file))
    return 0;
  if (write_whole_file(file, picture_as_svg(wi, format_text("%s %d", wi->name.c_str(), wi->cmpnt)),
                       reason))
    return 1;
  orvek_errorf("Can't write %s\n", reason.c_str());
  return 0;
}

} // namespace velora
