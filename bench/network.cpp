// Measures the layouts of the call network of a database. network.py runs it, and compares with
// another program's placing of the same boxes and arrows.
//
//   network_bench graph DATABASE.ddb          the boxes and arrows, for the other program
//   network_bench measure DATABASE.ddb [FILE] a line for each layout; FILE has a corner a line
#include <cstdio>
#include <ctime>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "editor/model/layered_layout.h"
#include "network/links.h"
#include "network/net_lay.h"

namespace {

using namespace velora;

struct Graph {
  std::vector<LayeredBox> boxes;
  std::vector<LayeredArrow> arrows;
  std::vector<Point> stored; // where Create Network puts the boxes
};

Graph read_graph(const char *file) {
  scan_file_to_ARRAY(file);
  ARRAY_to_ipairs();
  remove_self_recursions(kCallsItself);
  remove_duplicates();
  FixNetNodeLevels();
  SegmArray segs;
  const int count = do_layout(segs);
  Graph graph;
  std::vector<int> number(static_cast<std::size_t>(count) + 1);
  for (int i = 1; i <= count; ++i)
    if (const Segm *seg = segs[i]; is_node(seg)) {
      number[static_cast<std::size_t>(i)] = static_cast<int>(graph.boxes.size());
      graph.boxes.push_back({seg->ux - seg->lx, seg->uy - seg->ly, -1, false, {}});
      graph.stored.push_back({seg->lx, seg->ly});
    }
  for (int i = 1; i <= count; ++i)
    if (const Segm *arc = segs[i]; is_arc(arc))
      graph.arrows.push_back({number[static_cast<std::size_t>(arc_start(arc)->segnum)],
                              number[static_cast<std::size_t>(arc_end(arc)->segnum)]});
  return graph;
}

void report(const char *name, const Graph &graph, const std::vector<Point> &corners,
            double seconds) {
  const LayeredFaults faults = layered_faults(graph.boxes, graph.arrows, corners);
  int right = 0;
  int bottom = 0;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    right = std::max(right, corners[i].x + graph.boxes[i].width);
    bottom = std::max(bottom, corners[i].y + graph.boxes[i].height);
  }
  std::printf("%s %ld %ld %ld %.4f %d %d\n", name, faults.overlaps, faults.crossings,
              faults.boxes_crossed, seconds, right, bottom);
}

void measure(const char *name, const Graph &graph, const LayeredOptions &options) {
  // The processor's time, so that other work on the machine does not count.
  const std::clock_t start = std::clock();
  const LayeredResult result = lay_out_layers(graph.boxes, graph.arrows, options);
  const std::clock_t took = std::clock() - start;
  report(name, graph, result.corners, static_cast<double>(took) / CLOCKS_PER_SEC);
}

} // namespace

int main(int argc, char **argv) {
  if (argc < 3)
    return 2;
  const Graph graph = read_graph(argv[2]);
  if (argv[1] == std::string_view("graph")) {
    for (const LayeredBox &box : graph.boxes)
      std::printf("box %d %d\n", box.width, box.height);
    for (const LayeredArrow &arrow : graph.arrows)
      std::printf("arrow %d %d\n", arrow.from, arrow.to);
    return 0;
  }
  std::printf("size %zu %zu\n", graph.boxes.size(), graph.arrows.size());
  report("stored", graph, graph.stored, 0);
  measure("tidy", graph, {});
  LayeredOptions wrapped;
  wrapped.wrap_width = wrap_width_for(graph.boxes, wrapped);
  measure("wrapped", graph, wrapped);
  if (argc > 3) {
    std::ifstream file(argv[3]);
    std::vector<Point> corners(graph.boxes.size());
    for (Point &corner : corners)
      file >> corner.x >> corner.y;
    report("other", graph, corners, 0);
  }
  return 0;
}
