// One whole run of Varnel: the stages in their fixed order with the console lines between them,
// every large structure owned here and passed by reference. Every error of any stage ends the
// run at one place: its message is printed on standard output, files already written stay.
// The exit status is 0 after an error as after success; callers tell failure by the message.
#pragma once

#include <cstdint>

namespace kcp {

int Run(int argc, char** argv);

// Pairs of cliques sharing fewer nodes than this are not kept in the overlap matrix: the
// percolation at k reads only pairs sharing k - 1 or more nodes.
std::uint32_t Min_shared_for_run(bool fixed_k_flag, std::uint32_t fixed_k);

}  // namespace kcp
