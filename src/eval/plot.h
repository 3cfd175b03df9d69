// Plots: a list of numbers or pairs as lines, points or bars with axes, ticks and labels. Pure
// data: a plot is written as primitives into the record of a graphics window.
#pragma once

#include <string>
#include <vector>

#include "eval/graphics_model.h"

namespace velora {

enum class PlotKind { line, points, bars };

struct PlotTexts {
  std::string title;
  std::string across; // label of the horizontal axis
  std::string up;     // label of the vertical axis
};

// One value: where it stands (`x`, or its place in the list under `name`) and how high it is.
struct PlotValue {
  double x = 0;
  double y = 0;
  std::string name{};
};

// `named`: the values stand side by side under their names instead of at their `x`.
struct PlotData {
  std::vector<PlotValue> values;
  bool named = false;
};

inline constexpr int kPlotWidth = 600;
inline constexpr int kPlotHeight = 420;

// Draws the plot over the whole inside of `info`. All numbers must be finite.
void draw_plot(BgrWinInfo &info, PlotKind kind, const PlotTexts &texts, const PlotData &data);

// A scale of round numbers: `step` is 1, 2 or 5 times a power of ten, and `from` to `to` are
// multiples of it that hold all of `low` to `high` between them. `most` is the most steps wanted;
// whole numbers get whole steps when `whole` is set.
struct Scale {
  double from = 0;
  double to = 1;
  double step = 1;
};
Scale round_scale(double low, double high, int most, bool whole);
// A tick's number with as many decimals as the step needs.
std::string tick_text(double value, double step);

} // namespace velora
