#include "cliques/clique_output.h"

#include "core/result_layout.h"
#include "fsutil/result_file.h"
#include "graph/output_tables.h"

namespace kcp {

namespace {

void Write_members(ResultFile& file, const Clique& clique, const NameTable& names) {
  for (const NodeIndex m : clique) file << names[m] << ' ';
  file << '\n';
}

}  // namespace

void Kiir_cliques_VN(const std::string& dir, const CliqueList& cliques, NameMap& names,
                     const std::uint32_t& n_exact, const std::string& flag,
                     const std::string& alap_szoveg) {
  const NameTable table(names);
  // An intensity run shares the plain clique file: its cliques are those of the undirected search.
  const std::string kind = flag == layout::kIntensity ? std::string() : flag;
  ResultFile file(dir, layout::Clique_file(flag));
  file << "# The " << kind << (kind.empty() ? "" : " ") << "cliques" << alap_szoveg;
  if (n_exact < cliques.size()) file << layout::kApproximateCliquesNote << '\n';
  file << '\n';
  std::size_t i = 0;
  for (; i < n_exact && i < cliques.size(); ++i) {
    file << i << ": ";
    Write_members(file, cliques[i], table);
  }
  for (; i < cliques.size(); ++i) {
    file << layout::kApproximateMark << i << ": ";
    Write_members(file, cliques[i], table);
  }
  file.Close();
}

}  // namespace kcp
