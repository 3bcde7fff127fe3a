#include "cli/switches.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "core/xerror_msg.h"

namespace kcp {
namespace {

using Values = std::vector<std::string>;
using Table = Switches::Table;

Table Parse(const std::vector<std::string>& args) {
  return Switches(args).Params();
}

TEST(Switches, CollectsTheValuesAfterTheLastRepetitionOfEachSwitch) {
  const std::vector<std::pair<std::vector<std::string>, Table>> cases = {
      {{"prog", "-i", "a.txt", "b.txt", "-w"}, {{"-i", {"a.txt", "b.txt"}}, {"-w", {}}}},
      // Values before the first switch go under a name of their own.
      {{"prog", "x.txt", "-i", "a.txt"}, {{"---noname", {"x.txt"}}, {"-i", {"a.txt"}}}},
      {{"prog", "-"}, {{"---noname", {"-"}}}},
      {{"prog"}, {}},
      // A negative number is a switch.
      {{"prog", "-w", "-0.5"}, {{"-w", {}}, {"-0.5", {}}}},
      {{"prog", "-i", "a", "-i", "b"}, {{"-i", {"b"}}}},
      {{"prog", "-i", "a", "c", "-w", "1", "-i"}, {{"-i", {}}, {"-w", {"1"}}}},
  };
  for (const auto& [args, expected] : cases) {
    EXPECT_EQ(Parse(args), expected) << ::testing::PrintToString(args);
  }
  EXPECT_EQ(Switches(std::vector<std::string>{"./varnel", "-i"}).Prog_name(), "./varnel");
}

TEST(Switches, RefusesAnArgumentListWithoutProgramName) {
  try {
    Switches parsed(std::vector<std::string>{});
    FAIL() << "no exception";
  } catch (const Xerror_msg& error) {
    EXPECT_STREQ(error.what(), " program name missing in Switches...\n");
  }
  char* argv[] = {nullptr};
  EXPECT_THROW(Switches(0, argv), Xerror_msg);
}

TEST(Gmap, ConstLookupOfAMissingKeyThrowsAPlainLogicError) {
  const ParamTable params(Table{{"-i", {"a.txt"}}});
  EXPECT_EQ(params["-i"], Values{"a.txt"});
  try {
    params["-w"];
    FAIL() << "no exception";
  } catch (const Xerror_msg&) {
    FAIL() << "gmap must not throw Xerror_msg";
  } catch (const std::logic_error& error) {
    EXPECT_STREQ(error.what(), "ERROR: gmap:: Missing Key in \n const T & gmap[] const.\n");
  }
  EXPECT_EQ(params.size(), 1u);
}

TEST(CheckKeys, AcceptsTheElevenSwitchesOnly) {
  EXPECT_TRUE(Check_keys(
      ParamTable(Parse({"prog", "-i", "a",  "-o", "b",  "-w", "1",   "-W", "2", "-h",
                        "-d",   "3",  "-t", "4",  "-D", "-I", "0.5", "-k", "4", "-U"}))));
  EXPECT_TRUE(Check_keys(ParamTable()));
  EXPECT_FALSE(Check_keys(ParamTable(Parse({"prog", "-i", "a.txt", "-x"}))));
  EXPECT_FALSE(Check_keys(ParamTable(Parse({"prog", "x.txt", "-i", "a.txt"}))));
  EXPECT_FALSE(Check_keys(ParamTable(Parse({"prog", "-i", "a.txt", "-t", "-1"}))));
  EXPECT_FALSE(Check_keys(ParamTable(Parse({"prog", "-i", "a.txt", "--i"}))));
}

}  // namespace
}  // namespace kcp
