// The steps of a picture: whatever is done to it can be taken back and done again, step by step.
#include <gtest/gtest.h>

#include <random>

#include "core/needs.h"
#include "core/symbols.h"
#include "editor/compound.h"
#include "editor/draw.h"
#include "editor/edit.h"
#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "front/cint.h"
#include "kit/language.h"
#include "kit/pictures.h"
#include "shell/return_point.h"

using namespace velora;
using namespace velora::kit;

namespace {

class HistoryTest : public PictureTest {};

int below(std::mt19937 &random, int limit) {
  return static_cast<int>(random() % static_cast<unsigned>(limit));
}

// One change of any kind; it may turn out to be none.
void random_change(std::mt19937 &random, WinInfo *wi) {
  const int slot = 1 + below(random, std::max(1, wi->seg_ct));
  Segm *seg = wi->seg_ments[slot];
  switch (below(random, 8)) {
  case 0:
  case 1:
    add_node(wi, std::array{4, 6, 7, 9, 10, 12, 13, 31}[static_cast<std::size_t>(below(random, 8))],
             below(random, 800), below(random, 600));
    break;
  case 2:
  case 3:
    put_arc_between(wi, slot, 1 + below(random, wi->seg_ct + 1), kArc);
    break;
  case 4:
    remove_segment(slot, wi);
    break;
  case 5:
    if (seg != nullptr && is_node(seg)) {
      seg->label = std::string(static_cast<std::size_t>(below(random, 20)), 'x');
      seg->annot = below(random, 3) == 0 ? "said" : "";
      set_colour(seg, below(random, 8));
    }
    break;
  case 6:
    wi->txtsze = 8 + below(random, 15);
    wi->name = below(random, 2) == 0 ? "f" : "g";
    break;
  default:
    CleanUpSegments(wi);
  }
}

std::string seen_state(const WinInfo *wi) {
  std::string text = picture_text(wi) + " clean" + std::to_string(wi->clean) + " saved" +
                     std::to_string(wi->saved);
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (wi->seg_ments[slot] != nullptr && (wi->seg_ments[slot]->status & kSelected) != 0)
      text += " +" + std::to_string(slot);
  return text;
}

// Redo selects what the change had selected, whatever was chosen after it.
std::string without_selection(const std::string &state) {
  return state.substr(0, state.find(" +"));
}

TEST_F(HistoryTest, AnyChangesAreTakenBackAndDoneAgain) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    std::mt19937 random(seed);
    WinInfo *wi = NewWindow(kFunctionPicture);
    std::vector<std::string> states{seen_state(wi)};
    for (int i = 0; i < 150; ++i) {
      if (Segm *seg = wi->seg_ments[1 + below(random, 20)]; seg != nullptr)
        seg->status ^= kSelected;
      states.back() = seen_state(wi); // choosing is no step, but belongs to the state before one
      if (edit_picture(wi, "Change", [&] { random_change(random, wi); }))
        states.push_back(seen_state(wi));
      ASSERT_EQ(invariant_faults(wi), "");
      // Now and then some steps back and forth, and on from there.
      for (int back = below(random, 12) - 8; back > 0 && states.size() > 1; --back) {
        ASSERT_EQ(undo_step(wi), 1);
        states.pop_back();
        ASSERT_EQ(seen_state(wi), states.back());
      }
    }
    for (std::size_t i = states.size() - 1; i-- > 0;) {
      ASSERT_EQ(undo_step(wi), 1);
      ASSERT_EQ(seen_state(wi), states[i]) << "seed " << seed << " back to " << i;
      ASSERT_EQ(invariant_faults(wi), "");
    }
    EXPECT_EQ(step_to_undo(wi), "");
    for (std::size_t i = 1; i < states.size(); ++i) {
      ASSERT_EQ(redo_step(wi), 1);
      ASSERT_EQ(without_selection(seen_state(wi)), without_selection(states[i]))
          << "seed " << seed << " forth to " << i;
    }
  }
}

TEST_F(HistoryTest, StepsMergeAndSavedStatesStayClean) {
  WinInfo *wi = NewWindow(kFunctionPicture);
  const auto zoom = [&](int size) {
    edit_picture(wi, "Zoom", [&] { wi->txtsze = size; }, {.merge = "zoom"});
  };
  zoom(16);
  zoom(22);
  EXPECT_EQ(wi->clean, 0);
  EXPECT_EQ(undo_step(wi), 1);
  EXPECT_EQ(wi->txtsze, 12);
  EXPECT_EQ(wi->clean, 1);
  EXPECT_EQ(redo_step(wi), 1);
  EXPECT_EQ(wi->txtsze, 22);
  picture_stored(wi);
  zoom(10);
  EXPECT_EQ(wi->clean, 0);
  EXPECT_EQ(undo_step(wi), 1);
  EXPECT_EQ(wi->txtsze, 22) << "what was stored is a state of its own";
  EXPECT_EQ(wi->clean, 1);
  EXPECT_EQ(undo_step(wi), 1);
  EXPECT_EQ(wi->clean, 0) << "the first state is no longer the stored one";
  // A change that changes nothing is no step and leaves the flags.
  WinInfo *other = NewWindow(kFunctionPicture);
  EXPECT_FALSE(edit_picture(other, "Nothing", [&] { other->txtsze = 12; }));
  EXPECT_EQ(other->saved, 1);
  EXPECT_EQ(step_to_undo(other), "");
  EXPECT_EQ(undo_step(other), 0);
}

TEST_F(HistoryTest, AnAbandonedChangeLeavesThePictureAsItWas) {
  WinInfo *wi = NewWindow(kFunctionPicture);
  edit_picture(wi, "Add", [&] { add_node(wi, kToolFunction, 100, 100); });
  const std::string before = seen_state(wi);
  run_command([&] {
    edit_picture(wi, "Add", [&] {
      add_node(wi, kToolFunction, 200, 200);
      wi->name = "f";
      error_exit("enough");
    });
    return 1;
  });
  EXPECT_EQ(seen_state(wi), before);
  EXPECT_EQ(undo_step(wi), 1);
  EXPECT_EQ(step_to_undo(wi), "");
  EXPECT_TRUE(edit_picture(wi, "Add", [&] { add_node(wi, kToolFunction, 1, 1); }));
}

TEST_F(HistoryTest, WhatAChangeTouchesIsSettled) {
  WinInfo *wi = NewWindow(kFunctionPicture);
  edit_picture(wi, "Add", [&] {
    wi->seg_ments[add_node(wi, kToolFunction, 100, 60)]->label = "a label of some length";
    wi->seg_ments[add_node(wi, kToolConstructor, 300, argument_band() + 10)]->label = "double";
    put_arc_between(wi, 2, 1, kArc);
  });
  const PictureLayout layout = lay_out_picture(wi);
  EXPECT_EQ(layout.nodes[0].box, wi->seg_ments[1]->box()) << "the box holds its label";
  EXPECT_EQ(layout.nodes[0].box.centre().x, 85) << "and grows around its centre";
  EXPECT_GE(wi->seg_ments[2]->ly, argument_band()) << "growing makes no argument of it";
  const Point end = layout.arcs[0].path.back();
  EXPECT_EQ((Point{wi->seg_ments[3]->ux, wi->seg_ments[3]->uy}), end);
  // A size that the user gave stays when the node is moved.
  edit_picture(wi, "Shrink", [&] { wi->seg_ments[1]->ux = wi->seg_ments[1]->lx + 9; });
  edit_picture(wi, "Move", [&] { move_node(wi->seg_ments[1], 5, 5); });
  EXPECT_EQ(wi->seg_ments[1]->box().width(), 9);
}

class CompoundTest : public Language {};

TEST_F(CompoundTest, PicturesAndCodeGoBackTogether) {
  ASSERT_EQ(cint_fdec("older ::= int -> int"), 1);
  ASSERT_EQ(cint_fdec("fac ::= int -> int"), 1);
  ASSERT_EQ(cint_fdef("fac #0 ::= #1"), 1);
  ASSERT_EQ(cint_fdec("newer ::= int -> int"), 1);
  WinInfo *stored = picture("fac");
  place_node(stored, kBox, kPlain, "one", {0, 0, 10, 10});
  WinInfo *wi = NewWindow(kFunctionPicture);
  const std::string pictures = all_pictures_text();
  const SymbolState symbol = take_symbol_state("fac");
  EXPECT_EQ(symbol.newer, "newer");
  {
    CompoundStep step(wi, "Commit");
    step.touch("fac");
    step.touch("brand");
    ASSERT_EQ(cint_fdef("fac ?0 ::= * ?0 (fac (- ?0 #1))"), 1);
    ASSERT_EQ(cint_fdec("brand ::= int -> int"), 1);
    ASSERT_EQ(cint_fdef("brand ?0 ::= ?0"), 1);
    picture("fac", 1);
    stored->seg_ments[1]->label = "other";
    edit_picture(wi, "Name", [&] { wi->name = "fac"; });
  }
  const std::string later = all_pictures_text();
  const SymbolState later_symbol = take_symbol_state("fac");
  EXPECT_EQ(later_symbol.clauses.size(), 2U);
  EXPECT_EQ(step_to_undo(wi), "Commit");
  for (int round = 0; round < 2; ++round) {
    ASSERT_EQ(undo_step(wi), 1);
    EXPECT_EQ(all_pictures_text(), pictures);
    EXPECT_EQ(take_symbol_state("fac"), symbol);
    EXPECT_FALSE(take_symbol_state("brand").exists);
    EXPECT_EQ(wi->name, "");
    ASSERT_EQ(redo_step(wi), 1);
    EXPECT_EQ(all_pictures_text(), later);
    EXPECT_EQ(take_symbol_state("fac").clauses, later_symbol.clauses);
    EXPECT_TRUE(take_symbol_state("brand").exists);
  }
  // What others did since is not undone with it.
  ASSERT_EQ(cint_fdef("brand #0 ::= #7"), 1);
  EXPECT_EQ(undo_step(wi), 0);
  EXPECT_EQ(all_pictures_text(), later);
  EXPECT_EQ(take_symbol_state("fac").clauses, later_symbol.clauses);
  // The step of a window that is gone is kept.
  EXPECT_EQ(orphan_to_undo(), "");
  RemovePicture(wi);
  EXPECT_EQ(orphan_to_undo(), "Commit");
  EXPECT_EQ(undo_orphan(), 0);
  forget_orphans();
  FreeAllPictures();
}

} // namespace
