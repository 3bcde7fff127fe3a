#include "cli/switches.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/xerror_msg.h"

namespace kcp {
namespace {

using Values = std::vector<std::string>;
using Table = Switches::Table;

Table Parse(const std::vector<std::string>& args) {
  return Switches(args).Params();
}

TEST(Switches, CollectsEveryValueUnderThePrecedingSwitch) {
  const Switches parsed(std::vector<std::string>{"prog", "-i", "a.txt", "b.txt", "-w"});
  EXPECT_EQ(parsed.Prog_name(), "prog");
  EXPECT_EQ(parsed.Params(), (Table{{"-i", {"a.txt", "b.txt"}}, {"-w", {}}}));
}

TEST(Switches, PutsValuesBeforeTheFirstSwitchUnderNoname) {
  EXPECT_EQ(Parse({"prog", "x.txt", "-i", "a.txt"}),
            (Table{{"---noname", {"x.txt"}}, {"-i", {"a.txt"}}}));
  EXPECT_EQ(Parse({"prog", "-"}), (Table{{"---noname", {"-"}}}));
  EXPECT_EQ(Parse({"prog"}), Table{});
}

TEST(Switches, TakesANegativeNumberForASwitch) {
  EXPECT_EQ(Parse({"prog", "-w", "-0.5"}), (Table{{"-w", {}}, {"-0.5", {}}}));
}

TEST(Switches, KeepsOnlyTheValuesAfterTheLastRepetition) {
  EXPECT_EQ(Parse({"prog", "-i", "a", "-i", "b"}), (Table{{"-i", {"b"}}}));
  EXPECT_EQ(Parse({"prog", "-i", "a", "c", "-w", "1", "-i"}), (Table{{"-i", {}}, {"-w", {"1"}}}));
}

TEST(Switches, ReadsTheProcessArgumentVector) {
  char prog[] = "./varnel";
  char i[] = "-i";
  char file[] = "net.txt";
  char* argv[] = {prog, i, file, nullptr};
  const Switches parsed(3, argv);
  EXPECT_EQ(parsed.Prog_name(), "./varnel");
  EXPECT_EQ(parsed.Params(), (Table{{"-i", {"net.txt"}}}));
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

TEST(Gmap, NonConstLookupInserts) {
  ParamTable params;
  params["-D"].push_back("x");
  EXPECT_EQ(params.size(), 1u);
  EXPECT_EQ(std::as_const(params)["-D"], Values{"x"});
}

TEST(GetParam, ConvertsTheFirstValueAndIgnoresTheRest) {
  const ParamTable params(Table{{"-i", {"a.txt", "b.txt"}}, {"-k", {"3.6"}}, {"-w", {"0.25"}}});
  std::string errors = "kept";
  bool error_flag = false;
  std::string file;
  std::uint32_t k = 0;
  double w = 0.0;
  Get_param(file, "-i", params, errors, error_flag);
  Get_param(k, "-k", params, errors, error_flag);
  Get_param(w, "-w", params, errors, error_flag);
  EXPECT_EQ(file, "a.txt");
  EXPECT_EQ(k, 4u);
  EXPECT_EQ(w, 0.25);
  EXPECT_EQ(errors, "kept");
  EXPECT_FALSE(error_flag);
}

TEST(GetParam, AppendsAMessageForASwitchWithoutValue) {
  const ParamTable params(Parse({"prog", "-i", "a.txt", "b.txt", "-w"}));
  std::string errors = "earlier\n";
  bool error_flag = false;
  double w = 7.0;
  Get_param(w, "-w", params, errors, error_flag);
  EXPECT_EQ(errors, "earlier\n No value is given for switch -w.\n");
  EXPECT_TRUE(error_flag);
  EXPECT_EQ(w, 7.0);
}

TEST(GetParam, AppendsAMessageForAnUnreadableValue) {
  const ParamTable params(Table{{"-w", {"abc"}}, {"-d", {"-"}}});
  std::string errors;
  bool error_flag = false;
  double w = 7.0;
  std::uint32_t d = 6;
  Get_param(w, "-w", params, errors, error_flag);
  Get_param(d, "-d", params, errors, error_flag);
  EXPECT_EQ(errors,
            " Unable to interpret the value 'abc' for switch -w.\n"
            " Unable to interpret the value '-' for switch -d.\n");
  EXPECT_TRUE(error_flag);
  EXPECT_EQ(w, 7.0);
  EXPECT_EQ(d, 6u);
}

TEST(GetParam, ThrowsForAnAbsentSwitch) {
  const ParamTable params;
  std::string errors;
  bool error_flag = false;
  double w = 0.0;
  EXPECT_THROW(Get_param(w, "-w", params, errors, error_flag), std::logic_error);
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
