// Writing networks. The kinds of files stand in one table.
#include "shell/network_files.h"

#include "core/needs.h"
#include "editor/draw.h"
#include "network/call_graph.h"
#include "network/links.h"
#include "network/net_formats.h"
#include "network/net_lay.h"
#include "network/net_tidy.h"
#include "network/net_view.h"
#include "platform/response.h"
#include "platform/safe_file.h"

namespace velora {

namespace {

std::string network_as_svg(const WinInfo *wi) {
  return picture_as_svg(wi, "Function Network");
}

struct Format {
  const char *ending;
  std::string (*text)(const WinInfo *);
};

constexpr Format kFormats[] = {
    {".svg", network_as_svg},
    {".dot", network_as_dot},
    {".graphml", network_as_graphml},
    {".csv", network_as_csv},
};

const Format *format_of(const std::string &file) {
  for (const Format &format : kFormats)
    if (file.ends_with(format.ending))
      return &format;
  return nullptr;
}

// The number of a function that was asked for; "There is no function ..." when there is none.
bool find_function(const CallGraph &graph, const std::string &name, int &number) {
  number = graph.number(name);
  if (number < 0)
    orvek_errorf("There is no function %s in the network\n", name.c_str());
  return number >= 0;
}

// Takes out of `ipairs` what the request does not ask for. False after a message.
bool narrow_pairs(const NetworkRequest &request) {
  const CallGraph graph(ipairs);
  std::vector<bool> kept(static_cast<std::size_t>(graph.count()), true);
  const auto narrow = [&](const std::string &name, bool forward) {
    int number = 0;
    if (!find_function(graph, name, number))
      return false;
    const std::vector<bool> met = graph.walk({number}, forward, request.depth);
    for (std::size_t i = 0; i < kept.size(); ++i)
      kept[i] = kept[i] && met[i];
    return true;
  };
  if ((!request.from.empty() && !narrow(request.from, true)) ||
      (!request.to.empty() && !narrow(request.to, false)))
    return false;
  std::erase_if(ipairs, [&](const Pair &pair) {
    return !kept[static_cast<std::size_t>(graph.number(pair.first))] ||
           !kept[static_cast<std::size_t>(graph.number(pair.second))];
  });
  return true;
}

} // namespace

bool is_network_file(const std::string &file) {
  return format_of(file) != nullptr;
}

int write_network_picture(const WinInfo *wi, const std::string &file) {
  const Format *format = format_of(file);
  if (format == nullptr) {
    orvek_errorf("%s ends in none of .svg, .dot, .graphml and .csv\n", file.c_str());
    return 0;
  }
  std::string reason;
  if (!may_replace_protected(file))
    return 0;
  if (write_whole_file(file, format->text(wi), reason))
    return 1;
  orvek_errorf("Can't write %s\n", reason.c_str());
  return 0;
}

int write_network(const NetworkRequest &request) {
  if (find_links(1) == nullptr)
    MakeFirstLinkage();
  ipairs = find_links(1)->ipr;
  if (!narrow_pairs(request))
    return 0;
  WinInfo aside; // in no list: the database's own pictures stay as they are
  aside.wtype = kNetworkPicture;
  aside.name = kNetworkName;
  FixNetNodeLevels();
  aside.seg_ct = do_layout(aside.seg_ments);
  hide_kinds(&aside, request.hide);
  if (request.tidy)
    tidy_network(&aside);
  return write_network_picture(&aside, request.file);
}

} // namespace velora
