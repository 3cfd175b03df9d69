// Components: the pictures that are stored for a function, a data type or the network, numbered
// from 0 in the order of the list, and what ties them to the clauses of the code. A picture and its
// clause are stored together: nothing here stores a picture whose translation failed. Called by the
// save actions and the removal of the shell and by the terminal's commands.
#pragma once

#include <string>
#include <vector>

#include "core/trees.h"
#include "editor/translate.h"

namespace velora {

// The stored records of a name, in list order.
std::vector<WinInfo *> stored_components(const std::string &name);

// Declares the function of a picture from its inputs and its result. 1, and the picture is clean,
// or 0 after a message.
int SaveNewDeclaration(WinInfo *wi);
// Translates a picture (but not a network) and stores it under the next number of its name. 1 or 0.
int SaveNewComponent(WinInfo *wi);
// Translates a picture and stores it over the component that it shows; `newfdec` 1 declares the
// function anew. A clause that only the old picture stood for is a question. 1 or 0.
int ReplaceComponent(WinInfo *wi, int newfdec);
// Takes the component that a picture shows out of the stored ones and renumbers the others. Answers
// how many of them stood before it; 0 with a beep when there was none.
int RemoveComponent(const WinInfo *wi);
// Takes all components of the picture's name out; answers how many there were.
int RemoveAllComponents(const WinInfo *wi);

// The left side that a picture's clause has: 1 and `lhs`, -1 when inputs or types cannot be had.
int MakeLHS(const WinInfo *wi, std::string &lhs);
// 1 when the function has a clause with the left side of a picture, or with that text.
int ExistOrvek(const WinInfo *wi);
int exists_clause(const std::string &lhs);
// Removes the clause with the left side of a picture; 1 when it is gone.
int DenyExtension(const WinInfo *wi);
int deny_clause(const std::string &lhs);
// Parses a text as a query and hangs its copy on Query_root; 1, or 0 after a message.
int MakeQuery(const std::string &text);

// Compares the clauses of a function with its stored pictures: 0 when they are as many, -1 or 1
// with a warning when there are more clauses or more pictures.
int CheckCmpntsEqualFdefs(const WinInfo *wi);
int clause_count(const std::string &name);

// Draws the starting picture of a declared function without clauses into a cleared record: its
// result and its inputs. 1; 0 when the function is no such one, and a library function is described
// in the console.
int draw_declaration(const std::string &name, WinInfo *wi);

// The effects of Redefine Function: the function's symbol goes with its clauses, and the picture is
// replaced with a declaration of its own; the clauses of the function's other pictures come back as
// far as they fit. When the translation fails everything is as it was. 1 or 0.
int redefine_function(WinInfo *wi);

} // namespace velora
