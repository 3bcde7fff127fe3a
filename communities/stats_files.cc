#include "communities/stats_files.h"

#include <array>

#include "communities/community_files.h"
#include "fsutil/dir_prepare.h"
#include "fsutil/result_file.h"
#include "text/conversions.h"

namespace kcp {

namespace {

void Put_position(Result_file& file, const std::uint32_t& p, const std::uint32_t& n_exact_coms) {
  if (p >= n_exact_coms) file << '-';
  file << p;
}

}  // namespace

void Kiir_com_graph_VN(const CommunityGraph& graph, const std::uint32_t& n_exact_coms,
                       const std::string& dir, const std::uint32_t& k, const std::string& flag,
                       const std::string& alap_szoveg) {
  const std::string name =
      flag.empty() ? "graph_of_communities" : "graph_of_" + flag + "_communities";
  Result_file file(K_dir(dir, k), name);
  // With the empty flag the line reads "# The graph of at k=..."; the wording is kept as it is.
  file << "# The graph of " << (flag.empty() ? flag : flag + " ") << "at k=" << k << '\n';
  file << '#' << alap_szoveg << '\n';
  for (const auto& [pair, weight] : graph) {
    Put_position(file, pair.first, n_exact_coms);
    file << ' ';
    Put_position(file, pair.second, n_exact_coms);
    file << ' ' << weight << '\n';
  }
  file.Close();
}

void Kiir_stats_VN(const Distribution& membership, const Distribution& size,
                   const Distribution& overlap, const Distribution& degree, const std::string& dir,
                   const std::uint32_t& k, const std::string& flag, const std::string& suffix,
                   const std::string& alap_szoveg) {
  const std::string k_dir = K_dir(dir, k);
  Dir_prepare(k_dir, "keep");
  struct Stat_file {
    const char* stem;
    const Distribution& distribution;
    const char* prefix;
  };
  const std::array<Stat_file, 4> files{{
      {"membership_distribution", membership, "# The node membership distr. in the "},
      {"size_distribution", size, "# The size distr. of the "},
      {"overlap_distribution", overlap, "# The overlap size distr. of the "},
      {"degree_distribution", degree, "# The com. degree distr. of the "},
  }};
  // The suffix is printed inside the header as it is, and the "." follows only the bare word
  // "appr", which the stage never passes (its suffixes start with "_"): both kept on purpose.
  const std::string tail = suffix + (suffix == "appr" ? "." : "") +
                           (flag.empty() ? flag : flag + " ") +
                           " communities at k=" + int2string(k) + "\n#" + alap_szoveg;
  const std::string name_start = flag.empty() ? flag : flag + "_";
  for (const Stat_file& f : files) {
    Kiir_VN_dist(k_dir + "/" + name_start + f.stem + suffix, f.distribution, f.prefix + tail);
  }
}

void Kiir_VN_dist(const std::string& path, const Distribution& distribution,
                  const std::string& header) {
  Result_file file(path);
  file << header << '\n';
  for (const auto& [value, count] : distribution) file << value << ' ' << count << '\n';
  file << '\n';
  file.Close();
}

}  // namespace kcp
