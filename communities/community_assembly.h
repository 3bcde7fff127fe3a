// The node set and the link list of a community, from the cliques it took. Nodes ascend; links
// are the distinct (smaller, larger) node pairs of the member cliques, ascending by the smaller
// node, then the larger. The work grows with the pairs of the member cliques, or, when large
// cliques repeat the same links many times, with their members times the community's size in
// words; given the profile of the cliques, a community too large for that goes to
// ProfileAssembly, whose work grows with the members' hot nodes. The scratch is kept between
// communities.
#pragma once

#include <cstdint>
#include <vector>

#include "cliques/clique_profile.h"
#include "communities/profile_assembly.h"
#include "core/types.h"

namespace kcp {

class CommunityAssembly {
 public:
  // Member positions at or beyond the end of the clique list stand for cliques without nodes.
  // A profile, when given, describes `cliques`.
  void Assemble(const CliqueIndexList& members, const CliqueList& cliques, NodeList& nodes,
                LinkList& links, const CliqueProfile* profile = nullptr);

 private:
  // Communities up to this many nodes may be assembled in a bit matrix (32 MiB at most).
  static constexpr std::size_t kMatrixNodes = 16384;
  // The distinct nodes of the member cliques, ascending, each marked in local_ (left nonzero).
  void Collect_nodes(const CliqueIndexList& members, const CliqueList& cliques, NodeList& nodes);
  // Appends the links of the member cliques through every pair bucketed by its smaller node;
  // local_ holds each node's position in `nodes` plus one.
  void Assemble_in_buckets(const CliqueIndexList& members, const CliqueList& cliques,
                           const NodeList& nodes, LinkList& links);
  void Assemble_in_matrix(const CliqueIndexList& members, const CliqueList& cliques,
                          const NodeList& nodes, LinkList& links);

  std::vector<std::uint64_t> matrix_;
  std::vector<std::uint32_t> local_;   // node -> its position in `nodes`, plus one; 0 elsewhere
  std::vector<std::uint32_t> bucket_;  // local node -> first of its later members in `later_`
  std::vector<std::uint32_t> later_;
  std::vector<std::uint32_t> seen_;  // local node -> the stamp of the bucket that listed it
  std::uint32_t stamp_ = 0;
  std::vector<std::uint32_t> distinct_;
  ProfileAssembly by_profile_;
};

}  // namespace kcp
