// Fuzz target: the command line. The input is split at NUL bytes into at most 24 arguments
// after the program name and given to Process_input, which parses and checks the switches, names
// the results directory and reads the link file. An argument "net" names a small link file, "w"
// one with weights. Every outcome but a finished parse must be one of its exceptions.
#include <cstdlib>

#include "cli/run_params.h"
#include "core/xerror_msg.h"
#include "fuzz/fuzz_files.h"
#include "graph/link_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kcp;
  static const std::string net_file = fuzz::Write_scratch("net", "a b\nb c\nc a\nc d\n");
  static const std::string weighted_file =
      fuzz::Write_scratch("w", "a b 0.5\nb c 2\nc a 1e3\nc d -1\n");
  std::vector<std::string> words{"varnel"};
  for (const std::string_view word :
       fuzz::Split(std::string_view(reinterpret_cast<const char*>(data), size), '\0', 24)) {
    // The words "net" and "w" stand for the scratch link files.
    words.emplace_back(word == "net" ? net_file : word == "w" ? weighted_file : std::string(word));
  }
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  const int argc = static_cast<int>(words.size());
  std::string out_dir;
  LinkMap links;
  double max_time = 0.0;
  bool time_flag = false;
  bool directed = false;
  bool intensity_flag = false;
  double intensity = 0.0;
  bool fixed_k_flag = false;
  std::uint32_t fixed_k = 0;
  bool weighted = false;
  std::string com_flag;
  std::string alap_szoveg;
  char** const args = argv.data();
  try {
    Process_input(argc, args, out_dir, links, max_time, time_flag, directed, intensity_flag,
                  intensity, fixed_k_flag, fixed_k, weighted, com_flag, alap_szoveg);
    if (out_dir.empty() || alap_szoveg.empty()) std::abort();
  } catch (const Xerror_msg&) {
  } catch (const Xep_read_file&) {
  }
  return 0;
}
