// Export of a part of the open database: the chosen functions, what they call and the user types
// they use become a database of their own, with their pictures. The files of the open database are
// copied as text, entry by entry, and never changed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "db/removal.h"
#include "editor/model/records.h"

namespace velora {

// What is exported, each name once in order of first addition. The functions include constructors,
// which the call links name like functions.
struct ExportLists {
  NameList functions;
  NameList types;
};

// Adds a name of the language that is neither a built-in nor a system function, and the user types
// of its signature. A signature that cannot be had is warned of and the name is kept.
void FindUserDefined(const std::string &name, NameList &functions, NameList &types);
// Gathers a function and all that it reaches by the call links, and prints both lists.
void gather_for_export(const std::string &name, ExportLists &lists);

// The further declarations without which the lists would not load: constructors that only patterns
// mention, types within the types of signatures, and what those need in turn.
ExportLists needed_for_export(const ExportLists &lists);

// Gathers what is selected in a network picture, offers what is needed besides, asks the new name
// and exports. 1 when a database was built.
int ExportNetNodes(WinInfo *wi);
// The same for functions named one by one and a new name that is given.
int export_names(const std::string &new_name, const std::vector<std::string> &names);
// Asks the new name and builds the database from the open one. 1 when it was built.
int ExportToDataBase(const NameList &functions, const NameList &types);
// Builds `newname`.ddb and `newname`.seg from the files of `oldname`. 1, or 0 after a message; then
// nothing stands under a new name that was not there before, or the pictures are missing.
int CreateExportDataBase(const std::string &oldname, const std::string &newname,
                         const NameList &functions, const NameList &types);

// The sections of that heading ("fdef\n") with the entries whose first word is in `list`, as one.
std::string Copy_DDB_Sections(std::string_view source, std::string_view heading,
                              const NameList &list);
// The pictures whose name is in either list, with the end mark.
std::string Copy_SEGS_Pictures(std::string_view source, const NameList &types,
                               const NameList &functions);

} // namespace velora
