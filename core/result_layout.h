// The layout of a results directory, owned by the writers and read back by results/: the file
// names, the per-k directory, the fixed header lines, the "-" that marks an approximate item and
// the statistics files' stems and suffixes. A name changed here changes both sides; nothing here
// depends on how the results were computed.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace kcp::layout {

// The flag words of a run's files: "" (plain), "directed" or "intensity".
inline constexpr std::string_view kDirected = "directed";
inline constexpr std::string_view kIntensity = "intensity";

// "<flag>_<stem>", or the bare stem for the plain run.
inline std::string Flag_file(std::string_view flag, std::string_view stem) {
  return flag.empty() ? std::string(stem) : std::string(flag) + "_" + std::string(stem);
}

// The clique file: "cliques", or "directed_cliques"; an intensity run shares the plain one.
inline std::string Clique_file(std::string_view flag) {
  return Flag_file(flag == kIntensity ? std::string_view() : flag, "cliques");
}

// The directory of one k inside the results directory.
inline std::string K_dir_name(const std::uint32_t& k) {
  return "k=" + std::to_string(k);
}
inline std::string K_dir(const std::string& dir, const std::uint32_t& k) {
  return dir + "/" + K_dir_name(k);
}

// The lines the base text carries about the run, after its first line " from <input path>":
// each setting's line with its value (6 decimals) and the rest of the line behind it, or its line
// when unset. Readers find a line by its opening words after a newline.
inline constexpr std::string_view kLowerThresholdLine = "# at a lower link weight threshold of ";
inline constexpr std::string_view kLowerThresholdEnd = ",\n";
inline constexpr std::string_view kNoLowerThresholdLine = "# at no lower link weight threshold,\n";
inline constexpr std::string_view kUpperThresholdLine =
    "# and at an upper link weight threshold of ";
inline constexpr std::string_view kUpperThresholdEnd = ".\n";
inline constexpr std::string_view kNoUpperThresholdLine =
    "# and at no upper link weight threshold.\n";
inline constexpr std::string_view kIntensityLine = "# A lower link weight intensity threshold of ";
inline constexpr std::string_view kIntensityEnd = " was set.\n";
inline constexpr std::string_view kDirectedLinksLine = "# Links were treated as directed.\n";
inline constexpr std::string_view kUndirectedLinksLine = "# Links were treated as undirected.\n";
inline constexpr std::string_view kTimeLimitLine =
    "# The maximal allowed time per node during clique search was ";
inline constexpr std::string_view kTimeLimitEnd = " secs.\n";
inline constexpr std::string_view kNoTimeLimitLine =
    "# No time limit was set for the clique search.\n";
// Followed by k, a newline and a "." that no later line completes.
inline constexpr std::string_view kFixedKLine = "# The communities were extracted solely at k=";
inline constexpr std::string_view kFixedKEnd = "\n.";
// True when one line of `base_text` (not its first) opens with `line_start`.
inline bool Has_line(std::string_view base_text, std::string_view line_start) {
  return base_text.find("\n" + std::string(line_start)) != std::string_view::npos;
}

// The line that closes the graph file's header, under the base text.
inline constexpr std::string_view kUndirectedGraphTail =
    "# (mutual links and self-links were removed)";
inline constexpr std::string_view kDirectedGraphTail = "# (self-links were removed)";

// The files of one k, flag in front as Flag_file puts it.
inline constexpr std::string_view kCommunities = "communities";
inline constexpr std::string_view kCommunityLinks = "communities_links";
inline constexpr std::string_view kCommunityCliques = "communities_cliques";
inline constexpr std::string_view kKCliques = "k-cliques";
inline std::string Community_graph_file(std::string_view flag) {
  return "graph_of_" + Flag_file(flag, kCommunities);
}

// The first line of a file of one k: `before`, the flag and a blank (nothing in a plain run),
// `after`, then "k=" and k.
struct KTitle {
  std::string_view before;
  std::string_view after;
};
inline constexpr KTitle kCommunitiesTitle{"# The ", "communities at "};
inline constexpr KTitle kCommunityLinksTitle{"# The links inside the ", "communities at "};
// With the plain run's empty flag this reads "# The graph of at k=...", as it always has.
inline constexpr KTitle kCommunityGraphTitle{"# The graph of ", "at "};
inline std::string Title_line(const KTitle& title, std::string_view flag, const std::uint32_t& k) {
  return std::string(title.before) + (flag.empty() ? "" : std::string(flag) + " ") +
         std::string(title.after) + "k=" + std::to_string(k);
}

// The line a clique or community file carries under its description when it holds approximate
// items, whose positions are then written behind kApproximateMark.
inline constexpr std::string_view kApproximateCliquesNote =
    "# Negative indices indicate approximate cliques.";
inline constexpr std::string_view kApproximateCommunitiesNote =
    "# Negative indices indicate approximate communities.";
inline constexpr char kApproximateMark = '-';
// Items are numbered by position; the exact ones come first.
inline bool Is_approximate(const std::uint64_t& position, const std::uint64_t& n_exact) {
  return position >= n_exact;
}

// The four distributions of one k: file stem and the opening words of its first line.
struct DistributionKind {
  std::string_view stem;
  std::string_view title;
};
inline constexpr std::array<DistributionKind, 4> kDistributions{{
    {"membership_distribution", "# The node membership distr. in the "},
    {"size_distribution", "# The size distr. of the "},
    {"overlap_distribution", "# The overlap size distr. of the "},
    {"degree_distribution", "# The com. degree distr. of the "},
}};
// The distributions of all communities carry no suffix when every one is exact; otherwise the
// files are written three times: all communities, the exact ones and the approximate ones.
inline constexpr std::string_view kMergedSuffix = "_merged";
inline constexpr std::string_view kExactSuffix = "_exact";
inline constexpr std::string_view kApproximateSuffix = "_appr";
inline constexpr std::array<std::string_view, 4> kDistributionSuffixes{
    "", kMergedSuffix, kExactSuffix, kApproximateSuffix};

}  // namespace kcp::layout
