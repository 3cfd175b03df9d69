// The menus of the five bars. A list that several bars share stands once.
#include "shell/menu_layout.h"

namespace velora {

namespace {

// clang-format off
constexpr int kTextFile[] = {101, 102, 103, 0, 105, 0, 107, 108, 109, 0, 111, 112, 0, 113};
constexpr int kPictureFile[] = {101, 102, 103, 0, 105, 0, 107, 108, 109, 0, 111, 0, 113};
constexpr int kTextEdit[] = {201, 0, 203, 204, 205, 206, 0, 208, 209};
constexpr int kPictureEdit[] = {201, 202, 0, 203, 204, 205, 1553, 0, 301, 302, 303, 0, 304, 305, 0, 307, 308, 1552, 1555, 309, 0, 311};
constexpr int kQueryItems[] = {401, 0, 403, 404, 405, 0, 407};
constexpr int kWindowItems[] = {501, 0, 503, 504, 505, 506, 507, 508, 509, 0, 511, 512, 0, 1680, 1681};
constexpr int kColourItems[] = {1201, 1205, 1203, 1207, 1206, 1204, 1208};
constexpr int kFunctionFeatures[] = {601, 602, 603, 604, 605, 606, 607, 0, 609, 1550, 1551};
constexpr int kFunctionFind[] = {kUserItems, 0, 902, 903, 904, 0, 906, 1554, 1556, 0, 908};
constexpr int kDataFeatures[] = {701, 702, 703, 704, 705, 0, 707, 1550, 1551};
constexpr int kDataFind[] = {kUserItems, 0, 1002, 1003, 0, 1005};
constexpr int kNetworkFeatures[] = {1301, 1302, 1303, 0, 1305};
constexpr int kNetworkFind[] = {kUserItems, 0, 1102, 1103, 1104, 0, 1105, 0, 1107, 0, 1109};
constexpr int kViewItems[] = {1500, 1501, 1502, 1503};
constexpr int kFilters[] = {801, 802, 803, 0, 805, 806, 807, 808, 809, 810, 0, 812, 0,
                            1600, 1601, 1602, 1603, 1604, 1605, 1606, 0, 1607, 0,
                            1608, 1609, 1610, 1611, 0, 1612};
// clang-format on

constexpr MenuSpec kTextBar[] = {{"&File", kTextFile},
                                 {"&Edit", kTextEdit},
                                 {"&Query", kQueryItems},
                                 {"&Windows", kWindowItems}};
constexpr MenuSpec kFunctionsMenus[] = {
    {"&File", kPictureFile},  {"&Edit", kPictureEdit},   {"Fea&tures", kFunctionFeatures},
    {"F&ind", kFunctionFind}, {"Colo&ur", kColourItems}, {"&View", kViewItems},
    {"&Query", kQueryItems},  {"&Windows", kWindowItems}};
constexpr MenuSpec kDatatypeMenus[] = {{"&File", kPictureFile},      {"&Edit", kPictureEdit},
                                       {"Fea&tures", kDataFeatures}, {"F&ind", kDataFind},
                                       {"Colo&ur", kColourItems},    {"&View", kViewItems},
                                       {"&Query", kQueryItems},      {"&Windows", kWindowItems}};
constexpr MenuSpec kNetworkMenus[] = {
    {"&File", kPictureFile}, {"&Edit", kPictureEdit}, {"Fea&tures", kNetworkFeatures},
    {"F&ind", kNetworkFind}, {"Fi&lters", kFilters},  {"Colo&ur", kColourItems},
    {"&View", kViewItems},   {"&Query", kQueryItems}, {"&Windows", kWindowItems}};

} // namespace

std::span<const MenuSpec> menus_of(MenuBar bar) {
  switch (bar) {
  case MenuBar::functions:
    return kFunctionsMenus;
  case MenuBar::datatype:
    return kDatatypeMenus;
  case MenuBar::network:
    return kNetworkMenus;
  case MenuBar::main:
  case MenuBar::orvek:
    break;
  }
  return kTextBar;
}

} // namespace velora
