// The classifier's counts and its arithmetic.
#include "eval/builtins/bayes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace velora {

namespace {

bool is_probability(double p) {
  return p >= 0.0 && p <= 1.0;
}

// Turns logarithms of unnormalised probabilities into probabilities. The greatest is taken out
// first, so that products of many small factors do not vanish.
void normalise(BayesModel::Ranking &ranking) {
  double greatest = -std::numeric_limits<double>::infinity();
  for (const auto &entry : ranking)
    greatest = std::max(greatest, entry.second);
  double sum = 0.0;
  for (auto &entry : ranking) {
    entry.second = std::isinf(greatest) ? 0.0 : std::exp(entry.second - greatest);
    sum += entry.second;
  }
  for (auto &entry : ranking)
    entry.second = sum > 0.0 ? entry.second / sum : 0.0;
}

} // namespace

int BayesModel::set_features(const std::vector<std::string> &names) {
  std::vector<Feature> named;
  for (const std::string &name : names) {
    for (const Feature &other : named)
      if (other.name == name)
        return 0;
    named.push_back({name, {}});
  }
  features_ = std::move(named);
  classes_.clear();
  class_numbers_.clear();
  rows_ = 0;
  return 1;
}

std::vector<std::string> BayesModel::features() const {
  std::vector<std::string> names;
  for (const Feature &feature : features_)
    names.push_back(feature.name);
  return names;
}

std::size_t BayesModel::known_class(const std::string &name) {
  const auto [at, is_new] = class_numbers_.try_emplace(name, classes_.size());
  if (is_new)
    classes_.push_back({name, 0, std::nullopt});
  return at->second;
}

const BayesModel::Class *BayesModel::find_class(const std::string &name) const {
  const auto found = class_numbers_.find(name);
  return found == class_numbers_.end() ? nullptr : &classes_[found->second];
}

const BayesModel::Feature *BayesModel::find_feature(const std::string &name) const {
  auto found = std::find_if(features_.begin(), features_.end(),
                            [&](const Feature &feature) { return feature.name == name; });
  return found == features_.end() ? nullptr : &*found;
}

int BayesModel::learn(const std::vector<std::string> &row) {
  if (row.size() != features_.size() + 1)
    return 0;
  std::size_t c = known_class(row.back());
  ++classes_[c].count;
  ++rows_;
  for (std::size_t i = 0; i < features_.size(); ++i)
    ++features_[i].values[row[i]][c].count;
  return 1;
}

int BayesModel::set_class(const std::string &name, double p) {
  if (!is_probability(p))
    return 0;
  classes_[known_class(name)].by_hand = p;
  return 1;
}

int BayesModel::set_conditional(const std::string &feature, const std::string &value,
                                const std::string &name, double p) {
  const Feature *found = find_feature(feature);
  if (found == nullptr || !is_probability(p))
    return 0;
  std::size_t c = known_class(name);
  auto &values = features_[static_cast<std::size_t>(found - features_.data())].values;
  values[value][c].by_hand = p;
  return 1;
}

double BayesModel::prior(const Class &of) const {
  if (of.by_hand)
    return *of.by_hand;
  return rows_ == 0 ? 1.0 / static_cast<double>(classes_.size())
                    : static_cast<double>(of.count) / static_cast<double>(rows_);
}

double BayesModel::likelihood(const Feature &feature, const Estimates &by_class,
                              std::size_t c) const {
  const auto known = by_class.find(c);
  const Estimate estimate = known != by_class.end() ? known->second : Estimate{};
  if (estimate.by_hand)
    return *estimate.by_hand;
  return static_cast<double>(estimate.count + 1) /
         static_cast<double>(classes_[c].count + feature.values.size());
}

std::optional<double> BayesModel::class_probability(const std::string &name) const {
  const Class *known = find_class(name);
  return known == nullptr ? std::nullopt : std::optional<double>(prior(*known));
}

std::optional<double> BayesModel::conditional(const std::string &feature, const std::string &value,
                                              const std::string &name) const {
  const Feature *of = find_feature(feature);
  const Class *known = find_class(name);
  if (of == nullptr || known == nullptr)
    return std::nullopt;
  auto found = of->values.find(value);
  if (found == of->values.end())
    return std::nullopt;
  return likelihood(*of, found->second, static_cast<std::size_t>(known - classes_.data()));
}

BayesModel::Ranking BayesModel::classify(const std::vector<std::string> &values) const {
  Ranking ranking;
  if (values.size() != features_.size())
    return ranking;
  for (std::size_t c = 0; c < classes_.size(); ++c) {
    double logarithm = std::log(prior(classes_[c]));
    for (std::size_t i = 0; i < features_.size(); ++i) {
      auto found = features_[i].values.find(values[i]);
      if (found != features_[i].values.end())
        logarithm += std::log(likelihood(features_[i], found->second, c));
    }
    ranking.emplace_back(classes_[c].name, logarithm);
  }
  normalise(ranking);
  std::stable_sort(ranking.begin(), ranking.end(),
                   [](const auto &one, const auto &other) { return one.second > other.second; });
  return ranking;
}

} // namespace velora
