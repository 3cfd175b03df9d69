// The two files of a database, text and pictures, as one thing: read so that both belong together,
// and replaced so that after a failure or a crash both are old or both are new.
#pragma once

#include <string>

#include "editor/model/seg_file.h"

namespace velora {

// What stands on the disk under one base name.
struct PairTexts {
  int text_error = 0; // errno of reading the text; 0 when it was read
  std::string text;
  PicturesFound pictures_kind = PicturesFound::missing;
  std::string pictures_name; // of the segment file or the variant of its name that was read
  std::string pictures;
};

// Completes a save of `base` that was cut off, and says so; asks when that is not possible. False
// when the user would rather not go on. Called before files of a database are read or replaced.
bool settle_cut_off_save(const std::string &base);

// Reads both files; waits while another program replaces them. False, after a message, when that
// takes too long or an unfinished save is not to be passed over.
bool read_pair(const std::string &base, PairTexts &texts);

// Saves both files. 1, or 0 after the message of the file that failed and "Unable to save graphs".
// The caller has asked whatever has to be asked.
int save_pair(const std::string &base);

} // namespace velora
