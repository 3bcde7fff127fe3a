// The whole of varnel-export behind its main: parses the arguments, reads the results directory
// with Read_results_dir, writes the chosen format to `out` or to the --output file, and returns
// the exit status: 0 on success, 1 when reading or writing fails, 2 on a command-line error.
// Every message goes to `err` as one line beginning "varnel-export: ". With --output the file is
// opened only after the results were read, and removed again when writing it fails; an output
// path inside the results directory (symbolic links resolved) is refused with status 1 before
// anything is read. Results lacking files their run writes (an interrupted run) are refused
// with status 1 unless --allow-incomplete is given; then what is there is exported, after a
// warning naming what is missing and the files whose unfinished last line was left out.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace kcp {

int Run_export(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace kcp
