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

NameMap Names() {
  return NameMap{{1, "a"}, {2, "b c"}, {3, "x"}, {4, "d"}, {5, "e"}};
}

TEST(CliqueOutput, ExactCliquesByNameEachFollowedByABlank) {
  Test_dir dir;
  NameMap names = Names();
  Kiir_cliques_VN(dir.path(), CliqueList{{1, 2, 3}, {3, 4, 5}}, names, 2, "", kDescription);
  EXPECT_EQ(Read_file(dir / "cliques"),
            "# The cliques from net.txt\n# second line of the run\n\n"
            "0: a b c x \n"
            "1: x d e \n");
}

TEST(CliqueOutput, DirectedRunNamesItsFileAndHeader) {
  Test_dir dir;
  NameMap names = Names();
  Kiir_cliques_VN(dir.path(), CliqueList{{1, 4, 5}}, names, 1, "directed", kDescription);
  EXPECT_EQ(Read_file(dir / "directed_cliques"),
            "# The directed cliques from net.txt\n# second line of the run\n\n0: a d e \n");
  EXPECT_FALSE(std::filesystem::exists(dir / "cliques"));
}

TEST(CliqueOutput, IntensityRunSharesThePlainFile) {
  Test_dir dir;
  NameMap names = Names();
  Kiir_cliques_VN(dir.path(), CliqueList{{1, 4, 5}}, names, 1, "intensity", kDescription);
  EXPECT_EQ(Read_file(dir / "cliques"),
            "# The cliques from net.txt\n# second line of the run\n\n0: a d e \n");
  EXPECT_FALSE(std::filesystem::exists(dir / "intensity_cliques"));
}

TEST(CliqueOutput, ApproximateCliquesCarryMinusAndTheirListPosition) {
  Test_dir dir;
  NameMap names = Names();
  Kiir_cliques_VN(dir.path(), CliqueList{{1, 2, 3}, {3, 4, 5}, {1, 5}, {2}}, names, 2, "",
                  kDescription);
  EXPECT_EQ(Read_file(dir / "cliques"),
            "# The cliques from net.txt\n# second line of the run\n"
            "# Negative indices indicate approximate cliques.\n\n"
            "0: a b c x \n"
            "1: x d e \n"
            "-2: a e \n"
            "-3: b c \n");

  NameMap more = Names();
  Kiir_cliques_VN(dir.path(), CliqueList{{4, 5}, {1, 2}}, more, 0, "", kDescription);
  EXPECT_EQ(Read_file(dir / "cliques"),
            "# The cliques from net.txt\n# second line of the run\n"
            "# Negative indices indicate approximate cliques.\n\n"
            "-0: d e \n"
            "-1: a b c \n");
}

TEST(CliqueOutput, EmptyListWritesTheHeaderAndTheEmptyLineOnly) {
  Test_dir dir;
  NameMap names;
  Kiir_cliques_VN(dir.path(), CliqueList{}, names, 0, "", kDescription);
  EXPECT_EQ(Read_file(dir / "cliques"), "# The cliques from net.txt\n# second line of the run\n\n");
}

TEST(CliqueOutput, ExactCountBeyondTheListWritesEveryCliqueAsExact) {
  Test_dir dir;
  NameMap names = Names();
  Kiir_cliques_VN(dir.path(), CliqueList{{1, 4, 5}}, names, 3, "", kDescription);
  EXPECT_EQ(Read_file(dir / "cliques"),
            "# The cliques from net.txt\n# second line of the run\n\n0: a d e \n");
}

TEST(CliqueOutput, UnknownIndexPrintsAnEmptyNameAndIsAddedToTheMap) {
  Test_dir dir;
  NameMap names = Names();
  Kiir_cliques_VN(dir.path(), CliqueList{{1, 4, 99}}, names, 1, "", kDescription);
  EXPECT_EQ(Read_file(dir / "cliques"),
            "# The cliques from net.txt\n# second line of the run\n\n0: a d  \n");
  EXPECT_EQ(names.at(99), "");
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
            "# The cliques from net.txt\n# second line of the run\n\n0: a b c x \n");

  const std::string fresh = dir / "fresh";
  Kiir_cliques_VN(fresh, CliqueList{{3, 4, 5}}, names, 1, "directed", kDescription);
  EXPECT_EQ(Read_file(fresh + "/directed_cliques"),
            "# The directed cliques from net.txt\n# second line of the run\n\n0: x d e \n");
}

}  // namespace
}  // namespace kcp
