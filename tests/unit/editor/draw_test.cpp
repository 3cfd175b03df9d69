// Drawings: labels stay in their boxes, boxes apart, arrows end on the borders of what they join,
// arguments are numbered in order. Seen through a canvas that logs, and in golden SVG files.
#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "editor/draw.h"
#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/svg_canvas.h"
#include "kit/log_canvas.h"
#include "kit/pictures.h"
#include "platform/utf8.h"

using namespace velora;
using namespace velora::kit;

namespace {

class DrawTest : public PictureTest {};

bool overlap(const Rect &a, const Rect &b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

bool holds(const Rect &outer, const Rect &inner) {
  return outer.contains({inner.left, inner.top}) && outer.contains({inner.right, inner.bottom});
}

// Distance of a point from the outline of a node as it is drawn.
double from_outline(const NodePlace &node, Point at) {
  const Rect &box = node.box;
  const double x = std::abs(at.x - (box.left + box.right) / 2.0);
  const double y = std::abs(at.y - (box.top + box.bottom) / 2.0);
  const double w = box.width() / 2.0;
  const double h = box.height() / 2.0;
  if (node.seg->type == kJunction) // how far out of round
    return std::abs(std::hypot(x / w, y / h) - 1) * std::min(w, h);
  const double end = node.seg->type == kBox ? w : w - node.slant * y / h;
  const double across = std::abs(x - end);
  const double up = std::abs(y - h);
  return x > end + 2 || y > h + 1 ? 99 : std::min(across, up);
}

const NodePlace &place_of(const PictureLayout &layout, const Segm *seg) {
  for (const NodePlace &place : layout.nodes)
    if (place.seg == seg)
      return place;
  ADD_FAILURE() << "a node is not drawn";
  return layout.nodes.front();
}

void check_layout(const WinInfo *wi) {
  LogCanvas canvas;
  const PictureLayout layout = lay_out_picture(wi);
  for (const NodePlace &place : layout.nodes) {
    const Rect own = place.seg->box();
    ASSERT_TRUE(holds(place.box, own));
    ASSERT_LE(std::abs(place.box.left + place.box.right - own.left - own.right), 1);
    ASSERT_LE(std::abs(place.box.top + place.box.bottom - own.top - own.bottom), 1);
    for (const NodePlace &other : layout.nodes)
      ASSERT_TRUE(&other == &place || overlap(own, other.seg->box()) ||
                  !overlap(place.box, other.box))
          << wi->name << ": " << place.seg->segnum << " grew into " << other.seg->segnum;
  }
  for (const ArcPlace &arc : layout.arcs) {
    const NodePlace &start = place_of(layout, arc_start(arc.seg));
    const NodePlace &end = place_of(layout, arc_end(arc.seg));
    ASSERT_LE(from_outline(start, arc.path.front()), 2) << wi->name << ' ' << arc.seg->segnum;
    ASSERT_LE(from_outline(end, arc.path.back()), 2)
        << wi->name << ' ' << arc.seg->segnum << " at " << arc.path.back().x << ','
        << arc.path.back().y << "\n"
        << picture_text(wi);
  }
}

// Where the label of each node is drawn.
std::map<std::string, LogCanvas::Text> labels_of(const LogCanvas &canvas) {
  std::map<std::string, LogCanvas::Text> labels;
  for (const LogCanvas::Text &text : canvas.texts)
    labels.emplace(text.text, text);
  return labels;
}

TEST_F(DrawTest, AnyPictureIsLaidOutWithoutNewOverlapsAndWithArrowsOnBorders) {
  std::mt19937 random(19);
  for (int i = 0; i < 400; ++i)
    check_layout(random_picture(random, "p" + std::to_string(i), 0));
  ASSERT_EQ(RestoreAll(std::string(VELORA_SOURCE_DIR) + "/tests/golden/seg/pictures.seg"), 1);
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    check_layout(wi);
}

TEST_F(DrawTest, LabelsLieInTheirBoxes) {
  for (const int size : {8, 10, 12, 16, 22}) {
    for (const int type : {kHexagon, kBox, kJunction, kHoldValue}) {
      for (const int style : {kPlain, kDouble, kBold}) {
        WinInfo *wi = picture("f");
        wi->txtsze = size;
        place_node(wi, type, style, "a label of some length", {100, 100, 110, 120});
        LogCanvas canvas;
        const PictureLayout layout = lay_out_picture(wi);
        draw_layout(wi, layout, canvas);
        ASSERT_EQ(canvas.texts.size(), 1U);
        EXPECT_EQ(canvas.texts[0].font.size, size);
        const Rect &text = canvas.texts[0].box;
        EXPECT_TRUE(holds(layout.nodes[0].box, text)) << type << '/' << style << ' ' << size;
        // The corners of the text lie within the slanted or round ends, too.
        const NodePlace &place = layout.nodes[0];
        const double half = place.box.height() / 2.0;
        const double reach = type == kBox        ? 0
                             : type == kJunction ? 0
                                                 : place.slant * (text.height() / 2.0) / half;
        EXPECT_GE(text.left - place.box.left, reach) << type << '/' << style << ' ' << size;
      }
    }
  }
}

TEST_F(DrawTest, ALabelWithoutRoomIsSetSmaller) {
  WinInfo *wi = picture("f");
  place_node(wi, kBox, kPlain, "crowded", {0, 0, 30, 20});
  place_node(wi, kBox, kPlain, "between", {32, 0, 62, 20});
  place_node(wi, kBox, kPlain, "others", {64, 0, 94, 20});
  place_node(wi, kBox, kPlain, "free", {0, 100, 10, 110});
  LogCanvas canvas;
  DrawVeloraWindow(wi, canvas);
  auto labels = labels_of(canvas);
  EXPECT_LT(labels["between"].font.size, 9);
  EXPECT_TRUE(holds({32, 0, 62, 20}, labels["between"].box));
  EXPECT_EQ(labels["free"].font.size, 12);
}

TEST_F(DrawTest, ArgumentsAreNumberedWhereABoxHasSeveral) {
  WinInfo *wi = picture("f");
  place_node(wi, kBox, kPlain, "three", {100, 200, 160, 220});
  place_node(wi, kBox, kPlain, "one", {300, 200, 360, 220});
  place_node(wi, kHexagon, kDouble, "type", {400, 200, 460, 220});
  const int right = place_node(wi, kBox, kPlain, "right", {200, 100, 260, 120});
  const int left = place_node(wi, kBox, kPlain, "left", {0, 100, 60, 120});
  const int middle = place_node(wi, kBox, kPlain, "middle", {100, 100, 160, 120});
  for (const int from : {right, left, middle})
    join(wi, from, 1);
  join(wi, right, 2);
  join(wi, right, 3);
  join(wi, left, 3);
  LogCanvas canvas;
  PictureLayout layout = lay_out_picture(wi);
  std::map<std::string, int> number;
  for (const ArcPlace &arc : layout.arcs)
    number[arc_start(arc.seg)->label + ">" + arc_end(arc.seg)->label] = arc.number;
  EXPECT_EQ(number, (std::map<std::string, int>{{"left>three", 1},
                                                {"middle>three", 2},
                                                {"right>three", 3},
                                                {"right>one", 0},
                                                {"right>type", 0},
                                                {"left>type", 0}}));
  draw_layout(wi, layout, canvas);
  auto labels = labels_of(canvas);
  for (const ArcPlace &arc : layout.arcs) {
    if (arc.number == 0)
      continue;
    const Point middle_of_number = labels[std::to_string(arc.number)].box.centre();
    const Point tip = arc.path.back();
    EXPECT_LT(std::hypot(middle_of_number.x - tip.x, middle_of_number.y - tip.y), 20);
    // Beside the arrow: its ink, half as high as the line, is crossed by none.
    const Rect text = labels[std::to_string(arc.number)].box;
    const Rect ink{text.left, text.top + text.height() / 4, text.right,
                   text.bottom - text.height() / 4};
    for (const ArcPlace &other : layout.arcs)
      for (double share = 0; share <= 1; share += 0.002) {
        const Point from = other.path.front();
        const Point to = other.path.back();
        const Point on{static_cast<int>(from.x + (to.x - from.x) * share),
                       static_cast<int>(from.y + (to.y - from.y) * share)};
        ASSERT_FALSE(ink.contains(on)) << arc.number << " is crossed by " << other.number;
      }
    for (const NodePlace &node : layout.nodes)
      EXPECT_FALSE(overlap(node.box, labels[std::to_string(arc.number)].box));
  }
  wi->wtype = kNetworkPicture;
  for (const ArcPlace &arc : lay_out_picture(wi).arcs)
    EXPECT_EQ(arc.number, 0);
}

// Twice the signed area of a triangle.
int turn(Point a, Point b, Point c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

TEST_F(DrawTest, ArrowsIntoOneBoxDoNotCross) {
  WinInfo *wi = picture("f");
  place_node(wi, kBox, kPlain, "several", {300, 200, 380, 230});
  for (const int x : {20, 110, 200, 420, 510, 600})
    join(wi, place_node(wi, kBox, kPlain, "in", {x, 150, x + 40, 170}), 1);
  LogCanvas canvas;
  const PictureLayout layout = lay_out_picture(wi);
  ASSERT_EQ(layout.arcs.size(), 6U);
  for (const ArcPlace &arc : layout.arcs)
    for (const ArcPlace &other : layout.arcs) {
      const Point a = arc.path[0];
      const Point b = arc.path[1];
      const Point c = other.path[0];
      const Point d = other.path[1];
      EXPECT_FALSE((turn(a, b, c) > 0) != (turn(a, b, d) > 0) &&
                   (turn(c, d, a) > 0) != (turn(c, d, b) > 0) && &arc != &other)
          << arc.number << " and " << other.number;
    }
}

TEST_F(DrawTest, NoArrowRunsOverALabel) {
  WinInfo *wi = picture("f");
  place_node(wi, kBox, kPlain, "below", {100, 300, 160, 320});
  place_node(wi, kBox, kPlain, "in the way", {90, 200, 170, 220});
  place_node(wi, kBox, kPlain, "above", {100, 100, 160, 120});
  join(wi, 3, 1);
  LogCanvas canvas;
  DrawVeloraWindow(wi, canvas);
  // What stands in the way is drawn over the line, filled.
  ASSERT_EQ(canvas.lines.size(), 1U);
  int covering = 0;
  for (const LogCanvas::Shape &shape : canvas.shapes)
    covering += shape.kind == 'r' && shape.brush.filled && holds(shape.box, {90, 200, 170, 220});
  EXPECT_EQ(covering, 1);
}

TEST_F(DrawTest, StylesAndMarksShow) {
  WinInfo *wi = picture("f");
  place_node(wi, kBox, kDouble, "d", {0, 0, 60, 30});
  place_node(wi, kBox, kBold, "b", {0, 50, 60, 80});
  place_node(wi, kHexagon, kDouble, "h", {0, 100, 60, 130});
  place_node(wi, kHoldValue, kPlain, "v", {0, 150, 60, 180});
  place_node(wi, kJunction, kBold, " ", {0, 200, 10, 210});
  LogCanvas canvas;
  DrawVeloraWindow(wi, canvas);
  const auto count = [&](char kind, int width) {
    return std::count_if(canvas.shapes.begin(), canvas.shapes.end(), [&](const auto &shape) {
      return shape.kind == kind && shape.pen.width == width;
    });
  };
  EXPECT_EQ(count('r', 1), 2); // the double box
  EXPECT_EQ(count('r', 2), 1);
  EXPECT_EQ(count('p', 1), 3); // the double hexagon and the hold value
  EXPECT_EQ(count('e', 2), 1);
  EXPECT_EQ(canvas.lines.size(), 2U); // the bars of the hold value
  EXPECT_EQ(canvas.texts.size(), 4U);

  join(wi, 1, 2);
  MarkItemSelection(wi, 2, 1);
  ColourSelectedItems(wi, kRed);
  show_arc(wi, 6, 1);
  LogCanvas marked;
  DrawVeloraWindow(wi, marked);
  EXPECT_EQ(marked.lines.front().pen.colour, kPalette[kRed]);
  EXPECT_EQ(marked.lines.front().pen.width, 2);
  int handles = 0;
  int red_boxes = 0;
  for (const LogCanvas::Shape &shape : marked.shapes) {
    handles += shape.brush.filled && shape.brush.colour == kPalette[kBlack] && shape.kind == 'r';
    red_boxes += shape.kind == 'r' && shape.pen.colour == kPalette[kRed];
  }
  EXPECT_EQ(handles, 4);
  EXPECT_EQ(red_boxes, 1);
  MarkItemSelection(wi, 2, 0);
  EXPECT_EQ(wi->seg_ments[2]->status & kSelected, 0U);
}

TEST_F(DrawTest, ParametersConstantsAndTheResultAreToldApart) {
  WinInfo *wi = picture("f");
  place_node(wi, kHexagon, kBold, "int", {0, 300, 60, 330});
  place_node(wi, kHexagon, kBold, "int", {0, 0, 60, 30});
  place_node(wi, kHexagon, kPlain, "#1", {100, 0, 160, 30});
  place_node(wi, kHexagon, kDouble, "int", {200, 0, 260, 30});
  LogCanvas canvas;
  DrawVeloraWindow(wi, canvas);
  std::vector<Colour> fills;
  for (const LogCanvas::Shape &shape : canvas.shapes)
    if (shape.kind == 'p' && shape.brush.filled)
      fills.push_back(shape.brush.colour);
  ASSERT_EQ(fills.size(), 4U);
  for (std::size_t i = 0; i < fills.size(); ++i)
    for (std::size_t other = 0; other < i; ++other)
      EXPECT_NE(fills[i], fills[other]) << i << ' ' << other;
  ASSERT_EQ(canvas.lines.size(), 1U) << "the line below the result";
  EXPECT_GT(canvas.lines[0].from.y, 330);
  MarkItemSelection(wi, 2, 1);
  wi->wtype = kNetworkPicture;
  LogCanvas network;
  DrawVeloraWindow(wi, network);
  EXPECT_EQ(network.lines.size(), 0U);
}

TEST_F(DrawTest, PaintingChangesNothingAndClicksFindWhatIsDrawn) {
  WinInfo *wi = NewWindow(kFunctionPicture);
  place_node(wi, kBox, kPlain, "a long label", {0, 40, 10, 60});
  place_node(wi, kBox, kPlain, "b", {0, 140, 10, 160});
  Segm *seg = wi->seg_ments[join(wi, 1, 2)];
  seg->lx = seg->ly = seg->ux = seg->uy = 0;
  join(wi, 1, 1);
  const std::string before = picture_text(wi);
  for (const int size : {8, 22, 12}) {
    wi->txtsze = size;
    LogCanvas canvas;
    DrawVeloraWindow(wi, canvas);
  }
  EXPECT_EQ(picture_text(wi), before);
  const PictureLayout layout = lay_out_picture(wi);
  EXPECT_EQ(hit_picture(layout, {5, 100}, false), 3) << "the arrow as drawn";
  EXPECT_EQ(hit_picture(layout, {5, 100}, true), 0);
  EXPECT_EQ(hit_picture(layout, {-30, 50}, true), 1) << "the box as it has grown";
  const Rect box = layout.nodes[0].box;
  EXPECT_EQ(hit_picture(layout, {box.right + 10, box.centre().y - 8}, false), 4) << "the loop";
  EXPECT_EQ(hit_picture(layout, {300, 300}, false), 0);
}

TEST_F(DrawTest, ColoursAreOfTheStyleAndLeaveTheShapeAsItIs) {
  WinInfo *wi = picture("f");
  place_node(wi, kBox, kDouble | kPinned, "d", {0, 0, 60, 30});
  MarkItemSelection(wi, 1, 1);
  ColourSelectedItems(wi, kGreen);
  EXPECT_EQ(wi->seg_ments[1]->style, kDouble | kPinned | 16 * kGreen);
  EXPECT_EQ(colour_index(wi->seg_ments[1]), kGreen);
  EXPECT_EQ(shape_style(wi->seg_ments[1]), kDouble);
  LogCanvas canvas;
  DrawVeloraWindow(wi, canvas);
  const auto green = std::count_if(canvas.shapes.begin(), canvas.shapes.end(),
                                   [](const auto &s) { return s.pen.colour == kPalette[kGreen]; });
  EXPECT_EQ(green, 2) << "a double box has two borders";
}

TEST_F(DrawTest, PicturesLookAsTheyShould) {
  ASSERT_EQ(RestoreAll(std::string(VELORA_SOURCE_DIR) + "/tests/golden/seg/pictures.seg"), 1);
  int pictures = 0;
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next, ++pictures) {
    std::string file = wi->name + ".svg";
    std::replace(file.begin(), file.end(), ' ', '_');
    file.erase(std::remove(file.begin(), file.end(), '$'), file.end());
    ASSERT_EQ(draw_to_svg(wi->name.c_str(), wi->cmpnt, path("out.svg").c_str()), 1);
    expect_golden("svg/" + file, get("out.svg"));
  }
  EXPECT_GE(pictures, 12);
}

TEST_F(DrawTest, DrawingIntoAFileSaysWhatIsWrong) {
  picture("f", 2);
  picture("f", 5);
  EXPECT_EQ(draw_to_svg("f", -1, path("f.svg").c_str()), 1);
  EXPECT_NE(get("f.svg").find("<title>f 2</title>"), std::string::npos);
  EXPECT_EQ(draw_to_svg("f", 5, path("f.svg").c_str()), 1);
  EXPECT_NE(get("f.svg").find("<title>f 5</title>"), std::string::npos);
  EXPECT_EQ(draw_to_svg("f", 1, path("f.svg").c_str()), 0);
  EXPECT_EQ(draw_to_svg("g", -1, path("f.svg").c_str()), 0);
  EXPECT_EQ(draw_to_svg("f", 2, path("none/f.svg").c_str()), 0);
  EXPECT_EQ(seen.console.messages, "There is no picture 1 of f\nThere is no picture of g\n"
                                   "Can't write " +
                                       path("none/f.svg") + ": No such file or directory\n");
}

TEST_F(DrawTest, AnyLabelGivesADocument) {
  SvgCanvas canvas;
  canvas.text({0, 0}, "<a & \"b\">\x01\xFF\xC3\xA9\xED\xA0\x80", Font{}, {});
  const std::string text = canvas.document({0, 0, 9, 9}, "a<b");
  EXPECT_NE(text.find("<title>a&lt;b</title>"), std::string::npos);
  EXPECT_NE(text.find(">&lt;a &amp; &quot;b&quot;&gt;\xEF\xBF\xBD\xEF\xBF\xBD\xC3\xA9"
                      "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD</text>"),
            std::string::npos)
      << text;
  // A character is as wide whatever its number of bytes.
  EXPECT_EQ(canvas.text_width("\xC3\xA9", Font{12}), canvas.text_width("e", Font{12}));
  EXPECT_EQ(canvas.text_width("abc", Font{12}), 24);
  EXPECT_EQ(canvas.text_height(Font{12}), 16);
}

// What a document may hold: whole characters but for most control characters and two others.
bool is_document_character(std::string_view one) {
  if (one.size() == 1)
    return static_cast<unsigned char>(one[0]) >= ' ' || one == "\n";
  return one != "\xEF\xBF\xBE" && one != "\xEF\xBF\xBF";
}

bool holds_only_characters(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = whole_character(text);
    if (length == 0 || !is_document_character(text.substr(0, length)))
      return false;
    text.remove_prefix(length);
  }
  return true;
}

// What stands between two tags.
bool is_document_text(std::string_view text) {
  for (std::size_t at = 0; (at = text.find('&', at)) != std::string_view::npos; ++at) {
    const std::string_view entity = text.substr(at, text.find(';', at) - at + 1);
    if (entity != "&lt;" && entity != "&gt;" && entity != "&amp;" && entity != "&quot;")
      return false;
  }
  return text.find("]]>") == std::string_view::npos;
}

// Walks a document of elements, quoted attributes, entities and text behind its first line; what is
// wrong with it, or nothing.
std::string fault_of_document(std::string_view text) {
  if (!holds_only_characters(text))
    return "holds what is no character";
  std::vector<std::string> open;
  text.remove_prefix(text.find("?>") + 2);
  for (std::size_t tag; (tag = text.find('<')) != std::string_view::npos;) {
    if (!is_document_text(text.substr(0, tag)))
      return "a loose & or ]]>";
    const std::size_t end = text.find('>', tag);
    std::string_view inner = text.substr(tag + 1, end - tag - 1);
    if (end == std::string_view::npos || inner.find('<') != std::string_view::npos ||
        std::ranges::count(inner, '"') % 2 != 0)
      return "a broken tag";
    text.remove_prefix(end + 1);
    const bool closes = inner.starts_with('/');
    const std::string name(inner.substr(closes ? 1 : 0, inner.find(' ')));
    if (closes && (open.empty() || "/" + open.back() != inner))
      return "closes " + name;
    if (closes)
      open.pop_back();
    else if (!inner.ends_with('/'))
      open.push_back(name);
  }
  return open.empty() ? "" : "does not close " + open.back();
}

// Every byte and every pair of bytes that means something to a reader of documents, in the label of
// a segment, in the name of its picture and so in the title.
TEST_F(DrawTest, APictureIsAWellFormedDocumentWhateverStandsInLabels) {
  std::vector<std::string> labels = {"<&>\"]]>",
                                     "]]>",
                                     "&amp",
                                     "<!--",
                                     "</text><script>",
                                     "<![CDATA[",
                                     "<?xml?>",
                                     "&#0;",
                                     "'\" onload=\"",
                                     "\xEF\xBF\xBE",
                                     "\xEF\xBF\xBF",
                                     "\xED\xA0\x80",
                                     "\xC0\x80",
                                     "\xF4\x90\x80\x80",
                                     "\xE2\x82",
                                     std::string("a\0b", 3)};
  for (int byte = 0; byte < 256; ++byte) {
    labels.emplace_back(1, static_cast<char>(byte));
    labels.push_back("x" + labels.back() + "<");
  }
  for (const int type : {kHexagon, kBox, kArc, kJunction, kHoldValue})
    for (const std::string &label : labels) {
      WinInfo wi{};
      wi.name = label;
      Segm *first = extra_segment(&wi);
      *first = {};
      first->type = type;
      first->label = label;
      first->lx = 10, first->ly = 10, first->ux = 90, first->uy = 40;
      ASSERT_EQ(fault_of_document(picture_as_svg(&wi, label)), "") << quoted(label);
    }
}

TEST(WellFormed, IsNotWhatABrokenDocumentIs) {
  const std::string head = "<?xml version=\"1.0\"?><svg>";
  EXPECT_EQ(fault_of_document(head + "<a b=\"&lt;\"/>c&gt;</svg>\n"), "");
  for (const char *broken : {"<a></svg>", "a & b</svg>", "]]></svg>", "\x01</svg>", "\xFF</svg>",
                             "<a b=\"></svg>", "<a", "\xEF\xBF\xBF</svg>", ""})
    EXPECT_NE(fault_of_document(head + broken), "") << broken;
}

} // namespace
