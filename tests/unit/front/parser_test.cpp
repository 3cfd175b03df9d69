// Files, sections, the console, and the notes beside errors.
#include "core/events.h"
#include "shell/return_point.h"
#include "unit/front/front_kit.h"

namespace velora {
namespace {

using front_test::console_lines;
using front_test::FrontTest;
using front_test::prompts;
using front_test::refill;

class Files : public FrontTest {
protected:
  // Loads a file of this text; answers what the console showed, without the file's name.
  std::string load(const std::string &text, const std::string &name = "loaded.q") {
    path_ = file(name, text);
    console().text.clear();
    EXPECT_EQ(load_file(path_, 0), 1);
    std::string shown = console().text;
    for (std::size_t at = shown.find(path_); at != std::string::npos; at = shown.find(path_))
      shown.replace(at, path_.size(), "F");
    return shown;
  }
  std::string path_;
};

TEST_F(Files, SectionsDeclareAndDefine) {
  gProgressDots = 1;
  EXPECT_EQ(load("tdec\nday ::= enum;\n;\ncdec Mon ::= day; Tue ::= day;;\n"
                 "fdec a ::= day -> int; ;\nfdef a Mon ::= #1; a Tue ::= #2;;\na Tue;\n"),
            "Loading: F. . . . . . . .#2 Loaded.\n");
  gProgressDots = 0;
  EXPECT_EQ(messages(), "");
  EXPECT_EQ(sym("Tue")->stype, kConstructor);
}

TEST_F(Files, TheEndClosesASectionAndAnEmptyStatementTheFile) {
  load("fdec a ::= int");
  EXPECT_NE(sym("a"), nullptr);
  load("fdec b ::= int;;; fdec c ::= int;;");
  EXPECT_NE(sym("b"), nullptr);
  EXPECT_EQ(sym("c"), nullptr) << "the second semicolon ends the reading";
  EXPECT_EQ(messages(), "");
}

TEST_F(Files, ABadStatementIsSkippedAlone) {
  load("cdec\nA ::= nothing here;\nAll ::= list int;\n;\nf bad bad; f #1;\nfdec a ::= int;;\n");
  EXPECT_EQ(sym("A"), nullptr);
  EXPECT_NE(sym("All"), nullptr);
  EXPECT_NE(sym("a"), nullptr);
  EXPECT_EQ(gParseErrors, 2) << messages();
}

TEST_F(Files, ClausesReportWhatTheyMiss) {
  const char *table[][2] = {
      {"#1 ::= #1", "Error (#1):  #1 found when { function name } expected\n"},
      {"+ ?0 ::= #1", "Error (built-in):  + found when { user-defined function name } expected\n"},
      {"nil ::= #1", "Error (nil):  nil found when { declared function name } expected\n"},
      {"zz ::= #1", "Error (zz):  zz found when { declared function name } expected\n"},
      {"f int ::= #1", "Error (f):  int found when { decent lhs } expected\n"},
      {"f ?0 #1", "Error (f):  ; found when { ::= } expected\n"},
      {"f ?0 ::= ", "Error (f):  ; found when { decent rhs } expected\n"},
      {"f ?0 ::= #1 ::= #2", "Error ():  ::= found when { semicolon } expected\n"},
  };
  for (const auto &row : table) {
    EXPECT_EQ(cint_fdef(row[0]), 0) << row[0];
    EXPECT_EQ(messages(), row[1]);
  }
  EXPECT_EQ(cint_fdef("f ?0 ::= g lambda ?0"), 0);
  EXPECT_EQ(messages().rfind("Error: lambda symbol found in MIDDLE of expr", 0), 0u);
  EXPECT_EQ(sym("f")->b.fc->defs, nullptr);
}

TEST_F(Files, FilesLoadFiles) {
  const std::string inner = file("inner.q", "fdec a ::= int;;\n; fdec ignored ::= int;;\n");
  load("lload \"" + inner + "\" fdec lost ::= int;;\nfdec b ::= int;;\n");
  EXPECT_NE(sym("a"), nullptr);
  EXPECT_NE(sym("b"), nullptr);
  EXPECT_EQ(sym("lost"), nullptr) << "the rest of the line is not read";
  EXPECT_EQ(sym("ignored"), nullptr);
  load("lload \"/no/such/file\" ;\nfdec c ::= int;;\n");
  EXPECT_EQ(messages(), "Can't read from file /no/such/file");
  EXPECT_EQ(sym("c"), nullptr) << "the semicolon after a missing file ends the reading";
  load("lload (;\nfdec d ::= int;;\n");
  EXPECT_NE(sym("d"), nullptr);
  EXPECT_NE(messages().find("{ string or symbol file name }"), std::string::npos);
}

TEST_F(Files, WhatCannotBeReadIsRefused) {
  EXPECT_EQ(load_file(::testing::TempDir(), 0), 0);
  EXPECT_EQ(messages(), "Can't read from file " + ::testing::TempDir());
  EXPECT_EQ(load_file("/no/such/file", 1), 0);
  EXPECT_EQ(messages(), "");
  const std::string path = ::testing::TempDir() + "/self.q";
  load("lload \"" + path + "\"\nfdec a ::= int;;\n", "self.q");
  EXPECT_NE(messages().find("too deeply"), std::string::npos);
  EXPECT_NE(sym("a"), nullptr) << "loading goes on";
}

TEST_F(Files, AStatementFromAQueryLeavesTheFile) {
  load("assert g #1 #2; f #1\n;\ng #1;\nfdec a ::= int;;\n");
  EXPECT_NE(sym("a"), nullptr);
}

TEST_F(Files, NotesShowThePlace) {
  load("\n\tf (zzz #1);\n", "place.q");
  const std::string text = notes();
  EXPECT_NE(text.find("note: " + path_ + ":2:5    | "), std::string::npos) << text;
  EXPECT_NE(text.find("    | \tf (zzz #1);    | \t   ^"), std::string::npos) << text;
  load("f \"é\" zzz;\n", "bytes.q");
  EXPECT_NE(notes().find(":1:7    | f \"é\" zzz;    |       ^"), std::string::npos);
  load(std::string(5000, ' ') + "zzz" + std::string(5000, ' ') + ";\n", "long.q");
  const std::string excerpt = notes();
  EXPECT_LT(excerpt.size(), 600u);
  EXPECT_NE(excerpt.find(":1:5001    | ..."), std::string::npos) << excerpt;
}

TEST_F(Files, NotesHelp) {
  const char *table[][2] = {{"f 12", "#12"},
                            {"f 2.5", "#r2.5"},
                            {"1 + 2", "(+ #1 #2)"},
                            {"?0 + zzz", "(+ #1 #2)"},
                            {"hedd nil", "head"}};
  for (const auto &row : table) {
    EXPECT_EQ(cint_query(row[0]), 0);
    EXPECT_NE(notes().find(row[1]), std::string::npos) << row[0];
  }
  gNotes = 0;
  EXPECT_EQ(cint_query("f 12"), 0);
  EXPECT_EQ(notes(), "");
  gNotes = 1;
}

class ConsoleLines : public FrontTest {
protected:
  void SetUp() override {
    FrontTest::SetUp();
    pp_refill = refill;
    gConsolePrompt = 0;
  }
  // Runs commands until the end of input; answers their results.
  static std::string run(std::deque<std::string> lines) {
    console_lines = std::move(lines);
    std::string results;
    for (int done = 0; (done = p_console_command()) >= 0;)
      results += std::to_string(done);
    return results;
  }
};

TEST_F(ConsoleLines, CommandsOverAndWithinLines) {
  EXPECT_EQ(run({"+ #1", "#2; + #3 #4; ;", "", "+ #5 #6"}), "1111");
  EXPECT_EQ(console().text, "#3#7#11");
  const std::vector<std::string> expected{"QUERY>", "~", "QUERY>", "QUERY>", "~", "QUERY>"};
  EXPECT_EQ(prompts, expected);
}

TEST_F(ConsoleLines, SectionsPrompt) {
  EXPECT_EQ(run({"fdec", "a ::=", "int;", ";", "fdef a ::= #4;", ";", "a;"}), "111");
  const std::vector<std::string> expected{"QUERY>", "FDEC>", "~",      "FDEC>",
                                          "QUERY>", "FDEF>", "QUERY>", "QUERY>"};
  EXPECT_EQ(prompts, expected);
  EXPECT_EQ(console().text, "#4");
}

TEST_F(ConsoleLines, FailuresSkipToTheSemicolon) {
  EXPECT_EQ(run({"zzz #1 #2", "#3; + #1 #1;"}), "01");
  EXPECT_EQ(console().text, "#2");
  EXPECT_EQ(run({"+ #1) #2; + #2 #2;"}), "01");
}

TEST_F(ConsoleLines, UnmatchedBracketsAreRefused) {
  const char *table[][2] = {{"+ #1 (+ #2 #3;", "Unmatched round brackets\n"},
                            {"+ #1 #2);", "Unmatched round brackets\n"},
                            {"[#1 #2;", "Unmatched square brackets\n"},
                            {"#1];", "Unmatched square brackets\n"},
                            {"\"abc", "Unmatched double quotes\n"}};
  for (const auto &row : table) {
    EXPECT_EQ(run({row[0], ";"}).front(), '0') << row[0];
    EXPECT_EQ(messages(), row[1]);
    EXPECT_STREQ(query_fault(row[0]), row[1]);
  }
  EXPECT_EQ(run({"'('; \"[\";"}), "11");
  EXPECT_EQ(query_fault("f '(' \"[\" [(#1)]"), nullptr);
}

TEST_F(ConsoleLines, TheQueryTextIsKept) {
  run({"lload \"/no/such/file\"; + /* three */ #1", "\"a;b\" /* ; */ ;"});
  EXPECT_EQ(gQuery, "+   #1\n\"a;b\"   ");
  run({"fdec a ::= int;;"});
  EXPECT_EQ(gQuery, "");
}

TEST_F(ConsoleLines, AStatementOrFileLeavesTheRestOfTheLine) {
  const std::string path = file("part.q", "fdec a ::= int;;\n");
  EXPECT_EQ(run({"assert g #1 #2; g #1; lload \"" + path + "\"; + #1 #1;"}), "1111");
  EXPECT_NE(console().text.find("#2"), std::string::npos);
  EXPECT_NE(console().text.find("Loaded.\n#2"), std::string::npos);
  EXPECT_NE(sym("a"), nullptr);
}

TEST_F(ConsoleLines, AnAbandonedStatementIsLeftBehind) {
  console_lines = {"+ #1 #2 zzz", "; + #1 #1;"};
  pp_get_token();
  pp_get_token();
  pp_reset();
  EXPECT_EQ(run(console_lines), "1") << "what was open is skipped first";
  EXPECT_EQ(console().text, "#2");
  console_lines = {"+ #1 #2 zzz"};
  pp_get_token();
  pp_reset(true);
  EXPECT_EQ(run({"+ #2 #2;"}), "1");
}

TEST_F(ConsoleLines, AnAbandonedLoadClosesItsFilesAndLeavesTheConsole) {
  const std::string inner = file("inner.q", "fdec a ::= int; b ::= int;;\n");
  const std::string outer = file("outer.q", "lload \"" + inner + "\"\nfdec c ::= int;;\n");
  const auto times = [](const std::string &text, const std::string &part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
      ++count;
    return count;
  };
  int met = 0;
  for (int checks = 0; checks < 8; ++checks) {
    console_lines = {"lload \"" + outer + "\" ; + #1 #1;", "+ #2 #2;"};
    console().interrupt_after = 0;
    console().text.clear();
    event_countdown = checks; // so many checks pass before one looks at the console
    for (int done = 0; done >= 0;)
      run_command([&] { return done = p_console_command(); });
    EXPECT_EQ(pp_file, nullptr);
    EXPECT_NE(console().text.find("Query interrupted\n"), std::string::npos) << checks;
    EXPECT_EQ(console().text.find("#2"), std::string::npos) << "the rest of the line goes";
    EXPECT_TRUE(console().text.ends_with("#4")) << console().text;
    const bool cut_off = times(console().text, "Loading: ") > times(console().text, " Loaded.");
    EXPECT_EQ(times(console().notes, "note: the loading of "), cut_off ? 1 : 0) << checks;
    met += cut_off ? 1 : 0;
    console().notes.clear();
  }
  EXPECT_GT(met, 0);
}

TEST_F(ConsoleLines, AnAbandonedLoadTellsItsPlace) {
  const std::string inner = file("inner.q", "#1 ;\nendless #0 ;\n");
  const std::string outer = file("outer.q", "#2 ;\nlload \"" + inner + "\"\n#3 ;\n");
  run({"fdec endless ::= int -> int;;"});
  EXPECT_EQ(cint_fdef("endless ?0 ::= endless (% (+ ?0 #1) #7)"), 1);
  console_lines = {"lload \"" + outer + "\""};
  console().interrupt_after = 0;
  event_countdown = 1000;
  run_command(p_console_command);
  EXPECT_NE(console().notes.find("note: the loading of " + inner +
                                 " ended at line 2; what was read before stays"),
            std::string::npos)
      << console().notes;
}

TEST_F(ConsoleLines, AnAbandonedQueryLeavesTheNextOneOfItsLine) {
  EXPECT_EQ(cint_fdef("f ?0 ::= + #1 (f ?0)"), 1);
  console_lines = {"f #1; + #1 #1;"};
  std::string ends;
  for (int done = 0; done >= 0;)
    ends +=
        std::to_string(static_cast<int>(run_command([&] { return done = p_console_command(); })));
  EXPECT_NE(console().text.find("Too many nested calls within the Query\n#2"), std::string::npos)
      << console().text;
  EXPECT_EQ(ends.substr(0, 2), "10");
}

TEST_F(ConsoleLines, Listings) {
  EXPECT_EQ(run({"lambda f;"}), "1");
  EXPECT_NE(console().text.find("*** f : FUNCTION arity:1"), std::string::npos);
  EXPECT_EQ(run({"lambda #5; lambda f g;"}), "00");
  EXPECT_EQ(run({"lambda zzzz;"}), "1");
}

TEST_F(ConsoleLines, AQueryMayRunFromAString) {
  EXPECT_EQ(cint_query("+ #1 #2"), 1);
  EXPECT_EQ(console().text, "#3");
  EXPECT_EQ(gQuery, "+ #1 #2");
  EXPECT_EQ(greqQuery, 1);
  gConsolePrompt = 1;
  EXPECT_EQ(cint_query("zzz"), 0);
  EXPECT_EQ(console().text, "#3\nQUERY> ");
  gConsolePrompt = 0;
}

} // namespace
} // namespace velora
