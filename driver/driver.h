// One whole run of Varnel: the stages in their fixed order with the console lines between them,
// every large structure owned here and passed by reference. Every error of any stage ends the
// run at one place: its message is printed on standard output, files already written stay; a
// write that a file-size limit stops is one such error (the limit's signal is ignored).
// The exit status is 0 after an error as after success; callers tell failure by the message.
#pragma once

#include <cstdint>
#include <string>

namespace kcp {

// threads: the threads the clique search and the community stages share (one: all on the
// caller's).
int Run(int argc, char** argv, const unsigned& threads);

// What the run is doing, for the message when memory runs out: `network` marks the stages whose
// needs grow with the network, whose message keeps blaming its size.
struct RunStage {
  std::string doing = "starting";
  bool network = false;
};

// "ERROR: out of memory while <doing>; the network is too large for this machine's memory." for
// a stage of the network, "ERROR: out of memory while <doing>." for any other.
std::string Out_of_memory_message(const RunStage& stage);

// Pairs of cliques sharing fewer nodes than this are not kept in the overlap matrix: the
// percolation at k reads only pairs sharing k - 1 or more nodes.
std::uint32_t Min_shared_for_run(bool fixed_k_flag, std::uint32_t fixed_k);

}  // namespace kcp
