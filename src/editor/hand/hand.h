// The user's hand in a picture: what the mouse and the keys do to it, and what is drawn over it
// meanwhile. Called by the shell with every event of a picture window and by the menu commands that
// choose a tool; portable, and drawn through the canvas alone.
//
// Moves of the mouse change the gesture and what is drawn over the picture, nothing else. The end
// of a gesture is one command through the return point, and one step of the picture.
#pragma once

#include <string>
#include <vector>

#include "editor/draw.h"
#include "editor/hand/label_editor.h"
#include "editor/hand/names.h"
#include "editor/model/records.h"
#include "platform/canvas.h"
#include "platform/input.h"

namespace velora {

// The request mode of the editor: the tool that is chosen (DrawTool), or one of these; 0 for none.
enum HandMode { kModeMove = 16, kModeJoin = 17, kModeLasso = 32 };
extern int greqMode;
// While joining by the tool: the slot of the node that the arrow is to start at.
extern int greqNext;

enum class HandState {
  idle,      // nothing is under way
  pressed,   // a button went down on a node or on the ground and has not been moved
  moving,    // nodes are being dragged
  banding,   // a rectangle is being drawn that selects what lies in it
  joining,   // an arrow is being drawn from a node, or its head is being dragged
  lasso,     // a rectangle is being drawn whose inside becomes a picture of its own
  panning,   // the picture is being dragged through the window
  keyjoin,   // the end of an arrow is being chosen with the keys
  labelling, // a text is being edited in place
  naming,    // a name is being typed that will become a node
};

// What a label editor edits.
enum class EditedText { label, picture_name };

// The gesture under way: one in the whole program. `wi` is the picture it happens in, null when
// there is none; all slots are its.
struct Hand {
  WinInfo *wi = nullptr;
  HandState state = HandState::idle;
  Point from;        // where the button went down
  Point at;          // where the pointer is, in the picture
  bool over = false; // the pointer is over the picture
  int rim = 0;       // idle: the node on whose lower rim it is, where an arrow can be begun
  int grabbed = 0;   // the node or arc that was pressed, 0 for the ground
  int start = 0;     // joining: the node that the arrow starts at
  int rejoined = 0;  // joining: the arc whose head is dragged, 0 for a new one
  int target = 0;    // joining: the node under the pointer, or chosen with the keys
  bool keep_tool = false;
  bool pan_next = false;    // the space key was pressed: the next drag moves the picture
  Modifiers held;           // with the last event
  Point moved;              // moving: how far, snapped
  std::vector<Rect> guides; // moving: the lines of neighbours that it snapped to
  // Labels in place.
  EditedText edited = EditedText::label;
  int labelled = 0;
  std::string label_merge; // the step that this label belongs to
  std::string complaint;   // why the text was refused
  LabelEditor text;        // of labelling and naming
  // Typing names.
  Insertion insertion;
  std::vector<KnownName> matches;
  std::size_t chosen = 0;
  // The missing input that Tab chose, of the node selected; -1 for none.
  int stub = -1;
  int aimed = 0; // what a script means by this event, whatever else lies there; 0 for none
  // A text shown beside a node or an arrow.
  int bubble_slot = 0;
  std::string bubble;
};
extern Hand gHand;

// An event in a picture window; true when the picture took it.
bool hand_mouse(WinInfo *wi, const MouseEvent &event);
bool hand_key(WinInfo *wi, const KeyEvent &event);
// Draws what lies over a picture: stubs, band, the gesture under way, editors, the bubble.
void draw_hand(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas);

// Ends whatever is under way without a trace; nothing is chosen any more.
void escape_hand();
// Ends it because something else begins: a text that is being edited is taken if it can be.
void settle_hand();
// A record goes, or is filled with another picture.
void forget_hand(const WinInfo *wi);

// Chooses a tool or mode for a picture.
void choose_tool(WinInfo *wi, int mode);
// Ctrl+J: with exactly one node selected the end of its arrow is chosen with the keys, otherwise
// the tool that joins.
void begin_join(WinInfo *wi);
// Opens the editor of a node's label, or of the picture's name.
void edit_label(WinInfo *wi, int slot, const std::string &merge = {});
void edit_picture_name(WinInfo *wi);
// Shows a text beside a node or in the middle of an arrow until the next event.
void show_bubble(WinInfo *wi, int slot, const std::string &text);

// What can be done next, in a line for those who have not done it before; empty when idle.
const char *hand_hint(const WinInfo *wi);
// Brings the cursor, and the hint, in line with the mode and what is under the pointer.
CursorShape hand_cursor(const WinInfo *wi);
void show_cursor(const WinInfo *wi);

} // namespace velora
