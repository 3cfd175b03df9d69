// The drawings of application trees that the developers of the reducer call for.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "core/trees.h"
#include "eval/evaluate.h"
#include "kit/language.h"
#include "platform/safe_file.h"
#include "shell/return_point.h"

namespace velora {
namespace {

class TreeDumpTest : public kit::Language {
protected:
  void SetUp() override {
    kit::Language::SetUp();
    folder_ = std::filesystem::temp_directory_path() / "velora-tree-dump";
    std::filesystem::create_directories(folder_);
    before_ = std::filesystem::current_path();
    std::filesystem::current_path(folder_);
  }
  void TearDown() override {
    std::filesystem::current_path(before_);
    std::filesystem::remove_all(folder_);
    kit::Language::TearDown();
  }
  // What was appended since the last call, with "@" for each address.
  std::string drawn() {
    std::string text;
    read_whole_file("apptrees", text);
    text.erase(0, std::exchange(seen_, text.size()));
    for (std::size_t at; (at = text.find("0x")) != std::string::npos;)
      text.replace(
          at, std::min(text.find_first_not_of("0123456789abcdef", at + 2), text.size()) - at, "@");
    return text;
  }

private:
  std::filesystem::path folder_;
  std::filesystem::path before_;
  std::size_t seen_ = 0;
};

// ((#1 'c') K)
Tree example() {
  node *one = make_leaf(kInteger);
  one->val.i = 1;
  node *letter = make_leaf(kCharacter);
  letter->val.c = 'c';
  return Tree(make_apply_node(make_apply_node(one, letter), make_leaf(kCombK)));
}

TEST_F(TreeDumpTest, BothFormsAreAppended) {
  const Tree tree = example();
  draw_apply_tree("first", tree.get());
  EXPECT_EQ(drawn(), "\n\nfirst\n"
                     "@, T -- type 0,   @, TL -- type 0,   \n"
                     "@, TLL -- 1,   @, TLR -- c,   \n"
                     "@, TR -- type 65,   ");
  draw_apply_tree1("second", tree.get());
  EXPECT_EQ(drawn(), "\n\n(second) T node\n"
                     "(@)(T)(t:0)  T node\nT TL edge\nT TR edge\n"
                     "(@)(L)(t:0)  TL node\nTL TLL edge\nTL TLR edge\n"
                     "(@)(L)(1)  TLL node\n(@)(R)(c)  TLR node\n(@)(R)(t:65)  TR node\n");
}

TEST_F(TreeDumpTest, TheThousandthDrawingEndsTheQuery) {
  const Tree tree = example();
  int drawings = 0;
  run_command([&] {
    for (; drawings < 2000; ++drawings)
      draw_apply_tree("again", tree.get());
    return 1;
  });
  EXPECT_LT(drawings, 1000);
  EXPECT_NE(console().log_text().find("Number of trees reached 1000"), std::string::npos)
      << console().log_text();
}

} // namespace
} // namespace velora
