// The segment file: all pictures of a database in one text file beside it.
//
// A picture is a line "name cmpnt seg_ct wtype txtsze" and its segments in slot order; a segment is
// a line "label segnum type style lx ly ux uy", a line of back links "B3B7" and a line of forward
// links "F4"; "~~~~~~" stands for an empty slot and "$$$$" ends the file. A line of a picture or
// segment with an annotation ends in the number of lines of text that follow it. Blanks of names
// and labels are written "~". Called by the database layer, which saves and opens both files.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "editor/model/records.h"
#include "platform/file_set.h"

namespace velora {

// The longest name or label that the file can carry.
inline constexpr std::size_t kLongestLabel = 80;

// Writes all pictures whose `saved` is set; 1, or 0 after a message. Nothing on disk changes unless
// the whole file has been written. A file that another program changed since it was read is only
// replaced after a question, and one that could not be read whole is first copied aside.
int SaveAll(const std::string &fname);

// Reads the pictures of `filename`, or of a variant of its name, into the list; makes an empty file
// when there is none. 1, or 0 after a message. A damaged file is reported line by line; what can be
// read is kept.
int RestoreAll(const std::string &filename);

// Reads the pictures of a segment file's text quietly into records of their own, beside the list:
// what can be made out of it. Abandons the command when memory is short.
std::vector<std::unique_ptr<WinInfo>> pictures_of_text(std::string_view text);
// The two halves of SaveAll, for who replaces the pictures together with the text.
// Asks what has to be asked and keeps aside what would be lost; false when nothing may be saved.
bool may_save_pictures(const std::string &fname);
// True when the file holds what this program read, wrote or was told to overwrite.
bool is_as_left(const std::string &fname);
// All pictures whose `saved` is set, as the file has them.
std::string pictures_text();
// Every picture, shown and unfinished ones too, as it stands, with its empty slots.
std::string work_pictures_text();
// Tells how the replacement of `fname` by `text` ended. 1 or 0.
int report_pictures(const std::string &fname, const std::string &text, const SetOutcome &end);

// The two halves of RestoreAll.
enum class PicturesFound { whole, missing, unreadable };
// Reads the segment file, or the variant of its name that stands, into `text`; `found` is the name
// of the one that was looked at last. What stands but cannot be read is told.
PicturesFound read_pictures(const std::string &filename, std::string &found, std::string &text);
// Takes the pictures of a text that was read from `found` into the list; 1, or 0 after a message.
int restore_pictures(const std::string &found, const std::string &text);

// Creates `name`.seg as an empty segment file; 1 or 0.
int fdb_create_segs(const std::string &name);

// Makes every picture named like a constructor or type a constructors picture.
void OrvekVeloraConsistencyCheck();

// A picture as it stands in the file, with every slot that it has.
std::string picture_block(const WinInfo *wi);

// Ends a picture's or segment's line, with the count and the lines of its annotation if any.
void SaveAnnotation(std::string &out, std::string_view annot);
// Number of lines of an annotation, a final line end not counted.
int annotation_lines(std::string_view annot);
// Joins the next `lines` lines, from line `at` on, each with its line end; moves `at` past them.
std::string RestoreAnnotation(const std::vector<std::string_view> &text, std::size_t &at,
                              int lines);
// Codes (whichway 1) or decodes (2) "<", ">" and line ends as the bytes 1, 2 and 3.
std::string AdjustAnnotation(std::string annot, int whichway);

// A name or label as the file holds it, and back.
std::string label_to_file(std::string_view label);
std::string label_from_file(std::string_view text);

// For the reader and the writer: notes what a file holds now, and whether it could not be read
// whole.
void note_segment_file(const std::string &fname, std::string_view text);
// Notes that none of it was read: what stands or appears there is asked about before a save.
void note_unread_segment_file(const std::string &fname);
void note_damaged_file(const std::string &fname, bool damaged);
// Non-zero after a reading that ended nowhere: the next file saved over is kept aside, whichever.
extern int gReadingAbandoned;

// Forgets all files noted; after a reset, and between tests.
void forget_segment_files();

} // namespace velora
