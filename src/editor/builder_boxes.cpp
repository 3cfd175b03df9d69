// The geometry of built pictures by fixed rules, and how a picture is written.
//
// A box is 20 high and 10 wide for each character, 2 left of its centre. A type picture has three
// rows: arguments at 50, constructors at 110, the type at 170 (and "nonlex" at 230). A function
// picture has its parameters at 18, unjoined, and the right-hand side as a tree that grows upwards
// from the result at 300, a level every 40.
#include "core/events.h"
#include "core/symbols.h"
#include "editor/builder_records.h"
#include "editor/model/records.h"
#include "editor/model/seg_file.h"
#include "platform/response.h"
#include "platform/utf8.h"

namespace velora {

namespace {

constexpr int kHalfHeight = 10;
constexpr int kMiddle = 160;
constexpr int kRowOfConstructors = 110;
constexpr int kRowOfArguments = 50;
constexpr int kRowOfType = 170;
constexpr int kRowOfNonlex = 230;
constexpr int kRowOfResult = 300;
constexpr int kFirstLevel = 280;
constexpr int kLevelStep = 40;
constexpr int kRowOfParameters = 18;
constexpr int kTypeTextSize = 14;
constexpr int kTypeWidth = 320;
constexpr int kFunctionWidth = 350;

int length_of(std::string_view name) {
  return static_cast<int>(count_characters(name));
}

int middle(const graph_block &box) {
  return box.lx + (box.ux - box.lx) / 2;
}

// A line of links, the newest first.
std::string links(char mark, const std::vector<int> &numbers) {
  std::string line;
  for (auto number = numbers.rbegin(); number != numbers.rend(); ++number)
    line += mark + std::to_string(*number);
  return line + '\n';
}

// The end of a picture's or segment's line, with its annotation if there is one.
void write_annotation(std::string &out, const std::string &annot) {
  if (!annot.empty()) {
    out += format_text(" %d\n", annotation_lines(annot));
    out += annot.ends_with('\n') ? annot.substr(0, annot.size() - 1) : annot;
  }
  out += '\n';
}

void write_node(std::string &out, const graph_block &box) {
  out += label_to_file(box.label);
  out += format_text(" %d %d %d %d %d %d %d", box.number, box.shape, box.line, box.lx, box.ly,
                     box.ux, box.uy);
  write_annotation(out, box.annot);
  out += links('B', box.backward);
  out += links('F', box.forward);
}

// What a box shows of an item: a string gets its closing quote back, a blank stands for "~".
std::string label_of(const fdef_block &item) {
  std::string label = item.name;
  if (!item.gathered && item.item_type == kTokString)
    label += '"';
  return item.gathered ? label_from_file(label) : label;
}

} // namespace

graph_block calc_box(std::string_view name, int number, int shape, int style, int x, int y) {
  const int len = length_of(name);
  graph_block box;
  box.number = number;
  box.shape = shape;
  box.line = style;
  box.ly = y - kHalfHeight;
  box.uy = y + kHalfHeight;
  box.lx = x - (5 * len + 2); // Kept: 2 left of the centre
  box.ux = box.lx + 10 * len;
  box.label = name;
  return box;
}

void place_line(graph_block &line, const graph_block &source, const graph_block &dest) {
  const bool upwards = source.ly < dest.uy;
  line.lx = middle(source);
  line.ux = middle(dest);
  line.ly = upwards ? source.ly : source.uy;
  line.uy = upwards ? dest.uy : dest.ly;
}

graph_block join_nodes(graph_block &source, graph_block &dest, int number) {
  graph_block line;
  line.number = number;
  line.shape = kArc;
  line.line = kPlain;
  line.label = "I/O";
  place_line(line, source, dest);
  line.backward.push_back(source.number);
  line.forward.push_back(dest.number);
  source.forward.push_back(number);
  dest.backward.push_back(number);
  return line;
}

namespace {

// Boxes and pending lines of the picture that is being made; each is numbered when it is added.
// Boxes are kept in a deque until the end, since lines are joined to them by reference.
class PictureMaker {
public:
  PictureMaker(int boxes, jsymbol *source, int component) : next_line(boxes + 1) {
    picture.source = source;
    picture.name = source->name;
    picture.component = component;
  }

  graph_block &add_box(std::string_view name, int shape, int style, int x, int y) {
    return boxes_.emplace_back(calc_box(name, next_node++, shape, style, x, y));
  }
  void join(graph_block &source, graph_block &dest) {
    lines_.push_back(join_nodes(source, dest, next_line++));
  }
  // Boxes in the order of their numbers, then the lines, oldest first.
  BuiltPicture finish() {
    picture.segments.assign(boxes_.begin(), boxes_.end());
    picture.segments.insert(picture.segments.end(), lines_.begin(), lines_.end());
    return std::move(picture);
  }

  int next_node = 1;
  int next_line;
  BuiltPicture picture;

private:
  std::deque<graph_block> boxes_;
  std::vector<graph_block> lines_;
};

// A type's constructors and how wide their rows are.
struct TypeRows {
  std::vector<const jsymbol *> constructors;
  int cdec_total = 0;
  int carg_count = 0;
  int carg_total = 0;
};

int gap_of(int total, int count) {
  return (kTypeWidth - 10 * total - 4 * count) / (count + 1);
}

int half_of(std::string_view name) {
  return (10 * length_of(name) + 4) / 2;
}

BuiltPicture type_picture(jsymbol &type, const TypeRows &rows) {
  const int cdec_count = static_cast<int>(rows.constructors.size());
  const int carg_gap = gap_of(rows.carg_total, rows.carg_count);
  const int cdec_gap = gap_of(rows.cdec_total, cdec_count);
  int carg_pos = carg_gap;
  int cdec_pos = cdec_gap;
  const bool nonlex = type.tdec.base == "nonlex";
  PictureMaker maker(1 + cdec_count + rows.carg_count + (nonlex ? 1 : 0), &type, 0);
  maker.picture.text_size = kTypeTextSize;
  graph_block &top = maker.add_box(type.name, kHexagon, kDouble, kMiddle, kRowOfType);
  if (nonlex)
    maker.join(top, maker.add_box("nonlex", kHexagon, kDouble, kMiddle, kRowOfNonlex));
  for (const jsymbol *constructor : rows.constructors) {
    // Kept: it is the type's name whose length counts here, not the constructor's.
    const int half = half_of(type.name);
    graph_block &box =
        maker.add_box(constructor->name, kBox, kDouble, cdec_pos + half, kRowOfConstructors);
    cdec_pos += 2 * half + cdec_gap;
    maker.join(box, top);
    for (std::size_t i = 1; i < constructor->cfdec.size(); ++i) {
      const std::string &group = constructor->cfdec[i].param;
      const int arg_half = half_of(group);
      graph_block &arg =
          maker.add_box(group, kHexagon, kDouble, carg_pos + arg_half, kRowOfArguments);
      carg_pos += 2 * arg_half + carg_gap;
      maker.join(arg, box);
    }
  }
  return maker.finish();
}

} // namespace

void output_types(Build &build) {
  // One walk sorts the constructors by their result, so that many types take linear time.
  std::unordered_map<std::string, TypeRows> rows_of;
  for (const jsymbol &entry : build.jSymbol_table) {
    if (entry.stype != kTokCdec)
      continue;
    const std::string &result = entry.cfdec.front().param;
    build.constructors[result.substr(0, result.find(' '))].push_back(&entry);
    TypeRows &rows = rows_of[entry.cfdec.front().param];
    rows.constructors.push_back(&entry);
    rows.cdec_total += length_of(entry.name);
    for (std::size_t i = 1; i < entry.cfdec.size(); ++i) {
      ++rows.carg_count;
      rows.carg_total += length_of(entry.cfdec[i].param);
    }
  }
  for (jsymbol &entry : build.jSymbol_table)
    if (entry.stype == kTokTdec)
      build.pictures.push_back(type_picture(entry, rows_of[entry.name]));
}

void calc_func_details(const fdef_block *item, std::size_t level, std::vector<int> &level_count) {
  check_stack();
  if (level_count.size() <= level)
    level_count.resize(level + 1);
  ++level_count[level];
  for (const fdef_block *child : item->params)
    calc_func_details(child, level + 1, level_count);
}

void determine_symbol(const fdef_block &item, graph_block &box) {
  box.shape = kHexagon;
  box.line = kBold;
  switch (item.item_type) {
  case kTokInteger:
  case kTokCharacter:
  case kTokRealLit:
  case kTokString:
  case kTokVariable:
    return;
  case kTokName:
  case kTokLambda:
    break;
  default:
    orvek_errorf("%s is unknown type, can't generate shape and line for it.\n", item.name.c_str());
    return;
  }
  const symbol *known = find_symbol(item.name.c_str(), item.name.size());
  const int kind = known == nullptr ? 0 : known->stype;
  constexpr int kUserConstructorKept = 0xD0;
  const bool constructs =
      kind == kConstructor || kind == kBuiltinConstructor || kind == kUserConstructorKept;
  if (item.name == "HOLDN" || kind == kFunction || kind == kSysFunction || kind == kDbFunction ||
      kind == kBuiltinFunction) {
    box.shape = kBox;
    box.line = kPlain;
  } else if (constructs) {
    box.shape = kBox;
    box.line = kDouble;
  }
}

namespace {

// The places of a function picture's boxes: each level goes on from left to right.
struct LevelPlaces {
  std::vector<int> level_gap;
  std::vector<int> level_current;

  explicit LevelPlaces(const std::vector<int> &level_count) : level_current(level_count.size()) {
    for (const int count : level_count)
      level_gap.push_back(kFunctionWidth / (count + 1));
  }
  int next(std::size_t level) { return level_current[level] += level_gap[level]; }
};

// Kept: only the gap moves on within a level, whatever the widths of the boxes.
void build_func_graph(const fdef_block *item, std::size_t level, graph_block &parent,
                      LevelPlaces &places, PictureMaker &maker) {
  check_stack();
  CheckForUserEvents(0);
  const int y = kFirstLevel - kLevelStep * static_cast<int>(level);
  // The width goes by the text as it was read: a string's closing quote is left out.
  graph_block &box = maker.add_box(item->name, kHexagon, kBold, places.next(level), y);
  box.label = label_of(*item);
  determine_symbol(*item, box);
  maker.join(box, parent);
  for (const fdef_block *child : item->params)
    build_func_graph(child, level + 1, box, places, maker);
}

} // namespace

BuiltPicture function_picture(Build &build, jsymbol &clause) {
  const jsymbol *declared = declaration_of(build, clause.name);
  const std::vector<cfdec_block> &types = declared->cfdec;
  const std::string &result = types.front().param;
  const std::vector<fdef_block *> &lhs = clause.fdef.lhs;
  std::vector<int> level_count;
  const fdef_block root{result, kTokName, true, {clause.fdef.rhs}};
  calc_func_details(&root, 0, level_count);
  int inner_nodes = 0;
  for (const int count : level_count)
    inner_nodes += count;
  // The row of the parameters counts as one level more.
  const int args = static_cast<int>(lhs.size());
  level_count.push_back(args);
  LevelPlaces places(level_count);
  const std::size_t top = level_count.size() - 1;
  PictureMaker maker(inner_nodes + args, &clause, clause.fdef.occurence);
  maker.picture.arguments = args;
  graph_block &result_box = maker.add_box(result, kHexagon, kBold, kMiddle, kRowOfResult);
  for (std::size_t i = 0; i < lhs.size(); ++i) {
    const fdef_block &item = *lhs[i];
    graph_block &box =
        maker.add_box(item.name, kHexagon, kBold, places.next(top), kRowOfParameters);
    places.level_current[top] += 8 * length_of(item.name) + 4;
    // A parameter shows its type; the box keeps the width of its own text.
    const bool typed = item.item_type == kTokVariable && i + 1 < types.size();
    box.label = typed ? types[i + 1].param : label_of(item);
  }
  build_func_graph(clause.fdef.rhs, 1, result_box, places, maker);
  return maker.finish();
}

void build_function(Build &build, jsymbol &clause) {
  build.pictures.push_back(function_picture(build, clause));
}

namespace {

// The boxes of a picture, then its lines: each in the order of their numbers.
void write_func_graph(std::string &out, const BuiltPicture &picture) {
  for (const graph_block &segment : picture.segments)
    if (segment.shape != kArc || picture.stood)
      write_node(out, segment);
}

void write_lines(std::string &out, const BuiltPicture &picture) {
  for (const graph_block &segment : picture.segments)
    if (segment.shape == kArc && !picture.stood)
      write_node(out, segment);
}

} // namespace

std::string write_picture(const BuiltPicture &picture) {
  std::string out = label_to_file(picture.name);
  out += format_text(" %d %zu 1 %d", picture.component, picture.segments.size(), picture.text_size);
  write_annotation(out, picture.annot);
  write_func_graph(out, picture); // a picture that stood has lines between its boxes
  write_lines(out, picture);
  return out;
}

} // namespace velora
