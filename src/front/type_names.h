// Types and names as texts: what labels of pictures, rows of links and lists of exports say of
// types, held against the symbol table. Used by the database, the network and the editor, which
// know types by their labels.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/records.h"

namespace velora {

using TypeNames = std::vector<std::string>;

// The declared types of a function's or constructor's arguments, in order, as they are printed:
// function types and applied types that stand within another in brackets. 1 and `inpars` filled;
// 0, with `inpars` empty, when the name is no symbol or one without a signature. With `silent` 0 a
// failure is told as "Unable to find input types of %s\n".
int get_intypes_of(const std::string &name, TypeNames &inpars, int silent);
// The declared result type; 1 and `outpar` set, or 0 without a message.
int get_outtype_of(const std::string &name, std::string &outpar);
// Splits the text of a signature at the arrows outside brackets: its argument types and its result.
TypeNames split_signature(std::string_view text);
// True when a declaration "NAME ::= T0 -> RESULT" gives the signature that the symbol has already.
bool same_signature(const symbol *sym, const std::string &declaration);
// The signature of a function or constructor, null for any other symbol and for none.
const top_node *signature_of(const symbol *sym);

// The head word of a type: "list" for "list int" and "(list int)".
std::string GetBaseType(std::string_view type);
// The text without the blanks and brackets around it that change nothing: "list int" for
// " (list int)".
std::string_view bare_type(std::string_view type);
// 1 for a type that agrees with any other: one whose base is `sym`, and `?` with a number.
int VariableType(std::string_view type);
// 1 when a text reads as a type: every word is a basic type, a variable or a declared type, and
// each declared type has its arguments. Nothing is reported.
int TypeIsKnown(const std::string &type);

// Compares two labels without regard to blanks, line ends and round brackets: 0 when they are
// equal, 1 when they differ. A missing label differs from everything, from a missing one too.
int CompareParameterStrings(const char *a, const char *b);
inline int CompareParameterStrings(const std::string &a, const std::string &b) {
  return CompareParameterStrings(a.c_str(), b.c_str());
}

// Whether a text reads back as one name. What does not, such as "two words", "#5" or "fdef", can be
// entered in no database file, so nothing may be declared under it.
bool reads_as_name(const std::string &text);
// 1 when a picture of that name can be declared; 0 after a message that says what is wrong.
int ValidName(const std::string &name);

} // namespace velora
