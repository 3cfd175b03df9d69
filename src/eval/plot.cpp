// The drawing of plots, from the outside in: scales, frame with ticks and labels, then the values.
// Called by the built-in plotit; writes primitives only.
#include "eval/plot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "core/events.h"

namespace velora {

namespace {

constexpr Colour kInk{40, 40, 40};
constexpr Colour kAxis{90, 90, 90};
constexpr Colour kGridLine{226, 226, 226};
constexpr Colour kSeries{31, 98, 168};
constexpr Colour kBarEdge{20, 66, 116};
constexpr Font kTitleFont{16, false, true};
constexpr Font kLabelFont{12, false, false};
constexpr Font kTickFont{10, false, false};
constexpr int kTickLength = 5;
constexpr int kMostMarked = 80; // a line through more values than this has no marks on it

int rough_width(const std::string &text, const Font &font) {
  return static_cast<int>(text.size()) * font.size * 6 / 10;
}

// One plot under construction: the frame inside the window and the two scales.
class Plot {
public:
  Plot(BgrWinInfo &info, PlotKind kind, const PlotTexts &texts, const PlotData &data)
      : info_(info), kind_(kind), texts_(texts), data_(data),
        places_(data.named || kind == PlotKind::bars) {
    choose_scales();
    choose_frame();
  }

  void draw() {
    draw_texts();
    draw_up_ticks();
    if (places_)
      draw_names();
    else
      draw_across_ticks();
    if (kind_ == PlotKind::bars)
      draw_bars();
    draw_axes();
    if (kind_ != PlotKind::bars)
      draw_series();
  }

private:
  int count() const { return static_cast<int>(data_.values.size()); }

  void choose_scales() {
    double low = 0;
    double high = 0;
    double left = 0;
    double right = 0;
    bool whole_up = true;
    bool whole_across = true;
    bool first = true;
    for (const PlotValue &v : data_.values) {
      CheckForUserEvents(800);
      low = first ? v.y : std::min(low, v.y);
      high = first ? v.y : std::max(high, v.y);
      left = first ? v.x : std::min(left, v.x);
      right = first ? v.x : std::max(right, v.x);
      whole_up = whole_up && v.y == std::floor(v.y);
      whole_across = whole_across && v.x == std::floor(v.x);
      first = false;
    }
    // Bars grow from zero; a line that nearly reaches zero shows it.
    if (kind_ == PlotKind::bars || (low > 0 && low < (high - low) / 2))
      low = std::min(low, 0.0);
    if (kind_ == PlotKind::bars)
      high = std::max(high, 0.0);
    up_ = round_scale(low, high, 8, whole_up);
    across_ = round_scale(left, right, 10, whole_across);
    // The line of values in order begins and ends at the frame.
    if (!places_ && right > left) {
      across_.from = left;
      across_.to = right;
    }
  }

  void choose_frame() {
    int widest = 0;
    for (int i = 0; i <= up_steps(); ++i)
      widest = std::max(widest, rough_width(up_text(i), kTickFont));
    frame_.left = 18 + widest + kTickLength + 6;
    frame_.top = 16 + (texts_.title.empty() ? 0 : 28) + (texts_.up.empty() ? 0 : 22);
    frame_.right = info_.width - 24;
    frame_.bottom = info_.height - 34 - (texts_.across.empty() ? 0 : 22);
  }

  int up_steps() const { return static_cast<int>(std::lround((up_.to - up_.from) / up_.step)); }
  std::string up_text(int i) const { return tick_text(up_.from + i * up_.step, up_.step); }

  int to_y(double y) const {
    const double part = (y - up_.from) / (up_.to - up_.from);
    return frame_.bottom - static_cast<int>(std::lround(part * frame_.height()));
  }
  int to_x(double x) const {
    const double part = (x - across_.from) / (across_.to - across_.from);
    return frame_.left + static_cast<int>(std::lround(part * frame_.width()));
  }
  // The middle of the i-th place when values stand side by side.
  int place_x(int i) const {
    return frame_.left + static_cast<int>((i + 0.5) * frame_.width() / std::max(1, count()));
  }
  Point value_point(int i) const {
    const PlotValue &v = data_.values[static_cast<std::size_t>(i)];
    return {places_ ? place_x(i) : to_x(v.x), to_y(v.y)};
  }

  void add_line(Point from, Point to, Colour colour, int width = 1) {
    info_.winPrims.push_back(
        {.code = kPrimLine, .at = {from, to}, .colour = colour, .width = width});
  }
  void add_text(Point at, const std::string &text, const Font &font, Colour colour,
                TextAlign align) {
    if (!text.empty())
      info_.winPrims.push_back({.code = kPrimText,
                                .at = {at},
                                .colour = colour,
                                .text = text,
                                .font = font,
                                .align = align});
  }
  void add_box(int code, const Rect &box, Colour colour) {
    info_.winPrims.push_back({.code = code,
                              .at = {Point{box.left, box.top}, Point{box.right, box.bottom}},
                              .colour = colour});
  }

  void draw_texts() {
    const int middle = frame_.left + frame_.width() / 2;
    add_text({info_.width / 2, 12}, texts_.title, kTitleFont, kInk, TextAlign::centre);
    add_text({14, frame_.top - 24}, texts_.up, kLabelFont, kInk, TextAlign::left);
    add_text({middle, frame_.bottom + 30}, texts_.across, kLabelFont, kInk, TextAlign::centre);
  }

  void draw_up_ticks() {
    for (int i = 0; i <= up_steps(); ++i) {
      const int y = to_y(up_.from + i * up_.step);
      add_line({frame_.left, y}, {frame_.right, y}, kGridLine);
      add_line({frame_.left - kTickLength, y}, {frame_.left, y}, kAxis);
      add_text({frame_.left - kTickLength - 4, y - 7}, up_text(i), kTickFont, kInk,
               TextAlign::right);
    }
  }

  void draw_across_ticks() {
    const double first = std::ceil(across_.from / across_.step - 1e-9) * across_.step;
    for (int i = 0; first + i * across_.step <= across_.to + across_.step * 1e-9; ++i) {
      const double value = first + i * across_.step;
      const int x = to_x(value);
      add_line({x, frame_.bottom}, {x, frame_.bottom + kTickLength}, kAxis);
      add_text({x, frame_.bottom + kTickLength + 4}, tick_text(value, across_.step), kTickFont,
               kInk, TextAlign::centre);
    }
  }

  std::string place_name(int i) const {
    const PlotValue &v = data_.values[static_cast<std::size_t>(i)];
    return data_.named ? v.name : tick_text(v.x, across_.step);
  }

  // Names that would run into each other are left out at regular distances.
  void draw_names() {
    int widest = 1;
    for (int i = 0; i < count(); ++i) {
      CheckForUserEvents(800);
      widest = std::max(widest, rough_width(place_name(i), kTickFont) + 8);
    }
    const int each = std::max(1, frame_.width() / std::max(1, count()));
    const int every = std::max(1, (widest + each - 1) / each);
    for (int i = 0; i < count(); i += every)
      add_text({place_x(i), frame_.bottom + kTickLength + 4}, place_name(i), kTickFont, kInk,
               TextAlign::centre);
  }

  void draw_bars() {
    const double share = static_cast<double>(frame_.width()) / std::max(1, count());
    const int half = std::max(1, static_cast<int>(std::min(share * 0.36, 40.0)));
    for (int i = 0; i < count(); ++i) {
      CheckForUserEvents(800);
      const Point top = value_point(i);
      const Rect bar = Rect{top.x - half, top.y, top.x + half, to_y(0)}.normalised();
      add_box(kPrimFillRect, bar, kSeries);
      if (half > 2)
        add_box(kPrimFrameRect, bar, kBarEdge);
    }
  }

  void draw_axes() {
    add_line({frame_.left, frame_.top}, {frame_.left, frame_.bottom}, kAxis);
    add_line({frame_.left, frame_.bottom}, {frame_.right, frame_.bottom}, kAxis);
    if (up_.from < 0 && up_.to > 0)
      add_line({frame_.left, to_y(0)}, {frame_.right, to_y(0)}, kAxis);
  }

  void draw_series() {
    if (kind_ == PlotKind::line)
      for (int i = 1; i < count(); ++i) {
        CheckForUserEvents(800);
        add_line(value_point(i - 1), value_point(i), kSeries, 2);
      }
    if (kind_ == PlotKind::line && count() > kMostMarked)
      return;
    for (int i = 0; i < count(); ++i) {
      CheckForUserEvents(800);
      const Point p = value_point(i);
      add_box(kPrimFillOval, {p.x - 3, p.y - 3, p.x + 3, p.y + 3}, kSeries);
    }
  }

  BgrWinInfo &info_;
  PlotKind kind_;
  const PlotTexts &texts_;
  const PlotData &data_;
  bool places_;
  Scale up_{};
  Scale across_{};
  Rect frame_{};
};

} // namespace

Scale round_scale(double low, double high, int most, bool whole) {
  if (high <= low) {
    const double room = low == 0 ? 1 : std::abs(low) / 2;
    low -= whole ? std::max(1.0, std::floor(room)) : room;
    high += whole ? std::max(1.0, std::floor(room)) : room;
  }
  double power = std::pow(10, std::floor(std::log10((high - low) / most)));
  if (whole)
    power = std::max(power, 1.0);
  double step = power;
  for (const double times : {1.0, 2.0, 5.0, 10.0}) {
    step = power * times;
    if ((high - low) / step <= most)
      break;
  }
  Scale scale{std::floor(low / step) * step, std::ceil(high / step) * step, step};
  return scale;
}

std::string tick_text(double value, double step) {
  if (std::abs(value) < step * 1e-6)
    value = 0;
  const double size = std::max(std::abs(value), step);
  std::array<char, 64> text{};
  if (size >= 1e7 || step < 1e-5) {
    std::snprintf(text.data(), text.size(), "%.4g", value);
  } else {
    const int decimals = std::max(0, static_cast<int>(-std::floor(std::log10(step) + 1e-9)));
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
  }
  return text.data();
}

void draw_plot(BgrWinInfo &info, PlotKind kind, const PlotTexts &texts, const PlotData &data) {
  clear_graphics(info);
  info.plot = true;
  Plot(info, kind, texts, data).draw();
}

} // namespace velora
