// The extension module varnel._core: the in-memory run and the clique percolation of the core,
// for the package varnel (varnel/__init__.py), which turns graphs into the node names and link
// positions taken here. Nodes come back as the objects of the `nodes` list the caller passes,
// looked up by position, so that no node is converted twice. Errors of the core (Xerror_msg)
// become varnel.Error, a RuntimeError; memory running out becomes MemoryError.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cliques/overlap_matrix.h"
#include "core/xerror_msg.h"
#include "python/clique_percolation.h"
#include "python/memory_run.h"
#include "python/quiet_console.h"

namespace py = pybind11;

namespace kcp {

namespace {

// The node objects of ascending node indices, looked up through the run's positions.
py::tuple Node_tuple(const NodeList& members, const std::vector<std::uint32_t>& positions,
                     const py::list& nodes) {
  py::tuple out(members.size());
  for (std::size_t i = 0; i < members.size(); ++i) {
    const std::uint32_t position = positions.at(members[i] - std::size_t{1});
    if (position >= nodes.size()) throw py::index_error("fewer nodes than the run has names");
    out[i] = nodes[position];
  }
  return out;
}

py::list Node_tuples(const CliqueList& lists, const std::vector<std::uint32_t>& positions,
                     const py::list& nodes) {
  py::list out(lists.size());
  for (std::size_t i = 0; i < lists.size(); ++i) out[i] = Node_tuple(lists[i], positions, nodes);
  return out;
}

py::list Index_tuples(const CommunityCliqueLists& lists) {
  py::list out(lists.size());
  for (std::size_t i = 0; i < lists.size(); ++i) out[i] = py::tuple(py::cast(lists[i]));
  return out;
}

// Cliques of node positions (from 0) in, communities of node positions out.
std::vector<std::vector<std::uint32_t>> Percolate_positions(
    const std::vector<std::vector<std::uint32_t>>& cliques, std::uint32_t k) {
  CliqueList indexed;
  indexed.reserve(cliques.size());
  for (const auto& clique : cliques) {
    Clique shifted;
    shifted.reserve(clique.size());
    for (const std::uint32_t position : clique) shifted.push_back(position + 1);
    indexed.push_back(std::move(shifted));
  }
  CommunityList communities = Percolate_cliques(indexed, k);
  for (Community& community : communities) {
    for (NodeIndex& node : community) --node;
  }
  return communities;
}

}  // namespace

}  // namespace kcp

PYBIND11_MODULE(_core, m) {
  using namespace kcp;
  m.doc() = "The core of Varnel for the package varnel; use the package's functions instead.";

  static py::exception<Xerror_msg> error(m, "Error", PyExc_RuntimeError);
  py::register_exception_translator([](std::exception_ptr thrown) {
    try {
      if (thrown) std::rethrow_exception(thrown);
    } catch (const Xerror_msg& e) {
      // The core's messages carry the console's blanks and line breaks.
      std::string message = e.what();
      const auto first = message.find_first_not_of(" \n");
      const auto last = message.find_last_not_of(" \n");
      message = first == std::string::npos ? "" : message.substr(first, last - first + 1);
      error(message.c_str());
    }
  });

  py::class_<MemoryRun>(m, "Run")
      .def(py::init<const std::vector<std::string>&, const std::vector<std::uint32_t>&, bool,
                    std::optional<double>>(),
           py::arg("names"), py::arg("links"), py::arg("directed"), py::arg("time_limit"),
           "Searches the cliques of the links (pairs of positions into names).")
      .def_property_readonly("n_exact", &MemoryRun::N_exact)
      .def_property_readonly(
          "largest", [](const MemoryRun& run) { return Max_clique_size_in_cl_vec(run.Cliques()); })
      .def(
          "cliques",
          [](const MemoryRun& run, const py::list& nodes) {
            return Node_tuples(run.Cliques(), run.Positions(), nodes);
          },
          py::arg("nodes"), "The cliques in the run's order, as tuples of nodes.")
      .def(
          "pair_cliques",
          [](const MemoryRun& run, const py::list& nodes) {
            return Node_tuples(run.Pair_cliques(), run.Positions(), nodes);
          },
          py::arg("nodes"), "The maximal cliques of two nodes, which the run does not list.")
      .def(
          "communities",
          [](const MemoryRun& run, std::uint32_t k, const py::list& nodes) {
            const KCommunities found = run.Communities(k);
            return py::make_tuple(Node_tuples(found.communities, run.Positions(), nodes),
                                  Index_tuples(found.cliques), found.n_exact);
          },
          py::arg("k"), py::arg("nodes"),
          "(communities as tuples of nodes, their clique positions, the number of exact ones).")
      .def(
          "pair_communities",
          [](const MemoryRun& run, const py::list& nodes) {
            CliqueList cliques = run.Cliques();
            const CliqueList pairs = run.Pair_cliques();
            cliques.insert(cliques.end(), pairs.begin(), pairs.end());
            return Node_tuples(Percolate_cliques(cliques, 2), run.Positions(), nodes);
          },
          py::arg("nodes"),
          "The communities at k = 2: percolation over the cliques and the cliques of two nodes.");

  m.def(
      "percolate",
      [](const std::vector<std::vector<std::uint32_t>>& cliques, std::uint32_t k) {
        const QuietConsole quiet;
        return Percolate_positions(cliques, k);
      },
      py::arg("cliques"), py::arg("k"),
      "The k-clique communities of cliques given as lists of node positions (from 0).");
}
