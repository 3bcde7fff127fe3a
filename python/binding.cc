// The extension module varnel._core: the in-memory run and the clique percolation of the core,
// for the package varnel (varnel/__init__.py), which turns graphs into the node names and link
// positions taken here. Nodes come back as the objects of the `nodes` list the caller passes,
// looked up by position, so that no node is converted twice. The core runs without the
// interpreter lock and stops on Ctrl-C (interruptible.h): the arguments are read before it starts
// and the results turned into Python objects after it ends. Errors of the core (Xerror_msg)
// become varnel.Error, a RuntimeError; memory running out becomes MemoryError.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cliques/overlap_matrix.h"
#include "core/ordered_tasks.h"
#include "core/xerror_msg.h"
#include "python/clique_percolation.h"
#include "python/interruptible.h"
#include "python/memory_run.h"

namespace py = pybind11;

namespace kcp {

namespace {

// Results are turned into Python objects with the interpreter lock held; a long list hands the
// lock every kYieldEvery items to any thread waiting for it, and looks at Ctrl-C.
constexpr std::size_t kYieldEvery = 4096;

void Yield_to_others(const std::size_t& i) {
  if (i % kYieldEvery != kYieldEvery - 1) return;
  if (PyErr_CheckSignals() != 0) throw py::error_already_set();
  const py::gil_scoped_release release;
}

// The node objects of ascending node indices, looked up through the run's positions, as a tuple
// or a list.
template <typename Sequence>
Sequence Node_sequence(const NodeList& members, const std::vector<std::uint32_t>& positions,
                       const py::list& nodes) {
  Sequence out(members.size());
  for (std::size_t i = 0; i < members.size(); ++i) {
    const std::uint32_t position = positions.at(members[i] - std::size_t{1});
    if (position >= nodes.size()) throw py::index_error("fewer nodes than the run has names");
    out[i] = nodes[position];
  }
  return out;
}

// Those of every list of at least min_size nodes.
template <typename Sequence = py::tuple>
py::list Node_sequences(const CliqueList& lists, const std::vector<std::uint32_t>& positions,
                        const py::list& nodes, const std::size_t& min_size = 0) {
  py::list out;
  for (std::size_t i = 0; i < lists.size(); ++i) {
    if (lists[i].size() >= min_size)
      out.append(Node_sequence<Sequence>(lists[i], positions, nodes));
    Yield_to_others(i);
  }
  return out;
}

py::list Index_tuples(const CommunityCliqueLists& lists) {
  py::list out(lists.size());
  for (std::size_t i = 0; i < lists.size(); ++i) {
    out[i] = py::tuple(py::cast(lists[i]));
    Yield_to_others(i);
  }
  return out;
}

// A run's structures are large; they are freed without the interpreter lock (a Run is deleted
// only where the lock is held).
struct FreeWithoutLock {
  void operator()(MemoryRun* run) const {
    const py::gil_scoped_release release;
    delete run;
  }
};
using RunHolder = std::unique_ptr<MemoryRun, FreeWithoutLock>;

// Cliques of node positions (from 0) in, communities of node positions out.
std::vector<std::vector<std::uint32_t>> Percolate_positions(
    const std::vector<std::vector<std::uint32_t>>& cliques, std::uint32_t k,
    const StopRequest* stop) {
  CliqueList indexed;
  indexed.reserve(cliques.size());
  for (const auto& clique : cliques) {
    Clique shifted;
    shifted.reserve(clique.size());
    for (const std::uint32_t position : clique) shifted.push_back(position + 1);
    indexed.push_back(std::move(shifted));
  }
  CommunityList communities = Percolate_cliques(indexed, k, stop);
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
  m.attr("version") = VARNEL_VERSION;
  m.attr("usable_processors") = Usable_processors();

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

  py::class_<MemoryRun, RunHolder>(m, "Run")
      .def(py::init([](const std::vector<std::string>& names,
                       const std::vector<std::uint32_t>& links, bool directed,
                       std::optional<double> time_limit, unsigned threads) {
             return Interruptible([&](const StopRequest& stop) {
               return RunHolder(
                   new MemoryRun(names, links, directed, time_limit, &stop, std::max(threads, 1u)));
             });
           }),
           py::arg("names"), py::arg("links"), py::arg("directed"), py::arg("time_limit"),
           py::arg("threads") = 1,
           "Searches the cliques of the links (pairs of positions into names), on up to "
           "`threads` threads.")
      .def_property_readonly("n_exact", &MemoryRun::N_exact)
      .def_property_readonly(
          "largest", [](const MemoryRun& run) { return Max_clique_size_in_cl_vec(run.Cliques()); })
      .def(
          "cliques",
          [](const MemoryRun& run, const py::list& nodes) {
            return Node_sequences(run.Cliques(), run.Positions(), nodes);
          },
          py::arg("nodes"), "The cliques in the run's order, as tuples of nodes.")
      .def(
          "clique_lists",
          [](const MemoryRun& run, const py::list& nodes, std::size_t min_size) {
            return Node_sequences<py::list>(run.Cliques(), run.Positions(), nodes, min_size);
          },
          py::arg("nodes"), py::arg("min_size"),
          "The cliques of at least min_size nodes in the run's order, as lists of nodes.")
      .def(
          "pair_cliques",
          [](const MemoryRun& run, const py::list& nodes) {
            const CliqueList pairs =
                Interruptible([&](const StopRequest&) { return run.Pair_cliques(); });
            return Node_sequences<py::list>(pairs, run.Positions(), nodes);
          },
          py::arg("nodes"),
          "The maximal cliques of two nodes, which the run does not list, as lists of nodes.")
      .def(
          "communities",
          [](const MemoryRun& run, std::uint32_t k, const py::list& nodes) {
            const KCommunities found =
                Interruptible([&](const StopRequest& stop) { return run.Communities(k, &stop); });
            return py::make_tuple(Node_sequences(found.communities, run.Positions(), nodes),
                                  Index_tuples(found.cliques), found.n_exact);
          },
          py::arg("k"), py::arg("nodes"),
          "(communities as tuples of nodes, their clique positions, the number of exact ones).")
      .def(
          "communities_at",
          [](const MemoryRun& run, const std::vector<std::uint32_t>& ks, const py::list& nodes,
             unsigned threads) {
            const std::vector<KCommunities> found = Interruptible(
                [&](const StopRequest& stop) { return run.Communities(ks, threads, &stop); });
            py::list results;
            for (const KCommunities& at_k : found) {
              results.append(
                  py::make_tuple(Node_sequences(at_k.communities, run.Positions(), nodes),
                                 Index_tuples(at_k.cliques), at_k.n_exact));
            }
            return results;
          },
          py::arg("ks"), py::arg("nodes"), py::arg("threads"),
          "communities(k, nodes) for every k of ks, on up to `threads` threads at once.")
      .def(
          "pair_communities",
          [](const MemoryRun& run, const py::list& nodes) {
            const CommunityList found = Interruptible([&](const StopRequest& stop) {
              CliqueList cliques = run.Cliques();
              const CliqueList pairs = run.Pair_cliques();
              cliques.insert(cliques.end(), pairs.begin(), pairs.end());
              return Percolate_cliques(cliques, 2, &stop);
            });
            return Node_sequences(found, run.Positions(), nodes);
          },
          py::arg("nodes"),
          "The communities at k = 2: percolation over the cliques and the cliques of two nodes.");

  m.def(
      "percolate",
      [](const std::vector<std::vector<std::uint32_t>>& cliques, std::uint32_t k) {
        return Interruptible(
            [&](const StopRequest& stop) { return Percolate_positions(cliques, k, &stop); });
      },
      py::arg("cliques"), py::arg("k"),
      "The k-clique communities of cliques given as lists of node positions (from 0).");
}
