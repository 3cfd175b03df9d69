// Comparing text and pictures. A built picture is first made what it will be when it is read back,
// labels and all; then it is translated quietly, and both meanings are put into their common form.
#include "editor/guard.h"

#include <algorithm>
#include <map>
#include <set>

#include "core/needs.h"
#include "core/print.h"
#include "core/symbols.h"
#include "editor/clause_form.h"
#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/tidy.h"
#include "editor/translate.h"
#include "editor/type_terms.h"
#include "front/type_names.h"
#include "platform/response.h"

namespace velora {

namespace {

// Declarations in their common form: their order does not count.
std::set<std::string> declaration_forms(const std::vector<std::string> &declarations) {
  std::set<std::string> forms;
  for (const std::string &declaration : declarations)
    forms.insert(declaration_form(declaration));
  return forms;
}

std::string joined(const std::vector<std::string> &parts, const char *between) {
  std::string text;
  for (const std::string &part : parts)
    text += (text.empty() ? "" : between) + part;
  return text;
}

// "C ::= (a) -> (b) -> T" of an entry of the builder's list.
std::string declaration_text(const jsymbol &entry) {
  std::string text = entry.name + " ::= ";
  for (std::size_t i = 1; i < entry.cfdec.size(); ++i)
    text += entry.cfdec[i].param + " -> ";
  return text + entry.cfdec.front().param;
}

// The type's declaration and those of all constructors whose result it is, alone or applied.
std::vector<std::string> declarations_in_text(const Build &build, const jsymbol &type) {
  std::vector<std::string> texts{type.tdec.text};
  const auto found = build.constructors.find(type.name);
  if (found != build.constructors.end())
    for (const jsymbol *constructor : found->second)
      texts.push_back(declaration_text(*constructor));
  return texts;
}

std::string remark_of(const BuiltPicture &picture, const char *what, const std::string &text,
                      const PictureMeaning &meaning) {
  std::string shown = meaning.text;
  if (shown.empty()) {
    shown = "(" + meaning.why;
    while (shown.ends_with('\n'))
      shown.pop_back();
    shown += ")";
  }
  return format_text("%s %d: %s\n  text     %s\n  picture  %s\n", picture.name.c_str(),
                     picture.component, what, text.c_str(), shown.c_str());
}

} // namespace

std::string declaration_form(const std::string &name, const std::vector<std::string> &types) {
  std::string form = name;
  for (const std::string &type : types)
    form += '\n' + type_text(read_type(type));
  return form;
}

std::string declaration_form(const std::string &declaration) {
  const std::size_t sign = declaration.find(" ::=");
  if (sign == std::string::npos)
    return declaration;
  return declaration_form(declaration.substr(0, sign),
                          split_signature(std::string_view(declaration).substr(sign + 4)));
}

std::vector<std::string> formals_of(const jsymbol &declaration) {
  std::vector<std::string> formals;
  for (std::size_t i = 1; i < declaration.cfdec.size(); ++i)
    formals.push_back(declaration.cfdec[i].param);
  return formals;
}

PictureMeaning meaning_of_function(const WinInfo *wi, const std::vector<std::string> &formals) {
  PictureMeaning meaning;
  std::string lhs;
  std::string rhs;
  if (picture_clause(wi, formals, lhs, rhs, meaning.why))
    meaning.text = lhs + " ::= " + rhs;
  return meaning;
}

PictureMeaning meaning_of_type(const WinInfo *wi, std::vector<std::string> &declarations) {
  PictureMeaning meaning;
  if (picture_structures(wi, declarations, meaning.why))
    meaning.text = joined(declarations, "; ");
  return meaning;
}

void read_back(const BuiltPicture &picture, WinInfo &wi) {
  wi.name = label_from_file(label_to_file(picture.name));
  wi.cmpnt = picture.component;
  wi.txtsze = picture.text_size;
  wi.seg_ct = static_cast<int>(picture.segments.size());
  wi.wtype = picture.source->stype == kTokTdec ? kConstructorsPicture : kFunctionPicture;
  if (make_all_extra_segment(&wi) == 0)
    error_exit("Alloc failed");
  for (const graph_block &block : picture.segments) {
    Segm *seg = wi.seg_ments[block.number];
    seg->type = block.shape;
    seg->segnum = block.number;
    seg->style = block.line;
    seg->lx = block.lx;
    seg->ly = block.ly;
    seg->ux = block.ux;
    seg->uy = block.uy;
    seg->label = label_from_file(label_to_file(block.label));
    for (auto number = block.backward.rbegin(); number != block.backward.rend(); ++number)
      seg->segb_ptr.push_back(wi.seg_ments[*number]);
    for (auto number = block.forward.rbegin(); number != block.forward.rend(); ++number)
      seg->segf_ptr.push_back(wi.seg_ments[*number]);
  }
}

bool built_truly(Build &build, const BuiltPicture &picture, std::string &remark) {
  WinInfo wi;
  read_back(picture, wi);
  if (picture.source->stype == kTokTdec) {
    std::vector<std::string> shown;
    const std::vector<std::string> text = declarations_in_text(build, *picture.source);
    const PictureMeaning meaning = meaning_of_type(&wi, shown);
    if (!meaning.text.empty() && declaration_forms(text) == declaration_forms(shown))
      return true;
    remark = remark_of(picture, "the picture declares something else than the text",
                       joined(text, "; "), meaning);
    return false;
  }
  const jsymbol *declaration = declaration_of(build, picture.name);
  const std::string &text = picture.source->fdef.text;
  const PictureMeaning meaning = meaning_of_function(&wi, formals_of(*declaration));
  if (!meaning.text.empty() && same_clause(text, meaning.text))
    return true;
  remark = remark_of(picture, "the picture means something else than the text", text, meaning);
  return false;
}

const char *name_of(ComponentState state) {
  switch (state) {
  case ComponentState::same:
    return "same";
  case ComponentState::picture_newer:
    return "picture newer";
  case ComponentState::text_newer:
    return "text newer";
  case ComponentState::no_picture:
    return "no picture";
  }
  return "";
}

} // namespace velora
