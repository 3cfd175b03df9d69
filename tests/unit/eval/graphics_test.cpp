// Graphics windows as data: the list of windows, what a canvas is asked to draw, the cells of a
// grid map, the scales and the layout of plots.
#include "eval/graphics_model.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "eval/graphics_windows.h"
#include "eval/grid_map.h"
#include "eval/plot.h"
#include "kit/language.h"
#include "kit/log_canvas.h"

namespace velora {
namespace {

using kit::LogCanvas;

class Graphics : public testing::Test {
protected:
  void TearDown() override {
    while (gBgrWind != nullptr)
      RemoveGraphicWinInfo(gBgrWind);
  }
};

TEST_F(Graphics, WindowsKeepTheirNumbersAndTheNewestLeftBecomesCurrent) {
  BgrWinInfo *one = NewGraphicWinInfo(100, 100);
  BgrWinInfo *two = NewGraphicWinInfo(100, 100);
  BgrWinInfo *three = NewGraphicWinInfo(100, 100);
  EXPECT_EQ(3, three->window_id);
  EXPECT_EQ(three, gBgrWind);
  EXPECT_EQ("Graphics [2 of 3]", graphics_title(*two));
  RemoveGraphicWinInfo(two);
  EXPECT_EQ(three, gBgrWind);
  EXPECT_EQ(nullptr, find_graphics(2));
  EXPECT_EQ("Graphics [2 of 2]", graphics_title(*three));
  RemoveGraphicWinInfo(three);
  EXPECT_EQ(one, gBgrWind);
  EXPECT_EQ(2, NewGraphicWinInfo(1, 1)->window_id);
}

TEST_F(Graphics, PrimitivesReachTheCanvasAtTheOrigin) {
  BgrWinInfo *info = NewGraphicWinInfo(100, 80);
  info->OrigX = 5;
  info->OrigY = -5;
  info->paper = kPalette[kYellow];
  info->winPrims = {
      {.code = kPrimLine, .at = {Point{0, 0}, Point{10, 20}}, .colour = kPalette[kRed]},
      {.code = kPrimDottedLine, .at = {Point{1, 1}, Point{2, 2}}},
      {.code = kPrimFillRect, .at = {Point{30, 40}, Point{10, 20}}, .colour = kPalette[kBlue]},
      {.code = kPrimFrameOval, .at = {Point{0, 0}, Point{9, 9}}},
      {.code = kPrimFillTri, .at = {Point{0, 0}, Point{9, 0}, Point{4, 7}}},
      {.code = kPrimDelay, .at = {Point{9999, 9999}}, .number = 5},
      {.code = kPrimText, .at = {Point{50, 6}}, .text = "mid", .align = TextAlign::centre}};
  LogCanvas canvas;
  draw_graphics(*info, canvas);
  ASSERT_EQ(2u, canvas.lines.size());
  EXPECT_EQ((Point{5, -5}), canvas.lines[0].from);
  EXPECT_EQ((Point{15, 15}), canvas.lines[0].to);
  EXPECT_EQ(kPalette[kRed], canvas.lines[0].pen.colour);
  EXPECT_EQ(PenStyle::dotted, canvas.lines[1].pen.style);
  ASSERT_EQ(4u, canvas.shapes.size());
  EXPECT_EQ(kPalette[kYellow], canvas.shapes[0].brush.colour);
  EXPECT_EQ((Rect{15, 15, 35, 35}), canvas.shapes[1].box);
  EXPECT_TRUE(canvas.shapes[1].brush.filled);
  EXPECT_FALSE(canvas.shapes[2].brush.filled);
  EXPECT_EQ((std::vector<Point>{{5, -5}, {14, -5}, {9, 2}}), canvas.shapes[3].corners);
  const int width = canvas.text_width("mid", Font{});
  EXPECT_EQ(55 - width / 2, canvas.texts.at(0).box.left);
  // The delay adds nothing, the line that leaves the window does.
  EXPECT_EQ((Rect{0, -5, 100, 80}), graphics_extent(*info));
}

TEST_F(Graphics, CellsOfAMapAreWhereTheGridSaysAndStayInTheirCells) {
  BgrWinInfo *info = NewGraphicWinInfo(350, 400);
  EXPECT_EQ(0, lay_grid(*info, 0, 3));
  EXPECT_EQ(0, lay_grid(*info, 3, kMostCells + 1));
  ASSERT_EQ(1, lay_grid(*info, 6, 4));
  EXPECT_EQ((Point{1, 1}), info->map.current);
  const std::size_t bare = info->winPrims.size();
  for (const MapShape shape : {MapShape::square, MapShape::triangle, MapShape::circle,
                               MapShape::filled_square, MapShape::circled_square})
    place_shape(*info, {6, 4}, shape, kPalette[kGreen]);
  const int right = info->map.corner.x + 6 * info->map.cell;
  const int bottom = info->map.corner.y + 4 * info->map.cell;
  LogCanvas canvas;
  draw_graphics(*info, canvas);
  for (std::size_t i = 1; i < canvas.shapes.size(); ++i) {
    EXPECT_LT(right - info->map.cell, canvas.shapes[i].box.left);
    EXPECT_LT(bottom - info->map.cell, canvas.shapes[i].box.top);
    EXPECT_GT(right, canvas.shapes[i].box.right);
    EXPECT_GT(bottom, canvas.shapes[i].box.bottom);
  }
  EXPECT_EQ("1", canvas.texts.front().text);
  EXPECT_FALSE(on_grid(*info, {7, 4}));
  EXPECT_FALSE(on_grid(*info, {1, 0}));
  reset_map(*info);
  EXPECT_EQ(bare, info->winPrims.size());
  EXPECT_EQ((Point{1, 1}), info->map.current);
}

TEST_F(Graphics, LinesOfAMapJoinTheMiddlesOfCells) {
  BgrWinInfo *info = NewGraphicWinInfo(350, 400);
  lay_grid(*info, 5, 5);
  go_to_cell(*info, cell_towards(*info, 1, 1, 3), kPrimLine);
  EXPECT_EQ((Point{4, 4}), info->map.current);
  const PrimInfo line = info->winPrims.back();
  EXPECT_EQ(3 * info->map.cell, line.at[1].x - line.at[0].x);
  EXPECT_EQ(line.at[1], info->pen);
  // However far a program wants to go, the cell is merely off the grid.
  EXPECT_FALSE(on_grid(*info, cell_towards(*info, 1, 0, std::numeric_limits<int>::max())));
  EXPECT_FALSE(on_grid(*info, cell_towards(*info, 0, -1, std::numeric_limits<int>::max())));
}

TEST(Plot, ScalesAreRoundAndHoldTheirValues) {
  struct Row {
    double low, high;
    int most;
    bool whole;
  };
  for (const Row &row :
       {Row{0, 10, 10, false}, Row{-1, 1, 8, false}, Row{0.001, 0.0017, 8, false},
        Row{5, 5, 8, true}, Row{0, 0, 8, false}, Row{-3e38, 3e38, 8, false}, Row{1, 3, 10, true},
        Row{1e30, 1.000001e30, 8, false}, Row{-2501, 2501, 8, false}}) {
    const Scale scale = round_scale(row.low, row.high, row.most, row.whole);
    EXPECT_LE(scale.from, row.low);
    EXPECT_GE(scale.to, row.high);
    EXPECT_GT(scale.step, 0);
    EXPECT_LE((scale.to - scale.from) / scale.step, row.most + 2) << row.low << " " << row.high;
    const double digit = scale.step / std::pow(10, std::floor(std::log10(scale.step) + 1e-9));
    EXPECT_TRUE(std::abs(digit - 1) < 1e-6 || std::abs(digit - 2) < 1e-6 ||
                std::abs(digit - 5) < 1e-6)
        << scale.step;
    EXPECT_GE(scale.step, row.whole ? 1 : 0);
  }
  EXPECT_EQ("0.25", tick_text(0.25, 0.05));
  EXPECT_EQ("0", tick_text(-1e-17, 1));
  EXPECT_EQ("0.0", tick_text(1e-12, 0.5));
  EXPECT_EQ("-20", tick_text(-20, 10));
  EXPECT_EQ("3e+30", tick_text(3e30, 1e30));
}

// A plot drawn on the log canvas.
LogCanvas plotted(PlotKind kind, const PlotTexts &texts, const PlotData &data) {
  BgrWinInfo info;
  info.width = kPlotWidth;
  info.height = kPlotHeight;
  draw_plot(info, kind, texts, data);
  EXPECT_EQ((Rect{0, 0, kPlotWidth, kPlotHeight}), graphics_extent(info));
  LogCanvas canvas;
  draw_graphics(info, canvas);
  return canvas;
}

bool has_text(const LogCanvas &canvas, const std::string &text) {
  return std::any_of(canvas.texts.begin(), canvas.texts.end(),
                     [&](const auto &t) { return t.text == text; });
}

TEST(Plot, BarsStandOnZeroInOrderAndInProportion) {
  const LogCanvas canvas = plotted(PlotKind::bars, {"Profit", "quarter", "k"},
                                   {{{1, 10, "Q1"}, {2, -5, "Q2"}, {3, 20, "Q3"}}, true});
  for (const char *text : {"Profit", "quarter", "k", "Q1", "Q2", "Q3", "0", "20"})
    EXPECT_TRUE(has_text(canvas, text)) << text;
  std::vector<Rect> bars;
  for (const LogCanvas::Shape &shape : canvas.shapes)
    if (shape.kind == 'r' && shape.brush.filled && shape.box.width() < 300)
      bars.push_back(shape.box);
  ASSERT_EQ(3u, bars.size());
  EXPECT_EQ(bars[0].bottom, bars[1].top);
  EXPECT_EQ(bars[0].bottom, bars[2].bottom);
  EXPECT_NEAR(2.0, static_cast<double>(bars[2].height()) / bars[0].height(), 0.05);
  EXPECT_NEAR(0.5, static_cast<double>(bars[1].height()) / bars[0].height(), 0.05);
  EXPECT_LT(bars[0].right, bars[1].left);
  EXPECT_LT(bars[1].right, bars[2].left);
}

TEST(Plot, NamesOfManyBarsDoNotRunIntoEachOther) {
  PlotData data;
  data.named = true;
  for (int i = 0; i < 60; ++i)
    data.values.push_back({0, static_cast<double>(i), "a longer name " + std::to_string(i)});
  const LogCanvas canvas = plotted(PlotKind::bars, {}, data);
  const LogCanvas::Text *before = nullptr;
  int names = 0;
  for (const LogCanvas::Text &text : canvas.texts) {
    if (!text.text.starts_with("a longer"))
      continue;
    ++names;
    if (before != nullptr) {
      EXPECT_LT(before->box.right, text.box.left);
    }
    before = &text;
  }
  EXPECT_GT(names, 2);
}

TEST(Plot, ALineGoesThroughItsValuesAtTheirPlaces) {
  PlotData data;
  for (int i = 0; i < 5; ++i)
    data.values.push_back({i * i * 1.0, 100.0 - i * 10, ""});
  const LogCanvas canvas = plotted(PlotKind::line, {"t", "", ""}, data);
  std::vector<LogCanvas::Line> thick;
  for (const LogCanvas::Line &line : canvas.lines)
    if (line.pen.width == 2)
      thick.push_back(line);
  ASSERT_EQ(4u, thick.size());
  for (std::size_t i = 1; i < thick.size(); ++i) {
    EXPECT_EQ(thick[i - 1].to, thick[i].from);
    EXPECT_LT(thick[i].from.y, thick[i].to.y);
  }
  // 0, 1, 4, 9, 16: the steps grow as the odd numbers.
  const double unit = (thick[3].to.x - thick[0].from.x) / 16.0;
  EXPECT_NEAR(7 * unit, thick[3].to.x - thick[3].from.x, 1.5);
  EXPECT_NEAR(1 * unit, thick[0].to.x - thick[0].from.x, 1.5);
}

TEST(Plot, LonelyAndExtremeValuesStayInTheFrame) {
  const double most = std::numeric_limits<float>::max();
  for (const PlotKind kind : {PlotKind::line, PlotKind::points, PlotKind::bars}) {
    for (const PlotData &data : {PlotData{{{1, 5, ""}}, false}, PlotData{{{1, 0, ""}}, false},
                                 PlotData{{{-most, -most, ""}, {most, most, ""}}, false},
                                 PlotData{{{1, 1e-30, ""}, {2, 3e-30, ""}}, false},
                                 PlotData{{{3, 7, ""}, {3, 7, ""}}, false}})
      plotted(kind, {"", "", ""}, data);
  }
}

class GraphicsWindows : public kit::Language {
protected:
  void TearDown() override {
    while (gBgrWind != nullptr)
      close_graphics(gBgrWind);
    close_narrative();
    Language::TearDown();
  }
};

TEST_F(GraphicsWindows, TheDesktopShowsAndRenumbersThem) {
  EXPECT_EQ("True", kit::answer("gr_open ;").substr(0, 4));
  kit::answer("gr_open ; gr_setcurrwin #1 ; nar_open ; nar_open ;");
  ASSERT_EQ(3u, desktop().windows.size());
  EXPECT_EQ("Graphics [1 of 2]", desktop().windows[gBgrWind->win].title);
  EXPECT_TRUE(desktop().windows[gBgrWind->win].shown);
  const std::string log = desktop().log_text();
  EXPECT_TRUE(log.ends_with("show " + std::to_string(gNarWind) + "\n")) << "it comes to the front";
  EXPECT_EQ(log.find("focus"), std::string::npos) << "who types goes on typing";
  const auto &windows = desktop().windows;
  EXPECT_NE(windows.begin()->second.place, std::next(windows.begin())->second.place);
  kit::answer("gr_close ;");
  ASSERT_EQ(2u, desktop().windows.size());
  EXPECT_EQ("Graphics [1 of 1]", desktop().windows[gBgrWind->win].title);
  kit::answer("gr_lineto #3 #4 ;");
  EXPECT_EQ((Point{3, 4}), gBgrWind->pen);
}

TEST_F(GraphicsWindows, NarrationGoesToTheNarrativeAloneAndEndsWithAnError) {
  kit::answer("nar_text [#1 \"a\"] ; nar_line ; nar_line #2 \"b\" 'c' ;");
  EXPECT_EQ("[ 1 a ]\n2bc\n", console().story);
  // A query abandoned while it narrates leaves the console as it was.
  kit::answer("fdec deep ::= int -> int ; ; fdef deep ?0 ::= + #1 (deep ?0) ; ;");
  kit::answer("nar_text (deep #1) ;");
  EXPECT_EQ("\"back\"", kit::answer("\"back\" ;").substr(0, 6));
}

} // namespace
} // namespace velora
