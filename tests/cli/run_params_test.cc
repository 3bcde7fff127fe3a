#include "cli/run_params.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/xerror_msg.h"
#include "graph/link_reader.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Cout_capture;
using testing::Test_dir;
using testing::Write_file;

const std::string kBanner =
    "____________________________________________________\n"
    "Varnel 1.0: overlapping communities by k-clique percolation\n"
    " Lists the maximal cliques of a network and its k-clique\n"
    " communities for every k, with their statistics.\n";
const std::string kUsageEnd = "  -h  help. More details about these options.\n";

// Everything Examin_params fills, starting from the values Process_input starts from.
struct Examined {
  bool lower_flag = false;
  double lower = 0.0;
  bool upper_flag = false;
  double upper = 0.0;
  bool digits_flag = false;
  std::uint32_t digits = 6;
  bool out_flag = false;
  std::string out_path;
  std::string input_file;
  bool help_flag = false;
  bool time_flag = false;
  double max_time = 0.0;
  bool directed = false;
  bool intensity_flag = false;
  double intensity = 0.0;
  bool fixed_k_flag = false;
  std::uint32_t fixed_k = 0;
  bool error_flag = false;
  std::string errors;
};

Examined Examine(std::vector<std::string> args) {
  args.insert(args.begin(), "./varnel");
  const ParamTable params(Switches(args).Params());
  Examined e;
  Examin_params(params, e.lower_flag, e.lower, e.upper_flag, e.upper, e.digits_flag, e.digits,
                e.out_flag, e.out_path, e.input_file, e.help_flag, e.time_flag, e.max_time,
                e.directed, e.intensity_flag, e.intensity, e.fixed_k_flag, e.fixed_k, e.error_flag,
                e.errors);
  return e;
}

// The outputs of one Process_input call, with what it printed and the message it threw.
struct Processed {
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
  std::string printed;
  bool threw = false;
  std::string thrown;
};

Processed Process(std::vector<std::string> args) {
  args.insert(args.begin(), "./varnel");
  std::vector<char*> argv;
  for (std::string& arg : args) argv.push_back(arg.data());
  argv.push_back(nullptr);
  const int argc = static_cast<int>(args.size());
  char** const vector = argv.data();
  Processed p;
  Cout_capture out;
  try {
    Process_input(argc, vector, p.out_dir, p.links, p.max_time, p.time_flag, p.directed,
                  p.intensity_flag, p.intensity, p.fixed_k_flag, p.fixed_k, p.weighted, p.com_flag,
                  p.alap_szoveg);
  } catch (const Xerror_msg& error) {
    p.threw = true;
    p.thrown = error.what();
  }
  p.printed = out.text();
  return p;
}

// The usage printed for the collected errors: banner, " Error:", the errors, the option list.
void Expect_usage_with(const Processed& p, const std::string& errors) {
  EXPECT_TRUE(p.threw);
  EXPECT_EQ(p.thrown, "");
  const std::string head =
      kBanner + "\n Error:\n" + errors + "\n Usage : ./varnel -i input_file \n";
  EXPECT_EQ(p.printed.substr(0, head.size()), head);
  ASSERT_GE(p.printed.size(), kUsageEnd.size());
  EXPECT_EQ(p.printed.substr(p.printed.size() - kUsageEnd.size()), kUsageEnd);
  EXPECT_TRUE(p.links.empty());
}

const std::string kUnknown = "unknown parameter in parameter list! (Check_keys()).\n";
const std::string kTime = " The maximal allowed time per node must be positive.\n";
const std::string kThresholds =
    " The sepcified lower threshold is higher (or equal to) the upper threshold.\n";
const std::string kDirectedIntensity =
    " The search algorithm cannot apply the link weight \n"
    " intensity condition when looking for directed communities.\n";
const std::string kIntensityTime =
    " The search algorithm cannot apply the maximal time \n"
    " per node condition when a link weight intensity condition is set as well.\n";
const std::string kBothWays =
    " The program cannot apply the dirrected and undirected\n search algorithm at the same time.\n";

TEST(ExaminParams, CollectsTheMessagesOfEveryWrongSwitch) {
  struct Case {
    std::vector<std::string> args;
    std::string errors;
  };
  const std::vector<Case> cases = {
      {{"-i", "a.txt", "-w", "0.1", "-W", "0.2", "-t", "1", "-U", "-k", "3"}, ""},
      {{"-i", "a.txt", "-o", " "}, ""},
      {{}, "You must specify an input file.\n"},
      // An unknown switch (a negative number is one, so is a value before the first switch)
      // is reported alone.
      {{"-i", "a.txt", "-x"}, kUnknown},
      {{"-h", "-t", "0", "-D", "-U", "-q"}, kUnknown},
      {{"x.txt", "-i", "a.txt"}, kUnknown},
      {{"-i", "a.txt", "-t", "-1"}, kUnknown},
      {{"-i", "-o", "-k"},
       " No value is given for switch -i.\n No value is given for switch -o.\n"
       " No value is given for switch -k.\n"},
      {{"-i", "a.txt", "-o", ""}, " Unable to interpret the value '' for switch -o.\n"},
      {{"-i", "a.txt", "-D", "yes", "-U", "-h", "now"}, kBothWays},
      {{"-i", "a.txt", "-w", "1", "-W", "1"}, kThresholds},
      {{"-i", "a.txt", "-w", "2", "-W", "1"}, kThresholds},
      {{"-i", "a.txt", "-t", "0"}, kTime},
      {{"-i", "a.txt", "-D", "-I", "0.3", "-t", "5"}, kDirectedIntensity + kIntensityTime},
      // Value messages in switch order, then the consistency messages.
      {{"-k", "x", "-I", "y", "-t", "z", "-d", "q", "-o", "", "-W", "v", "-w", "u", "-D"},
       "You must specify an input file.\n"
       " Unable to interpret the value 'u' for switch -w.\n"
       " Unable to interpret the value 'v' for switch -W.\n"
       " Unable to interpret the value '' for switch -o.\n"
       " Unable to interpret the value 'q' for switch -d.\n"
       " Unable to interpret the value 'z' for switch -t.\n"
       " Unable to interpret the value 'y' for switch -I.\n"
       " Unable to interpret the value 'x' for switch -k.\n" +
           kTime + kThresholds + kDirectedIntensity + kIntensityTime},
  };
  for (const Case& c : cases) {
    const Examined e = Examine(c.args);
    EXPECT_EQ(e.errors, c.errors) << ::testing::PrintToString(c.args);
    EXPECT_EQ(e.error_flag, !c.errors.empty()) << ::testing::PrintToString(c.args);
  }
  std::string errors = "before\n";
  EXPECT_FALSE(Check_switches(true, 0.0, true, true, 1.0, 1.0, true, true, true, errors));
  EXPECT_EQ(errors,
            "before\n" + kTime + kThresholds + kDirectedIntensity + kIntensityTime + kBothWays);
}

TEST(ExaminParams, ReadsEverySwitchIntoItsFlagAndValue) {
  const Examined e = Examine({"-i", "net.txt", "ignored", "-w", "0.2", "-W", "0.9", "-o", "out",
                              "-d", "2", "-t", "1.5", "-k", "3.6", "-U"});
  EXPECT_EQ(e.errors, "");
  EXPECT_EQ(e.input_file, "net.txt");
  EXPECT_TRUE(e.lower_flag && e.upper_flag && e.out_flag && e.digits_flag && e.time_flag &&
              e.fixed_k_flag);
  EXPECT_EQ(e.lower, 0.2);
  EXPECT_EQ(e.upper, 0.9);
  EXPECT_EQ(e.out_path, "out");
  EXPECT_EQ(e.digits, 2u);
  EXPECT_EQ(e.max_time, 1.5);
  EXPECT_EQ(e.fixed_k, 4u);
  EXPECT_FALSE(e.directed || e.intensity_flag || e.help_flag);
}

TEST(ResultsDirPath, DerivesTheNameFromInputThresholdsAndDirection) {
  const auto path = [](bool w, double lower, bool W, double upper, std::uint32_t digits, bool d) {
    return Results_dir_path("net.txt", w, lower, W, upper, digits, d, false, "", false, 0.0);
  };
  EXPECT_EQ(path(false, 0, false, 0, 6, false), "net.txt_files");
  EXPECT_EQ(path(true, 0.15, false, 0, 6, false), "net.txt_files_0.150000_w");
  EXPECT_EQ(path(false, 0, true, 1.35, 3, false), "net.txt_files_w_1.350");
  EXPECT_EQ(path(true, 0.2, true, 0.9, 1, true), "net.txt_files_0.2_w_0.9-d");
  EXPECT_EQ(path(true, 0.7, false, 0, 0, false), "net.txt_files_0_w");
  EXPECT_EQ(Results_dir_path("net.txt", false, 0, false, 0, 2, false, true, "out", true, 0.35),
            "out-w-th0.35");
  EXPECT_EQ(Results_dir_path("net.txt", true, 0.2, true, 0.5, 6, true, true, "out", false, 0),
            "out");
  for (int mask = 0; mask < 32; ++mask) {
    for (const std::uint32_t digits : {0u, 1u, 6u, 18u, 19u, 300u}) {
      const bool w = (mask & 1) != 0, big_w = (mask & 2) != 0, d = (mask & 4) != 0;
      const bool o = (mask & 8) != 0, i = (mask & 16) != 0;
      EXPECT_EQ(
          Results_dir_path_length("dir/net.txt", w, 0.9996, big_w, 12.5, digits, d, o, "out/x", i,
                                  0.35),
          Results_dir_path("dir/net.txt", w, 0.9996, big_w, 12.5, digits, d, o, "out/x", i, 0.35)
              .size())
          << mask << " " << digits;
    }
  }
  // "net.txt_files_0." then every decimal, then "_w": far more than one string could hold.
  EXPECT_EQ(Results_dir_path_length("net.txt", true, 0.0, false, 0, 4294967295u, false, false, "",
                                    false, 0),
            std::size_t{16} + 4294967295u + 2);
}

TEST(ProcessInput, UsageAndHelpAreThrownAfterPrintingThem) {
  Expect_usage_with(Process({}), "You must specify an input file.\n");
  Expect_usage_with(Process({"-i", "a.txt", "-x", "-h"}), kUnknown);
  Test_dir tmp;
  Write_file(tmp / "net.txt", "a b 1\n");
  Expect_usage_with(Process({"-i", tmp / "net.txt", "-o", ""}),
                    " Unable to interpret the value '' for switch -o.\n");
  // Help wins over every other error.
  const Processed p = Process({"-h"});
  EXPECT_TRUE(p.threw);
  const std::string head = " When using ./varnel you must specify at least the \n";
  EXPECT_EQ(p.printed.substr(0, head.size()), head);
  EXPECT_EQ(p.printed.substr(p.printed.size() - kBanner.size() - 4), "\n\n\n\n" + kBanner);
  EXPECT_EQ(Process({"-t", "0", "-D", "-U", "-w", "x", "-h"}).printed, p.printed);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(tmp.path()),
                          std::filesystem::directory_iterator()),
            1);
}

TEST(ProcessInput, ReadsTheLinksAsTheSwitchesSay) {
  Test_dir tmp;
  const std::string input = tmp / "net.txt";
  Write_file(input, "a b 0.5\nb c 0.1\nc a 0.9\n");
  Processed p = Process({"-i", input});
  EXPECT_FALSE(p.threw) << p.thrown;
  EXPECT_EQ(p.printed, "");
  EXPECT_EQ(p.out_dir, input + "_files");
  EXPECT_EQ(p.links, (LinkMap{{{"a", "b"}, 0.0}, {{"b", "c"}, 0.0}, {{"c", "a"}, 0.0}}));
  EXPECT_FALSE(p.weighted || p.time_flag || p.directed || p.intensity_flag || p.fixed_k_flag);
  EXPECT_EQ(p.com_flag, "");
  EXPECT_EQ(p.alap_szoveg, " from " + input +
                               "\n# at no lower link weight threshold,\n"
                               "# and at no upper link weight threshold.\n");
  EXPECT_FALSE(std::filesystem::exists(p.out_dir));

  p = Process({"-i", input, "-w", "0.2"});
  EXPECT_EQ(p.out_dir, input + "_files_0.200000_w");
  EXPECT_EQ(p.links, (LinkMap{{{"a", "b"}, 0.5}, {{"c", "a"}, 0.9}}));
  EXPECT_TRUE(p.weighted);
  EXPECT_EQ(p.alap_szoveg, " from " + input +
                               "\n# at a lower link weight threshold of 0.200000,\n"
                               "# and at no upper link weight threshold.\n");

  p = Process({"-i", input, "-o", tmp / "out", "-I", "0.35", "-d", "2"});
  EXPECT_EQ(p.out_dir, tmp / "out-w-th0.35");
  EXPECT_TRUE(p.weighted && p.intensity_flag);
  EXPECT_EQ(p.intensity, 0.35);
  EXPECT_EQ(p.com_flag, "intensity");

  p = Process({"-i", input, "-D", "-t", "2.5", "-k", "3.6"});
  EXPECT_EQ(p.out_dir, input + "_files-d");
  EXPECT_TRUE(p.directed && p.time_flag && p.fixed_k_flag);
  EXPECT_FALSE(p.weighted);
  EXPECT_EQ(p.max_time, 2.5);
  EXPECT_EQ(p.fixed_k, 4u);
  EXPECT_EQ(p.com_flag, "directed");
}

TEST(ProcessInput, NameBeyondPathMaxFailsAsItsCreationWouldWithItsStartShown) {
  Test_dir tmp;
  const std::string input = tmp / "a.txt";
  Write_file(input, "a b 0.8\n");
  // Every count of digits gives one name: its start, then as many zeros as asked for.
  for (const std::uint32_t digits : {5000u, 4294967295u}) {
    const Processed p = Process({"-i", input, "-w", "0", "-d", std::to_string(digits)});
    const std::string name_start = input + "_files_0." + std::string(200, '0');
    const std::size_t length = input.size() + 9 + std::size_t{digits} + 2;
    EXPECT_TRUE(p.threw);
    EXPECT_EQ(p.thrown, "ERROR: Make_dir() called with " + name_start.substr(0, 200) + "... (" +
                            std::to_string(length - 200) +
                            " more characters) and \npathname too long.");
    EXPECT_EQ(p.printed, "");
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(tmp.path()),
                          std::filesystem::directory_iterator()),
            1);
  // The link file is still read first: its failure comes before that of the name.
  EXPECT_THROW(Process({"-i", tmp / "none.txt", "-w", "0", "-d", "4294967295"}),
               Xep_file_not_found);
  EXPECT_FALSE(std::filesystem::exists(tmp / "none.txt_files"));
}

}  // namespace
}  // namespace kcp
