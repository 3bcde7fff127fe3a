// The switches and the run's parameters made of them. The end-to-end cases show the usage and
// help texts whole, with every consistency message, and the parameters record.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "cli/params_record.h"
#include "cli/run_params.h"
#include "cli/switches.h"
#include "core/xerror_msg.h"
#include "graph/link_reader.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/test_dir.h"
#include "tests/support/thrown.h"

namespace kcp {
namespace {

using testing::TestDir;
using testing::Write_file;

TEST(Switches, CollectsTheValuesAfterTheLastRepetitionOfEachSwitch) {
  const std::vector<std::pair<std::vector<std::string>, Switches::Table>> cases = {
      {{"prog", "-i", "a.txt", "b.txt", "-w"}, {{"-i", {"a.txt", "b.txt"}}, {"-w", {}}}},
      // Values before the first switch go under a name of their own; a lone dash is a value.
      {{"prog", "x.txt", "-i", "a.txt"}, {{"---noname", {"x.txt"}}, {"-i", {"a.txt"}}}},
      {{"prog", "-i", "-"}, {{"-i", {"-"}}}},
      {{"prog"}, {}},
      // A negative number is a switch.
      {{"prog", "-w", "-0.5"}, {{"-w", {}}, {"-0.5", {}}}},
      {{"prog", "-i", "a", "c", "-w", "1", "-i"}, {{"-i", {}}, {"-w", {"1"}}}},
  };
  for (const auto& [args, expected] : cases) {
    EXPECT_EQ(Switches(args).Params(), expected) << ::testing::PrintToString(args);
  }
  EXPECT_EQ(Switches(std::vector<std::string>{"./varnel", "-i"}).Prog_name(), "./varnel");
  EXPECT_THROW(Switches(std::vector<std::string>{}), Xerror_msg);
}

TEST(Switches, KeysAreTheElevenSwitchesAndAMissingOneIsALogicError) {
  const std::vector<std::string> all = {"prog", "-i", "a",   "-o", "b", "-w", "1",
                                        "-W",   "2",  "-h",  "-d", "3", "-t", "4",
                                        "-D",   "-I", "0.5", "-k", "4", "-U"};
  EXPECT_TRUE(Check_keys(ParamTable(Switches(all).Params())));
  for (const std::string odd : {"x.txt", "--i", "-x", "-1"}) {
    EXPECT_FALSE(Check_keys(ParamTable(Switches({"prog", odd, "-i", "a.txt"}).Params()))) << odd;
  }
  const ParamTable params(Switches::Table{{"-i", {"a.txt"}}});
  EXPECT_EQ(params["-i"], std::vector<std::string>{"a.txt"});
  try {
    params["-w"];
    FAIL() << "no exception";
  } catch (const std::logic_error& error) {  // not an Xerror_msg
    EXPECT_EQ(dynamic_cast<const Xerror_msg*>(&error), nullptr);
    EXPECT_STREQ(error.what(), "ERROR: gmap:: Missing Key in \n const T & gmap[] const.\n");
  }
}

// The outputs of one Process_input call, with what it printed and the message it threw.
struct Processed {
  std::string out_dir, com_flag, alap_szoveg, printed, thrown = "no exception";
  LinkMap links;
  double max_time = 0.0, intensity = 0.0;
  bool time_flag = false, directed = false, intensity_flag = false, fixed_k_flag = false, weighted;
  std::uint32_t fixed_k = 0;
};

Processed Process(std::vector<std::string> args) {
  args.insert(args.begin(), "./varnel");
  std::vector<char*> argv;
  for (std::string& arg : args) argv.push_back(arg.data());
  argv.push_back(nullptr);
  Processed p{};  // every flag false
  testing::CoutCapture out;
  try {
    Process_input(static_cast<int>(args.size()), argv.data(), p.out_dir, p.links, p.max_time,
                  p.time_flag, p.directed, p.intensity_flag, p.intensity, p.fixed_k_flag, p.fixed_k,
                  p.weighted, p.com_flag, p.alap_szoveg);
  } catch (const Xerror_msg& error) {
    p.thrown = error.what();
  }
  p.printed = out.text();
  return p;
}

// The error lines of the usage a run printed (and threw an empty message after).
std::string Errors(const std::vector<std::string>& args) {
  const Processed p = Process(args);
  EXPECT_EQ(p.thrown, "");
  const std::size_t from = p.printed.find("\n Error:\n"), to = p.printed.find("\n Usage :");
  return to == std::string::npos ? "no usage: " + p.printed
                                 : p.printed.substr(from + 9, to - from - 9);
}

const std::string kUnknown = "unknown parameter in parameter list! (Check_keys()).\n";
const std::string kTime = " The maximal allowed time per node must be positive.\n";
const std::string kThresholds =
    " The sepcified lower threshold is higher (or equal to) the upper threshold.\n";
const std::string kDirectedIntensity =
    " The search algorithm cannot apply the link weight \n"
    " intensity condition when looking for directed communities.\n";

TEST(ProcessInput, CollectsTheMessagesOfEveryWrongSwitch) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      // An unknown switch (a negative number is one) is reported alone.
      {{"-i", "a.txt", "-x", "-t", "0"}, kUnknown},
      {{"-i", "a.txt", "-w", "1", "-W", "1"}, kThresholds},
      {{"-i", "a.txt", "-w", "2", "-W", "1"}, kThresholds},
      {{"-i", "a.txt", "-t", "0"}, kTime},
      {{"-i", "a.txt", "-D", "-I", "0.3"}, kDirectedIntensity},
      // Value messages in switch order, then the consistency messages.
      {{"-d", "q", "-W", "v", "-w", "2", "-D", "-I", "0.3", "-k"},
       "You must specify an input file.\n Unable to interpret the value 'v' for switch -W.\n"
       " Unable to interpret the value 'q' for switch -d.\n No value is given for switch -k.\n" +
           kThresholds + kDirectedIntensity},
  };
  for (const auto& [args, errors] : cases) {
    EXPECT_EQ(Errors(args), errors) << ::testing::PrintToString(args);
  }
}

TEST(ProcessInput, ReadsTheLinksAsTheSwitchesSay) {
  TestDir tmp;
  const std::string input = tmp / "net.txt";
  Write_file(input, "a b 0.5\nb c 0.1\nc a 0.9\n");
  Processed p = Process({"-i", input});
  EXPECT_EQ(p.thrown + p.printed, "no exception");
  EXPECT_EQ(p.links, (LinkMap{{{"a", "b"}, 0.0}, {{"b", "c"}, 0.0}, {{"c", "a"}, 0.0}}));
  EXPECT_FALSE(p.weighted || p.time_flag || p.directed || p.intensity_flag || p.fixed_k_flag);
  EXPECT_FALSE(std::filesystem::exists(p.out_dir));  // made later, by the run

  p = Process({"-i", input, "-w", "0.2", "-W", "0.9", "-d", "2", "-U"});
  EXPECT_EQ(p.out_dir, input + "_files_0.20_w_0.90");
  EXPECT_TRUE(p.weighted && p.links == (LinkMap{{{"a", "b"}, 0.5}}));

  p = Process({"-i", input, "-o", tmp / "out", "-I", "0.35", "-d", "2", "-k", "3.6"});
  EXPECT_EQ(p.out_dir, tmp / "out-w-th0.35");
  EXPECT_TRUE(p.weighted && p.intensity_flag && p.fixed_k_flag);
  EXPECT_EQ(std::tuple(p.intensity, p.fixed_k, p.com_flag), std::tuple(0.35, 4u, "intensity"));

  p = Process({"-i", input, "ignored", "-D", "-t", "2.5"});
  EXPECT_TRUE(p.directed && p.time_flag && p.out_dir == input + "_files-d");
  EXPECT_EQ(std::tuple(p.max_time, p.com_flag), std::tuple(2.5, "directed"));
}

TEST(ResultsDirPath, LengthIsThatOfThePathWithoutWritingIt) {
  for (int mask = 0; mask < 32; ++mask) {
    for (const std::uint32_t digits : {0u, 1u, 6u, 18u, 19u, 300u}) {
      const bool w = (mask & 1) != 0, big_w = (mask & 2) != 0, d = (mask & 4) != 0;
      const bool o = (mask & 8) != 0, i = (mask & 16) != 0;
      EXPECT_EQ(
          Results_dir_path_length("d/n", w, 0.9996, big_w, 12.5, digits, d, o, "o/x", i, 0.35),
          Results_dir_path("d/n", w, 0.9996, big_w, 12.5, digits, d, o, "o/x", i, 0.35).size())
          << mask << " " << digits;
    }
  }
  // "net.txt_files_0." then every decimal, then "_w": far more than one string could hold.
  EXPECT_EQ(Results_dir_path_length("net.txt", true, 0.0, false, 0, 4294967295u, false, false, "",
                                    false, 0),
            std::size_t{16} + 4294967295u + 2);
  // -o replaces the derived name, so its thresholds at any count of decimals cost nothing.
  EXPECT_EQ(
      Results_dir_path("net.txt", true, 0.5, true, 5, 4294967295u, false, true, "res", false, 0),
      "res");
}

TEST(ProcessInput, NameBeyondPathMaxFailsAsItsCreationWouldAfterTheLinksAreRead) {
  TestDir tmp;
  const std::string input = tmp / "a.txt";
  Write_file(input, "a b 0.8\n");
  const Processed p = Process({"-i", input, "-w", "0", "-d", "5000"});
  EXPECT_EQ(p.printed + p.thrown, "ERROR: Make_dir() called with " +
                                      (input + "_files_0." + std::string(200, '0')).substr(0, 200) +
                                      "... (" + std::to_string(input.size() + 5011 - 200) +
                                      " more characters) and \npathname too long.");
  EXPECT_THROW(Process({"-i", tmp / "none.txt", "-w", "0", "-d", "4294967295"}),
               Xep_file_not_found);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(tmp.path()), {}), 1);
}

// A path that passes is made a directory holding an empty record, which a second run then finds.
TEST(ParamsRecord, OutDirMayBeMissingEmptyOrAFileAndIsThenTaken) {
  TestDir tmp;
  const std::string non_empty = "ERROR: the output directory already exists and it is non-empty.\n";
  std::filesystem::create_directories(tmp / "empty");
  Write_file(tmp / "plain", "x");
  for (const std::string name : {"missing/deeper", "empty", "plain"}) {
    EXPECT_NO_THROW(Check_out_dir(tmp / name)) << name;
    EXPECT_EQ(std::filesystem::file_size(tmp / (name + "/input_params.txt")), 0u) << name;
    EXPECT_EQ(testing::What<Xerror_msg>([&] { Check_out_dir(tmp / name); }), non_empty) << name;
  }
  EXPECT_EQ(testing::Read_file(tmp / "plain1"), "x");
  std::filesystem::create_directories(tmp / "hidden");
  Write_file(tmp / "hidden/.x", "");
  EXPECT_EQ(testing::What<Xerror_msg>([&] { Check_out_dir(tmp / "hidden"); }), non_empty);
  EXPECT_EQ(testing::Read_file(tmp / "hidden/.x"), "");
}

}  // namespace
}  // namespace kcp
