// Writing networks for other programs. Nodes are named by their slots, so labels may hold anything.
#include "network/net_formats.h"

#include <string_view>

#include "network/net_view.h"
#include "platform/response.h"
#include "platform/xml_text.h"

namespace velora {

namespace {

template <typename Do> void each_node_shown(const WinInfo *wi, Do what) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (const Segm *seg = wi->seg_ments[slot]; seg != nullptr && is_node(seg) && !is_hidden(seg))
      what(seg);
}

// Calls `what` with both ends of every arc between visible nodes, then of every way over hidden
// ones.
template <typename Do> void each_link_shown(const WinInfo *wi, Do what) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *arc = wi->seg_ments[slot];
    if (arc == nullptr || !is_arc(arc) || arc_start(arc) == nullptr || arc_end(arc) == nullptr ||
        is_hidden(arc_start(arc)) || is_hidden(arc_end(arc)))
      continue;
    what(arc_start(arc), arc_end(arc), false);
  }
  for (const auto &[from, to] : look_at_network(wi).skipped)
    what(from, to, true);
}

std::string quoted(std::string_view text, std::string_view marked) {
  std::string out;
  for (const char c : text) {
    if (marked.find(c) != std::string_view::npos)
      out += '\\';
    out += c;
  }
  return out;
}

std::string csv_text(std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos)
    return std::string(text);
  std::string out = "\"";
  for (const char c : text) {
    if (c == '"')
      out += '"';
    out += c;
  }
  return out + '"';
}

} // namespace

std::string network_as_dot(const WinInfo *wi) {
  std::string out = "digraph network {\n  node [shape=box];\n";
  each_node_shown(wi, [&out](const Segm *seg) {
    out += format_text("  n%d [label=\"", seg->segnum) + quoted(seg->label, "\"\\") + "\"];\n";
  });
  each_link_shown(wi, [&out](const Segm *from, const Segm *to, bool skipped) {
    out += format_text("  n%d -> n%d%s;\n", from->segnum, to->segnum,
                       skipped ? " [style=dotted]" : "");
  });
  return out + "}\n";
}

std::string network_as_graphml(const WinInfo *wi) {
  std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                    "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\">\n"
                    "  <key id=\"name\" for=\"node\" attr.name=\"name\" attr.type=\"string\"/>\n"
                    "  <key id=\"skips\" for=\"edge\" attr.name=\"skips\" attr.type=\"boolean\">"
                    "<default>false</default></key>\n"
                    "  <graph id=\"network\" edgedefault=\"directed\">\n";
  each_node_shown(wi, [&out](const Segm *seg) {
    out += format_text("    <node id=\"n%d\"><data key=\"name\">", seg->segnum) +
           xml_text(seg->label) + "</data></node>\n";
  });
  each_link_shown(wi, [&out](const Segm *from, const Segm *to, bool skipped) {
    out += format_text("    <edge source=\"n%d\" target=\"n%d\"", from->segnum, to->segnum);
    out += skipped ? "><data key=\"skips\">true</data></edge>\n" : "/>\n";
  });
  return out + "  </graph>\n</graphml>\n";
}

std::string network_as_csv(const WinInfo *wi) {
  std::string out = "caller,callee\n";
  each_link_shown(wi, [&out](const Segm *from, const Segm *to, bool) {
    out += csv_text(from->label) + ',' + csv_text(to->label) + '\n';
  });
  return out;
}

} // namespace velora
