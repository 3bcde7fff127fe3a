#include "communities/stats_files.h"

#include <array>

#include "core/result_layout.h"
#include "fsutil/dir_prepare.h"
#include "fsutil/result_file.h"
#include "text/conversions.h"

namespace kcp {

namespace {

void Put_position(ResultFile& file, const std::uint32_t& p, const std::uint32_t& n_exact_coms) {
  if (layout::Is_approximate(p, n_exact_coms)) file << layout::kApproximateMark;
  file << p;
}

}  // namespace

void Kiir_com_graph_VN(const CommunityGraph& graph, const std::uint32_t& n_exact_coms,
                       const std::string& dir, const std::uint32_t& k, const std::string& flag,
                       const std::string& alap_szoveg) {
  ResultFile file(layout::K_dir(dir, k), layout::Community_graph_file(flag));
  file << layout::Title_line(layout::kCommunityGraphTitle, flag, k) << '\n';
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
  const std::string k_dir = layout::K_dir(dir, k);
  Dir_prepare(k_dir, "keep");
  // In the order of layout::kDistributions.
  const std::array<const Distribution*, 4> distributions{&membership, &size, &overlap, &degree};
  // The suffix is printed inside the header as it is, and the "." follows only the bare word
  // "appr", which the stage never passes (its suffixes start with "_"): both kept on purpose.
  const std::string tail = suffix + (suffix == "appr" ? "." : "") +
                           (flag.empty() ? flag : flag + " ") +
                           " communities at k=" + int2string(k) + "\n#" + alap_szoveg;
  for (std::size_t i = 0; i < distributions.size(); ++i) {
    const layout::DistributionKind& kind = layout::kDistributions[i];
    Kiir_VN_dist(k_dir + "/" + layout::Flag_file(flag, kind.stem) + suffix, *distributions[i],
                 std::string(kind.title) + tail);
  }
}

void Kiir_VN_dist(const std::string& path, const Distribution& distribution,
                  const std::string& header) {
  ResultFile file(path);
  file << header << '\n';
  for (const auto& [value, count] : distribution) file << value << ' ' << count << '\n';
  file << '\n';
  file.Close();
}

}  // namespace kcp
