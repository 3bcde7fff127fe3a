#include "cli/switches.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "core/xerror_msg.h"

namespace kcp {

namespace {

bool Is_switch(const std::string& word) {
  return word.size() > 1 && word[0] == '-';
}

std::vector<std::string> Argument_list(const int& argc, char** const& argv) {
  std::vector<std::string> args;
  args.reserve(argc > 0 ? static_cast<std::size_t>(argc) : 0);
  for (int i = 0; i < argc; ++i) args.emplace_back(argv[i]);
  return args;
}

}  // namespace

Switches::Switches(const int& argc, char** const& argv) {
  Construct(Argument_list(argc, argv));
}

Switches::Switches(const std::vector<std::string>& args) {
  Construct(args);
}

Switches::Table Switches::Params() const {
  return params_;
}

std::string Switches::Prog_name() const {
  return prog_name_;
}

void Switches::Construct(std::vector<std::string> args) {
  if (args.empty()) throw Xerror_msg(" program name missing in Switches...\n");
  prog_name_ = args.front();
  Table table;
  std::string key = "---noname";
  for (std::size_t i = 1; i < args.size(); ++i) {
    if (Is_switch(args[i])) {
      key = args[i];
      table[key].resize(0);
    } else {
      table[key].push_back(std::move(args[i]));
    }
  }
  params_ = std::move(table);
}

bool Check_keys(const ParamTable& params) {
  static constexpr std::array<std::string_view, 11> kKnown = {"-i", "-o", "-w", "-W", "-h", "-d",
                                                              "-t", "-D", "-I", "-k", "-U"};
  for (const auto& [key, values] : params) {
    if (std::find(kKnown.begin(), kKnown.end(), key) == kKnown.end()) return false;
  }
  return true;
}

}  // namespace kcp
