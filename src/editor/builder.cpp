// The building of a picture file, step by step: read the text, make pictures by rule, let boxes
// keep their places, tidy on request, tell where text and picture differ, write.
#include "editor/builder.h"

#include <cstdio>
#include <set>

#include "core/events.h"
#include "core/symbols.h"
#include "db/f_dbops.h"
#include "db/needs.h"
#include "db/vel_util.h"
#include "editor/builder_records.h"
#include "editor/compound.h"
#include "editor/guard.h"
#include "editor/model/needs.h"
#include "editor/model/seg_file.h"
#include "front/source.h"
#include "platform/file_set.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr const char *kEndMark = "$$$$";

std::string text_file(const std::string &name) {
  return name + File_ext;
}

std::string picture_file(const std::string &name) {
  return name + ".seg";
}

// A name or label that a segment file cannot carry.
bool too_long(const std::string &text) {
  return label_to_file(text).size() > kLongestLabel;
}

// Why a picture cannot stand in a file; empty when it can.
std::string hindrance(const BuiltPicture &picture) {
  if (picture.name.starts_with(kEndMark))
    return "its name would end the pictures of a file";
  if (too_long(picture.name))
    return format_text("its name is longer than %zu characters", kLongestLabel);
  for (const graph_block &segment : picture.segments)
    if (too_long(segment.label))
      return format_text("%s is longer than %zu characters", segment.label.c_str(), kLongestLabel);
  return {};
}

// Leaves out what the file could not carry, and says so: the others must stay readable.
void drop_unwritable(Build &build) {
  std::erase_if(build.pictures, [](const BuiltPicture &picture) {
    const std::string why = hindrance(picture);
    if (!why.empty())
      BeepMsgef(0, "%s %d: no picture is made, %s\n", picture.name.c_str(), picture.component,
                why.c_str());
    return !why.empty();
  });
}

int write_file(const std::string &file, const Build &build) {
  std::string text;
  std::string reason;
  touch_file(file);
  for (const BuiltPicture &picture : build.pictures)
    text += write_picture(picture);
  if (!write_with_backup(file, text + kEndMark, reason)) {
    orvek_errorf("Can't write %s\n", reason.c_str());
    return 0;
  }
  setVeloraEye(file);
  DisplayResponsef("%s created.\n", file.c_str());
  return 1;
}

// True for a constructor or function that the language knows.
bool is_loaded(const std::string &name) {
  const symbol *known = find_symbol(name.c_str(), name.size());
  return known != nullptr && (known->stype & (kFunctionBit | kConstructorBit)) != 0;
}

// Tells when clauses use names that the text declares and the language does not know: these are
// drawn as values.
void tell_unloaded(const Build &build) {
  std::set<std::string> declared;
  for (const jsymbol &entry : build.jSymbol_table)
    if ((entry.stype == kTokCdec || entry.stype == kTokFdec) && !is_loaded(entry.name))
      declared.insert(entry.name);
  std::set<std::string> used;
  for (const fdef_block &item : build.items)
    if (!item.gathered && item.item_type == kTokName && declared.contains(item.name))
      used.insert(item.name);
  if (!used.empty())
    BeepMsgef(0, "The text is not loaded: %zu of its names, such as %s, are drawn as values\n",
              used.size(), used.begin()->c_str());
}

void make_pictures(Build &build) {
  output_types(build);
  for (jsymbol &entry : build.jSymbol_table)
    if (entry.stype == kTokFdef)
      build_function(build, entry);
  drop_unwritable(build);
}

// Lays out what needs it, or offers to.
void offer_tidying(Build &build, Tidying tidying) {
  constexpr int kYes = 1;
  const int untidy = tidying == Tidying::always ? 0 : count_untidy(build);
  const std::string count = untidy == 1 ? "1 picture has" : format_text("%d pictures have", untidy);
  if (untidy > 0 && tidying == Tidying::ask &&
      PromptUser(count + " boxes on each other, among the arguments or out of order. Tidy?",
                 {"Yes", "No", "Cancel"}) == kYes)
    tidying = Tidying::always;
  if (tidying == Tidying::always)
    tidy_pictures(build);
  else if (untidy > 0)
    show_note(
        "note: " + count +
        " boxes on each other, among the arguments or out of order; \":build FILE NAME tidy\" "
        "lays them out anew");
}

// Tells each picture that means something else than its text.
void tell_differences(Build &build) {
  for (const BuiltPicture &picture : build.pictures) {
    CheckForUserEvents(0);
    std::string remark;
    if (!built_truly(build, picture, remark))
      BeepMsge(remark, 0);
  }
}

// Reads a text that stands in `file` and makes the pictures of NAME from it; 1 or 0. Writes
// nothing.
int make_build(const std::string &name, const std::string &file, const std::string &text,
               Tidying tidying, Build &build) {
  std::string old_pictures;
  read_whole_file(picture_file(name), old_pictures);
  {
    const FileSource source(text, file);
    if (read_sections(build) == 0)
      return 0;
  }
  DisplayResponse("Finished parsing source file, building segments...\n");
  tell_unloaded(build);
  make_pictures(build);
  keep_places(build, pictures_of_text(old_pictures));
  offer_tidying(build, tidying);
  tell_differences(build);
  return 1;
}

} // namespace

int build_segments(const std::string &name, Tidying tidying) {
  const std::string file = text_file(name);
  std::string text;
  if (!read_whole_file(file, text)) {
    DisplayResponsef("Cannot open %s\n", file.c_str());
    return 0;
  }
  Build build;
  return make_build(name, file, text, tidying, build) != 0 ? write_file(picture_file(name), build)
                                                           : 0;
}

int build_from_file(const std::string &name, const std::string &file, const std::string &text,
                    Tidying tidying) {
  Build build;
  if (make_build(name, file, text, tidying, build) == 0 || save_code(name, text) == 0)
    return 0;
  return write_file(picture_file(name), build);
}

int save_code(const std::string &name, const std::string &text) {
  std::string reason;
  touch_file(text_file(name));
  if (!write_with_backup(text_file(name), text, reason)) {
    orvek_errorf("Cannot open %s for write\n", text_file(name).c_str());
    show_note("note: " + reason);
    return 0;
  }
  DisplayResponsef("Orvek code saved in file %s\n", text_file(name).c_str());
  return 1;
}

bool may_build_over(const std::string &name, bool in_place) {
  const bool stands = name == gDDB_basename || file_exists(picture_file(name)) ||
                      (!in_place && file_exists(text_file(name)));
  constexpr int kYes = 1;
  return !stands || PromptUser(format_text("%s exists. Build over it?", name.c_str()),
                               {"Yes", "No", "Cancel"}) == kYes;
}

void ddb_to_segs() {
  std::string name;
  if (BackupOrvekCode(name) != 0)
    build_segments(name, Tidying::ask);
}

} // namespace velora
