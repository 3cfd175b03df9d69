// What the database tests share: an empty folder to work in, a recording console and desktop, and a
// symbol table without user symbols before and after.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "core/symbols.h"
#include "core/text.h"
#include "db/commit.h"
#include "db/f_dbops.h"
#include "db/removal.h"
#include "db/vel_dbop.h"
#include "db/vel_util.h"
#include "editor/model/seg_file.h"
#include "editor/model/wininfo.h"
#include "front/parser.h"
#include "kit/recorder.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "platform/trusted_sums.h"

namespace velora::db_test {

namespace fs = std::filesystem;

class DbTest : public testing::Test {
protected:
  void SetUp() override {
    old_dir_ = fs::current_path();
    folder_ = fs::temp_directory_path() / ("velora_db_" + std::to_string(getpid()));
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    fs::current_path(folder_);
    gSyncFiles = 0;
    forget_state();
    setenv("XDG_STATE_HOME", state_folder_name().c_str(), 1);
    reset();
  }
  void TearDown() override {
    gFileFault = nullptr;
    gFileChunk = 65536;
    gSyncFiles = 1;
    gNumDocuments = 0;
    reset();
    fs::current_path(old_dir_);
    fs::remove_all(folder_);
    forget_state();
    unsetenv("XDG_STATE_HOME");
  }
  // The user's own state is not touched; what is trusted stands beside the folder, which holds the
  // database alone.
  [[nodiscard]] std::string state_folder_name() const { return folder_.string() + "_state"; }
  void forget_state() const {
    fs::remove_all(state_folder_name());
    forget_trusted_sums();
  }

  // As after a reset of the program, with nothing changed.
  static void reset() {
    ResetVelora();
    free_retired();
    sweep_texts(~0u);
    gSymbolTableChanged = 0;
    gSegsChanged = 0;
  }
  static void put(const std::string &name, const std::string &text) {
    std::ofstream(name, std::ios::binary) << text;
  }
  static std::string get(const std::string &name) {
    std::string text;
    return read_whole_file(name, text) ? text : "(none)";
  }
  // Reads a text as a file of commands.
  static void load(const std::string &text) {
    put("loaded.fdb", text);
    load_file("loaded.fdb", 0);
    fs::remove("loaded.fdb");
  }
  // Every file of the folder with its contents, but for the lock, which stays and says nothing.
  static std::map<std::string, std::string> files() {
    std::map<std::string, std::string> all;
    for (const auto &entry : fs::directory_iterator("."))
      if (entry.path().extension() != ".lock")
        all[entry.path().filename().string()] = get(entry.path().string());
    return all;
  }
  std::string &said() { return shown_.console.text; }
  kit::RecorderConsole &console() { return shown_.console; }
  kit::RecorderDesktop &desktop() { return shown_.desktop; }
  // How often a question was asked that begins with `start`.
  int questions(const std::string &start) {
    int count = 0;
    for (const std::string &line : console().log)
      count += line.starts_with("ask \"" + start) ? 1 : 0;
    return count;
  }

private:
  kit::Recording shown_;
  fs::path old_dir_;
  fs::path folder_;
};

// A database with every kind of entry: its text as the system writes it.
inline const std::string kSample = "tdec\n"
                                   "\tbox ::= typeop #2 ;\n"
                                   "\ttone ::= nonlex ;\n"
                                   "\tcolour ::= enum ;\n"
                                   ";\n"
                                   "cdec\n"
                                   "\tPack ::= ?0->box ?0 (box int int ) ->int ;\n"
                                   "\tgreen ::= colour ;\n"
                                   "\tred ::= colour ;\n"
                                   ";\n"
                                   "fdec\n"
                                   "\tg ::= int->int->int ;\n"
                                   "\tf ::= colour->(int->str)->int ;\n"
                                   ";\n"
                                   "fdec\n"
                                   "\th #2 ::= real ;\n"
                                   ";\n"
                                   "fdef\n"
                                   "\n"
                                   "  h #r2.500000 'x'  ::=\n"
                                   "      #r-1.250000  ;\n"
                                   "\n"
                                   "  g ?0 #-3  ::=\n"
                                   "      g ?0 (g (h ?0 \"two words\") ?0) ?0 (Pack ?0 green\n"
                                   "       ?0) (lambda ?1 ?1)  ;\n"
                                   "\n"
                                   "  g #1 #2  ::=\n"
                                   "      #3  ;\n"
                                   "\n"
                                   "  f red ?1  ::=\n"
                                   "      g #1 (h #2)  ;\n"
                                   ";\n";

} // namespace velora::db_test
