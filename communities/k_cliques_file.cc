#include "communities/k_cliques_file.h"

#include "core/result_layout.h"
#include "fsutil/result_file.h"
#include "text/conversions.h"

namespace kcp {

void Kiir_k_cliques_VN(const std::string& dir, const KCliqueSet& k_cliques, const std::uint32_t& k,
                       NameMap& names, const std::string& alap_szoveg) {
  ResultFile file(layout::K_dir(dir, k), std::string(layout::kKCliques));
  std::ostream& out = file.out();
  out << "# The k-cliques at k=" << int2string(k) << alap_szoveg << "\n";
  std::uint32_t number = 0;
  for (const NodeList& k_clique : k_cliques) {
    out << number << ": ";
    for (const NodeIndex& node : k_clique) out << names[node] << " ";
    out << "\n";
    ++number;
  }
  file.Close();
}

}  // namespace kcp
