// Pictures for tests: made by hand or at random, checked for their invariants and written as text.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>

#include "editor/model/records.h"
#include "kit/recorder.h"

namespace velora::kit {

// A stored picture without segments.
WinInfo *picture(const std::string &name, int cmpnt = 0, int wtype = kFunctionPicture);
// Adds a node with the given box; answers its slot.
int place_node(WinInfo *wi, int type, int style, const std::string &label, const Rect &box);
// Adds a node of the size the tools give it, around (x, y).
int tool_node(WinInfo *wi, int tool, const std::string &label, int x, int y);
int join(WinInfo *wi, int from, int to);

// A picture of any kind with labels, annotations, shared and repeated arcs and empty slots.
WinInfo *random_picture(std::mt19937 &random, const std::string &name, int cmpnt);

// What is wrong with the invariants of a picture's segments; empty when nothing is.
std::string invariant_faults(const WinInfo *wi);
// Everything of a picture that files keep, as text.
std::string picture_text(const WinInfo *wi);
// The same of all pictures.
std::string all_pictures_text();

// Compares `text` with a file of tests/golden; with VELORA_UPDATE_GOLDEN set, writes it instead.
void expect_golden(const std::string &file, const std::string &text);

// A test with recorders in place, no pictures, and a folder of its own.
class PictureTest : public testing::Test {
protected:
  PictureTest();
  ~PictureTest() override;
  std::string path(const std::string &file) const { return (folder_ / file).string(); }
  void put(const std::string &file, const std::string &text) const;
  std::string get(const std::string &file) const;

  Recording seen;

private:
  std::filesystem::path folder_;
};

} // namespace velora::kit
