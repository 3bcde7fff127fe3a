// varnel-export: turns a results directory of varnel into GraphML, node-link JSON, CSV or SVG.
#include <iostream>
#include <string>
#include <vector>

#include "export/export_run.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  const std::vector<std::string> args(argv + 1, argv + argc);
  return kcp::Run_export(args, std::cout, std::cerr);
}
