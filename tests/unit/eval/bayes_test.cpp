// The classifier's arithmetic against probabilities worked out by hand.
#include "eval/builtins/bayes.h"

#include <fstream>

#include <gtest/gtest.h>

#include "eval/builtins/table_rows.h"

namespace velora {
namespace {

// Six days, three of each class; three kinds of weather, two of wind.
BayesModel six_days() {
  BayesModel model;
  EXPECT_EQ(1, model.set_features({"weather", "wind"}));
  for (const std::vector<std::string> &day : {std::vector<std::string>{"sun", "calm", "walk"},
                                              {"sun", "strong", "walk"},
                                              {"rain", "calm", "stay"},
                                              {"rain", "strong", "stay"},
                                              {"sun", "calm", "walk"},
                                              {"cloud", "strong", "stay"}})
    EXPECT_EQ(1, model.learn(day));
  return model;
}

TEST(Bayes, CountsAndSmooths) {
  BayesModel model = six_days();
  EXPECT_DOUBLE_EQ(3.0 / 6, model.class_probability("walk").value());
  EXPECT_DOUBLE_EQ((3.0 + 1) / (3 + 3), model.conditional("weather", "sun", "walk").value());
  EXPECT_DOUBLE_EQ((0.0 + 1) / (3 + 3), model.conditional("weather", "sun", "stay").value());
  EXPECT_DOUBLE_EQ((1.0 + 1) / (3 + 2), model.conditional("wind", "calm", "stay").value());
}

TEST(Bayes, RanksClassesByProbability) {
  // walk: 1/2 * 4/6 * 3/5 = 6/30; stay: 1/2 * 1/6 * 2/5 = 1/30; together 7/30.
  BayesModel::Ranking ranking = six_days().classify({"sun", "calm"});
  ASSERT_EQ(2u, ranking.size());
  EXPECT_EQ("walk", ranking[0].first);
  EXPECT_NEAR(6.0 / 7, ranking[0].second, 1e-12);
  EXPECT_EQ("stay", ranking[1].first);
  EXPECT_NEAR(1.0 / 7, ranking[1].second, 1e-12);
}

TEST(Bayes, AnUnknownValueSaysNothing) {
  // With the wind alone: walk 1/2 * 3/5, stay 1/2 * 2/5.
  BayesModel::Ranking ranking = six_days().classify({"hail", "calm"});
  ASSERT_EQ(2u, ranking.size());
  EXPECT_NEAR(0.6, ranking[0].second, 1e-12);
}

TEST(Bayes, ProbabilitiesByHandStandBeforeCounts) {
  BayesModel model = six_days();
  EXPECT_EQ(1, model.set_class("walk", 0.9));
  EXPECT_EQ(1, model.set_conditional("weather", "sun", "walk", 0.0));
  EXPECT_DOUBLE_EQ(0.9, model.class_probability("walk").value());
  EXPECT_EQ("stay", model.classify({"sun", "calm"})[0].first);
  EXPECT_DOUBLE_EQ(1.0, model.classify({"sun", "calm"})[0].second);
  EXPECT_EQ(0, model.set_class("walk", 1.5));
  EXPECT_EQ(0, model.set_conditional("colour", "red", "walk", 0.5));
  EXPECT_FALSE(model.class_probability("swim").has_value());
  EXPECT_FALSE(model.conditional("weather", "hail", "walk").has_value());
}

TEST(Bayes, RefusesWrongRowsAndNames) {
  BayesModel model = six_days();
  EXPECT_EQ(0, model.learn({"sun", "walk"}));
  EXPECT_TRUE(model.classify({"sun"}).empty());
  EXPECT_EQ(0, model.set_features({"a", "b", "a"}));
  EXPECT_EQ((std::vector<std::string>{"weather", "wind"}), model.features());
}

// The plain product of so many factors would be 0 for both classes.
TEST(Bayes, ManyFeaturesDoNotVanish) {
  BayesModel model;
  std::vector<std::string> names, row;
  for (int i = 0; i < 3000; ++i) {
    names.push_back(std::to_string(i));
    row.push_back("same");
  }
  ASSERT_EQ(1, model.set_features(names));
  std::vector<std::string> other = row;
  other[0] = "different";
  for (auto *fields : {&row, &other})
    fields->push_back(fields == &row ? "one" : "two");
  ASSERT_EQ(1, model.learn(row));
  ASSERT_EQ(1, model.learn(other));
  for (const std::string &name : names)
    for (const char *known : {"one", "two"})
      ASSERT_EQ(
          1, model.set_conditional(name, "rare", known, name == "0" && *known == 'o' ? 0.3 : 0.1));
  BayesModel::Ranking ranking = model.classify(std::vector<std::string>(3000, "rare"));
  EXPECT_EQ("one", ranking[0].first);
  EXPECT_NEAR(0.75, ranking[0].second, 1e-9);
}

// The meadow of the examples: the expected numbers come from a separate calculation with plain
// products of fractions.
class Meadow : public testing::Test {
protected:
  Meadow() {
    std::ifstream file(VELORA_SOURCE_DIR "/examples/flowers/flowers.txt");
    for (std::string line; std::getline(file, line);)
      rows.push_back(split_row(line));
    EXPECT_EQ(151u, rows.size());
    EXPECT_EQ(1, model.set_features({rows[0].begin(), rows[0].end() - 1}));
  }
  void learn(std::size_t most) {
    for (std::size_t i = 1; i <= most; ++i)
      EXPECT_EQ(1, model.learn(rows[i]));
  }
  int right_from(std::size_t first) const {
    int right = 0;
    for (std::size_t i = first; i < rows.size(); ++i)
      right += model.classify({rows[i].begin(), rows[i].end() - 1})[0].first == rows[i].back();
    return right;
  }
  std::vector<TableRow> rows;
  BayesModel model;
};

TEST_F(Meadow, LearntWhole) {
  learn(150);
  EXPECT_EQ(125, right_from(1));
  BayesModel::Ranking ranking = model.classify({"8", "middle", "toothed", "sweet"});
  EXPECT_EQ("lantern", ranking[0].first);
  EXPECT_NEAR(0.9108789182544561, ranking[0].second, 1e-12);
  EXPECT_EQ("bellwort", ranking[2].first);
  EXPECT_NEAR(0.0027043638598647822, ranking[2].second, 1e-12);
}

TEST_F(Meadow, TwoThirdsLearntAndTheRestRecognised) {
  learn(100);
  EXPECT_EQ(39, right_from(101));
  EXPECT_NEAR(0.9953180251883257, model.classify({"5", "short", "round", "none"})[0].second, 1e-12);
}

} // namespace
} // namespace velora
