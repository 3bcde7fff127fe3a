// The sorted-array containers of the links, names and vertex records against the standard
// ordered containers they stand in for, under random sequences of operations: the same answers,
// the same contents in the same order.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "core/types.h"
#include "graph/node_map.h"

namespace kcp {
namespace {

TEST(Containers, NodeSetFollowsAnOrderedSet) {
  std::mt19937 random(5);
  for (int round = 0; round < 300; ++round) {
    NodeSet set;
    std::set<NodeIndex> reference;
    for (int op = random() % 60; op > 0; --op) {
      const NodeIndex n = random() % 40;
      switch (random() % 5) {
        case 0:
        case 1:
          ASSERT_EQ(set.insert(n).second, reference.insert(n).second);
          break;
        case 2:
          ASSERT_EQ(set.erase(n), reference.erase(n));
          break;
        case 3: {
          const NodeSet other{n + 3, n, 7, n};
          set.Unite(other);
          reference.insert(other.begin(), other.end());
          break;
        }
        default: {
          NodeSet copy = set;
          set = NodeSet();
          set = std::move(copy);
        }
      }
      ASSERT_TRUE(std::equal(set.begin(), set.end(), reference.begin(), reference.end()));
      ASSERT_EQ(set.count(n), reference.count(n));
    }
  }
}

using LinkRows = std::vector<std::tuple<std::string, std::string, double>>;

LinkRows Rows(const LinkMap& links) {
  LinkRows rows;
  for (const auto& [key, w] : links) rows.emplace_back(key.first, key.second, w);
  return rows;
}
LinkRows Rows(const std::map<std::pair<std::string, std::string>, double>& links) {
  LinkRows rows;
  for (const auto& [key, w] : links) rows.emplace_back(key.first, key.second, w);
  return rows;
}

template <typename Map, typename Reference>
bool Same_entries(const Map& map, const Reference& reference) {
  return map.size() == reference.size() &&
         std::equal(map.begin(), map.end(), reference.begin(), [](const auto& a, const auto& b) {
           return a.first == b.first && a.second == b.second;
         });
}

// Names that share their first eight bytes, or differ only by a trailing NUL, order by their
// whole bytes.
TEST(Containers, MapsFollowAnOrderedMap) {
  const std::string pool[] = {"",         "a",         std::string("a\0", 2), "ab",
                              "abcdefgh", "abcdefghi", "abcdefgh\xff",        "\xc3\xa9"};
  std::mt19937 random(6);
  for (int round = 0; round < 200; ++round) {
    LinkMap links;
    std::map<std::pair<std::string, std::string>, double> links_reference;
    IndexLinkMap index_links;
    std::map<std::pair<NodeIndex, NodeIndex>, double> index_reference;
    NameMap names;
    std::map<NodeIndex, std::string> names_reference;
    NodeMap<std::string> records;
    std::map<NodeIndex, std::string> records_reference;
    for (int op = random() % 40; op > 0; --op) {
      const std::string& s = pool[random() % 8];
      const std::string& t = pool[random() % 8];
      const NodeIndex a = random() % 12;
      const NodeIndex b = random() % 12;
      const double w = random() % 4;
      switch (random() % 4) {
        case 0:
          ASSERT_EQ(links.try_emplace({s, t}, w).second,
                    links_reference.try_emplace({s, t}, w).second);
          ASSERT_EQ(index_links.try_emplace({a, b}, w).second,
                    index_reference.try_emplace({a, b}, w).second);
          ASSERT_EQ(names.emplace(a, s).second, names_reference.emplace(a, s).second);
          ASSERT_EQ(records.try_emplace(a, t).second, records_reference.try_emplace(a, t).second);
          break;
        case 1:
          links[{s, t}] += w;
          links_reference[{s, t}] += w;
          index_links[{a, b}] += w;
          index_reference[{a, b}] += w;
          records[a] += s;
          records_reference[a] += s;
          break;
        case 2:
          ASSERT_EQ(index_links.erase({a, b}), index_reference.erase({a, b}));
          ASSERT_EQ(records.erase(a), records_reference.erase(a));
          break;
        default:
          ASSERT_EQ(links.count({s, t}), links_reference.count({s, t}));
          ASSERT_EQ(names.count(a), names_reference.count(a));
          ASSERT_EQ(names[a], names_reference.count(a) ? names_reference[a] : "");
          ASSERT_EQ(records.count(a), records_reference.count(a));
      }
    }
    ASSERT_EQ(Rows(links), Rows(links_reference)) << "round " << round;
    ASSERT_TRUE(Same_entries(index_links, index_reference)) << "round " << round;
    ASSERT_TRUE(Same_entries(names, names_reference)) << "round " << round;
    ASSERT_TRUE(Same_entries(records, records_reference)) << "round " << round;
  }
}

}  // namespace
}  // namespace kcp
