#include "cliques/clique_output.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Read_file;
using testing::Test_dir;

const std::string kDescription = " from net.txt\n# second line of the run\n";
const std::string kSecondLine = "# second line of the run\n";

NameMap Names() {
  return NameMap{{1, "a"}, {2, "b c"}, {3, "x"}, {4, "d"}, {5, "e"}};
}

TEST(CliqueOutput, WritesEveryCliqueByNameUnderTheHeaderOfItsKind) {
  const std::string plain = "# The cliques from net.txt\n" + kSecondLine;
  const std::string approximate = plain + "# Negative indices indicate approximate cliques.\n\n";
  const struct {
    const char* name;
    CliqueList cliques;
    std::uint32_t n_exact;
    std::string kind;
    std::string file;
    std::string absent;
    std::string expected;
  } cases[] = {
      {"exact, each name followed by a blank",
       {{1, 2, 3}, {3, 4, 5}},
       2,
       "",
       "cliques",
       "",
       plain + "\n0: a b c x \n1: x d e \n"},
      {"directed",
       {{1, 4, 5}},
       1,
       "directed",
       "directed_cliques",
       "cliques",
       "# The directed cliques from net.txt\n" + kSecondLine + "\n0: a d e \n"},
      {"intensity shares the plain file",
       {{1, 4, 5}},
       1,
       "intensity",
       "cliques",
       "intensity_cliques",
       plain + "\n0: a d e \n"},
      {"approximate carry minus and their position",
       {{1, 2, 3}, {3, 4, 5}, {1, 5}, {2}},
       2,
       "",
       "cliques",
       "",
       approximate + "0: a b c x \n1: x d e \n-2: a e \n-3: b c \n"},
      {"only approximate",
       {{4, 5}, {1, 2}},
       0,
       "",
       "cliques",
       "",
       approximate + "-0: d e \n-1: a b c \n"},
      {"empty list", {}, 0, "", "cliques", "", plain + "\n"},
      {"exact count beyond the list", {{1, 4, 5}}, 3, "", "cliques", "", plain + "\n0: a d e \n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Test_dir dir;
    NameMap names = Names();
    Kiir_cliques_VN(dir.path(), c.cliques, names, c.n_exact, c.kind, kDescription);
    EXPECT_EQ(Read_file(dir / c.file), c.expected);
    if (!c.absent.empty()) {
      EXPECT_FALSE(std::filesystem::exists(dir / c.absent));
    }
  }
}

TEST(CliqueOutput, UnknownIndexPrintsAnEmptyName) {
  Test_dir dir;
  NameMap names = Names();
  Kiir_cliques_VN(dir.path(), CliqueList{{1, 4, 99}}, names, 1, "", kDescription);
  EXPECT_EQ(Read_file(dir / "cliques"),
            "# The cliques from net.txt\n" + kSecondLine + "\n0: a d  \n");
}

TEST(CliqueOutput, CreatesTheDirectoryAndKeepsWhatIsInIt) {
  Test_dir dir;
  const std::string results = dir / "results";
  std::filesystem::create_directory(results);
  testing::Write_file(results + "/graph", "kept\n");
  NameMap names = Names();
  Kiir_cliques_VN(results, CliqueList{{1, 2, 3}}, names, 1, "", kDescription);
  EXPECT_EQ(Read_file(results + "/graph"), "kept\n");
  EXPECT_EQ(Read_file(results + "/cliques"),
            "# The cliques from net.txt\n" + kSecondLine + "\n0: a b c x \n");

  const std::string fresh = dir / "fresh";
  Kiir_cliques_VN(fresh, CliqueList{{3, 4, 5}}, names, 1, "directed", kDescription);
  EXPECT_EQ(Read_file(fresh + "/directed_cliques"),
            "# The directed cliques from net.txt\n" + kSecondLine + "\n0: x d e \n");
}

}  // namespace
}  // namespace kcp
