// varnel-export: turns a results directory of varnel into GraphML, node-link JSON, CSV or SVG.
#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "export/export_run.h"

int main(int argc, char** argv) {
  // Past a file-size limit a write fails and is reported as any failed write is; left to its
  // signal, the limit would end the program without a word and leave the file cut.
  std::signal(SIGXFSZ, SIG_IGN);
  std::ios::sync_with_stdio(false);
  const std::vector<std::string> args(argv + 1, argv + argc);
  return kcp::Run_export(args, std::cout, std::cerr);
}
