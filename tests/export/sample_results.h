// Small RunResults built by hand for the writer tests, as Read_results_dir would return them
// for the results directories described beside each function.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "results/run_results.h"

namespace kcp::testing {

// Numbers below 0 are approximate; the approximate "-0" is made by setting the flag afterwards.
inline NamedLink Link(const std::string& source, const std::string& target) {
  return {source, target, std::nullopt, ""};
}

inline NamedLink Weighted_link(const std::string& source, const std::string& target, double weight,
                               const std::string& text) {
  return {source, target, weight, text};
}

inline CommunityRecord Community(std::int64_t number, std::vector<std::string> nodes,
                                 std::vector<std::pair<std::string, std::string>> links) {
  return {.number = number,
          .approximate = number < 0,
          .nodes = std::move(nodes),
          .links = std::move(links),
          .cliques = {}};
}

// A run with the given communities at one k and nothing else.
inline RunResults At_k(std::uint32_t k, std::vector<CommunityRecord> communities) {
  RunResults results;
  results.per_k.resize(1);
  results.per_k[0].k = k;
  results.per_k[0].communities = std::move(communities);
  return results;
}

// An undirected, unweighted run on the lines "a b", "a c", "b c", "c a", "c d" with, at k=3,
// the exact community 0 = {a, b, c} and the approximate community -1 = {b, c, d} (whose
// approximate clique also joins b and d, which no line links), and no community at k=4.
inline RunResults Undirected_sample() {
  RunResults results;
  results.nodes = {"a", "b", "c", "d"};
  results.links = {Link("a", "b"), Link("a", "c"), Link("b", "c"), Link("c", "a"), Link("c", "d")};
  KResults k3;
  k3.k = 3;
  k3.communities = {Community(0, {"a", "b", "c"}, {{"a", "b"}, {"c", "a"}, {"b", "c"}}),
                    Community(-1, {"b", "c", "d"}, {{"b", "c"}, {"b", "d"}, {"c", "d"}})};
  k3.distributions["size_distribution_merged"] = {{3, 2}};
  k3.distributions["degree_distribution_merged"] = {{1, 2}};
  k3.distributions["overlap_distribution_merged"] = {{2, 1}};
  k3.distributions["membership_distribution_merged"] = {{0, 0}, {1, 2}, {2, 2}};
  KResults k4;
  k4.k = 4;
  k4.distributions["size_distribution"] = {};
  k4.distributions["degree_distribution"] = {};
  k4.distributions["overlap_distribution"] = {};
  k4.distributions["membership_distribution"] = {{0, 4}};
  results.per_k = {k3, k4};
  return results;
}

// A directed, weighted run on the lines "x y 0.5", "y x 2", "x a&b 1e+06" with, at k=3, the
// community 0 = {x, y, a&b} whose link list names x and y once, as "x y".
inline RunResults Directed_sample() {
  RunResults results;
  results.flavour = "directed";
  results.directed = true;
  results.weighted = true;
  results.nodes = {"x", "y", "a&b"};
  results.links = {Weighted_link("x", "y", 0.5, "0.5"), Weighted_link("y", "x", 2, "2"),
                   Weighted_link("x", "a&b", 1e6, "1e+06")};
  KResults k3;
  k3.k = 3;
  k3.communities = {Community(0, {"x", "y", "a&b"}, {{"x", "y"}, {"a&b", "x"}, {"y", "a&b"}})};
  k3.distributions["size_distribution"] = {{3, 1}};
  results.per_k = {k3};
  return results;
}

}  // namespace kcp::testing
