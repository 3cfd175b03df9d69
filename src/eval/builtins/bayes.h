// A naive Bayes classifier over named features and classes whose values are texts. Knows nothing
// of expressions.
//
// Learnt rows are counted. With N rows, N(c) of class c, N(f,v,c) of class c with the value v of
// feature f, and V(f) different values known of f:
//   P(c)     = N(c) / N
//   P(v | c) = (N(f,v,c) + 1) / (N(c) + V(f))          (Laplace)
// A probability set by hand stands before the counted one. Products are sums of logarithms.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace velora {

class BayesModel {
public:
  using Ranking = std::vector<std::pair<std::string, double>>;

  // Names the features and forgets all else; 0, changing nothing, when a name is there twice.
  int set_features(const std::vector<std::string> &names);
  std::vector<std::string> features() const;

  // Counts one row, its values in the order of the features and its class at the end; 0 when the
  // number of fields is not one more than that of the features.
  int learn(const std::vector<std::string> &row);

  // Probabilities by hand, from 0 to 1; 0 for others and for an unknown feature. A class or a value
  // that is new becomes known.
  int set_class(const std::string &name, double p);
  int set_conditional(const std::string &feature, const std::string &value, const std::string &name,
                      double p);

  // None for what is not known.
  std::optional<double> class_probability(const std::string &name) const;
  std::optional<double> conditional(const std::string &feature, const std::string &value,
                                    const std::string &name) const;

  // Every class with its probability given the values, most probable first, those alike in the
  // order in which they became known; together they are 1, unless nothing is possible. A value
  // that is not known of its feature says nothing. Empty when no class is known or the number of
  // values is not that of the features.
  Ranking classify(const std::vector<std::string> &values) const;

private:
  struct Estimate { // of one value of a feature in one class
    std::uint64_t count = 0;
    std::optional<double> by_hand;
  };
  // Of one value, by the numbers of the classes that it was met with.
  using Estimates = std::unordered_map<std::size_t, Estimate>;
  struct Class {
    std::string name;
    std::uint64_t count = 0;
    std::optional<double> by_hand;
  };
  struct Feature {
    std::string name;
    std::map<std::string, Estimates> values;
  };

  std::size_t known_class(const std::string &name);
  const Class *find_class(const std::string &name) const;
  const Feature *find_feature(const std::string &name) const;
  double prior(const Class &of) const;
  double likelihood(const Feature &feature, const Estimates &by_class, std::size_t c) const;

  std::vector<Feature> features_;
  std::vector<Class> classes_;
  std::unordered_map<std::string, std::size_t> class_numbers_;
  std::uint64_t rows_ = 0;
};

} // namespace velora
