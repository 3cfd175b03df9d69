// Covering of dots by exact areas: each edge of a shape adds to every dot that it crosses how much
// of the dot lies right of it, with a sign by its direction; summed up along a line that gives the
// share of each dot that lies inside.
#include "platform/soft_shapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace velora {

namespace {

std::uint32_t packed(Colour c) {
  return static_cast<std::uint32_t>(c.red) << 16 | static_cast<std::uint32_t>(c.green) << 8 |
         c.blue;
}

// `share` of the new colour, in 256ths, over what is there; two parts at a time.
std::uint32_t mixed(std::uint32_t below, std::uint32_t above, std::uint32_t share) {
  constexpr std::uint32_t kOuter = 0xFF00FF;
  constexpr std::uint32_t kInner = 0x00FF00;
  const std::uint32_t rest = 256 - share;
  return ((((above & kOuter) * share + (below & kOuter) * rest) >> 8) & kOuter) |
         ((((above & kInner) * share + (below & kInner) * rest) >> 8) & kInner);
}

Rect common(const Rect &a, const Rect &b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

bool empty(const Rect &box) {
  return box.left >= box.right || box.top >= box.bottom;
}

// The dots that a shape may touch. Places far outside would not fit into whole numbers.
Rect around(std::span<const SoftPoint> corners) {
  static constexpr double kFar = 1e6;
  SoftPoint low{kFar, kFar};
  SoftPoint high{-kFar, -kFar};
  for (const SoftPoint p : corners) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y)};
  }
  const auto whole = [](double at) { return static_cast<int>(std::clamp(at, -kFar, kFar)); };
  return {whole(std::floor(low.x)), whole(std::floor(low.y)), whole(std::ceil(high.x)),
          whole(std::ceil(high.y))};
}

} // namespace

SoftShapes::SoftShapes(SoftImage image)
    : image_(image), clip_{0, 0, image.width, image.height}, area_{} {}

void SoftShapes::set_clip(const Rect &box) {
  clip_ = common(box, {0, 0, image_.width, image_.height});
}

void SoftShapes::fill_dots(const Rect &box, Colour colour) {
  const Rect seen = common(box, clip_);
  if (empty(seen))
    return;
  for (int y = seen.top; y < seen.bottom; ++y) {
    std::uint32_t *line = image_.dots + static_cast<std::ptrdiff_t>(y) * image_.width;
    std::fill(line + seen.left, line + seen.right, packed(colour));
  }
}

// An edge within one line of dots, from one place across to another: dots right of it are covered
// by `height` of their area, those that it crosses by a part of that.
void SoftShapes::add_piece(std::size_t line, double from, double to, double height) {
  const double width = area_.width();
  const double low = std::clamp(std::min(from, to), 0.0, width);
  const double high = std::clamp(std::max(from, to), 0.0, width);
  const int first = static_cast<int>(low);
  const int last = std::max(first, static_cast<int>(std::ceil(high)) - 1);
  float *dots = covered_.data() + line * (static_cast<std::size_t>(area_.width()) + 2);
  first_[line] = std::min(first_[line], first);
  last_[line] = std::max(last_[line], last + 1);
  if (first == last) {
    const double right = height * ((low + high) / 2 - first);
    dots[first] += static_cast<float>(height - right);
    dots[first + 1] += static_cast<float>(right);
    return;
  }
  // A dot is covered whole by what has passed it, and partly by what crosses it.
  double before = 0;
  for (int dot = first; dot <= last; ++dot) {
    const double enters = std::max(low, static_cast<double>(dot));
    const double leaves = std::min(high, dot + 1.0);
    const double passed = (enters - low) / (high - low);
    const double crosses = (leaves - enters) / (high - low);
    const double now = height * (passed + crosses * (dot + 1 - (enters + leaves) / 2));
    dots[dot] += static_cast<float>(now - before);
    before = now;
  }
  dots[last + 1] += static_cast<float>(height - before);
}

void SoftShapes::add_edge(SoftPoint from, SoftPoint to) {
  const double sign = from.y < to.y ? 1 : -1;
  if (from.y > to.y)
    std::swap(from, to);
  const double top = std::max(from.y, 0.0);
  const double bottom = std::min(to.y, static_cast<double>(area_.height()));
  if (top >= bottom)
    return;
  const double slope = (to.x - from.x) / (to.y - from.y);
  for (int line = static_cast<int>(top); line < bottom; ++line) {
    const double begins = std::max(top, static_cast<double>(line));
    const double ends = std::min(bottom, line + 1.0);
    add_piece(static_cast<std::size_t>(line), from.x + (begins - from.y) * slope,
              from.x + (ends - from.y) * slope, sign * (ends - begins));
  }
}

// Leaves everything as clear as it was found.
void SoftShapes::paint_covered(Colour colour) {
  const std::uint32_t ink = packed(colour);
  const int width = area_.width();
  for (int line = 0; line < area_.height(); ++line) {
    const auto l = static_cast<std::size_t>(line);
    float *covered = covered_.data() + l * (static_cast<std::size_t>(width) + 2);
    std::uint32_t *dots =
        image_.dots + static_cast<std::ptrdiff_t>(area_.top + line) * image_.width + area_.left;
    float sum = 0;
    for (int x = first_[l]; x <= last_[l] && x <= width + 1; ++x) {
      sum += covered[x];
      covered[x] = 0;
      if (x >= width)
        continue;
      const auto share = static_cast<std::uint32_t>(std::min(std::fabs(sum), 1.0F) * 256 + 0.5F);
      if (share != 0)
        dots[x] = mixed(dots[x], ink, share);
    }
  }
}

void SoftShapes::fill(std::span<const SoftPoint> corners, Colour colour) {
  area_ = common(around(corners), clip_);
  if (corners.size() < 3 || empty(area_))
    return;
  const auto width = static_cast<std::size_t>(area_.width());
  const auto height = static_cast<std::size_t>(area_.height());
  if (covered_.size() < (width + 2) * height)
    covered_.resize((width + 2) * height);
  first_.assign(height, area_.width());
  last_.assign(height, -1);
  const auto inside = [this](SoftPoint p) { return SoftPoint{p.x - area_.left, p.y - area_.top}; };
  for (std::size_t i = 0; i < corners.size(); ++i)
    add_edge(inside(corners[i]), inside(corners[(i + 1) % corners.size()]));
  paint_covered(colour);
}

void SoftShapes::stroke(SoftPoint from, SoftPoint to, double width, Colour colour) {
  const int whole = std::max(1, static_cast<int>(std::lround(width)));
  const auto first_dot = [whole](double middle) {
    return static_cast<int>(std::lround(middle - whole / 2.0));
  };
  const auto near_dot = [](double at) { return static_cast<int>(std::lround(at)); };
  if (from.y == to.y) {
    const int y = first_dot(from.y);
    fill_dots({near_dot(std::min(from.x, to.x)), y, near_dot(std::max(from.x, to.x)), y + whole},
              colour);
    return;
  }
  if (from.x == to.x) {
    const int x = first_dot(from.x);
    fill_dots({x, near_dot(std::min(from.y, to.y)), x + whole, near_dot(std::max(from.y, to.y))},
              colour);
    return;
  }
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  const double across = std::max(width, 1.0) / 2 / length;
  const SoftPoint side{-(to.y - from.y) * across, (to.x - from.x) * across};
  fill(std::array{SoftPoint{from.x + side.x, from.y + side.y},
                  SoftPoint{to.x + side.x, to.y + side.y}, SoftPoint{to.x - side.x, to.y - side.y},
                  SoftPoint{from.x - side.x, from.y - side.y}},
       colour);
}

} // namespace velora
