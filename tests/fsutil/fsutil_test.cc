// The file-system layer: paths, result files, and preparing, renaming and deleting under each
// policy with the dialogues of the interactive one (an answer is the first non-blank character
// or word typed; anything else, and the end of the input, stops). Trees read "d/" "d/f=text".
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>

#include "core/xerror_msg.h"
#include "fsutil/dir_claim.h"
#include "fsutil/dir_prepare.h"
#include "fsutil/path_query.h"
#include "fsutil/result_file.h"
#include "tests/support/test_dir.h"
#include "tests/support/thrown.h"

namespace kcp {
namespace {

namespace fs = std::filesystem;
using testing::Read_file;
using testing::TestDir;
using testing::Write_file;

const std::string kNoEntry = "A component of the path file_name does not exist.";
const std::string kNotDir = "A component of the path is not a directory.";
const std::string kStopped = "stopped interactively by user.";

// Feeds a fixed text to std::cin and captures std::cout while it lives.
class ConsoleSession {
 public:
  explicit ConsoleSession(const std::string& input)
      : in_(input), old_in_(std::cin.rdbuf(in_.rdbuf())), old_out_(std::cout.rdbuf(out_.rdbuf())) {
    std::cin.clear();
  }
  ~ConsoleSession() {
    std::cin.rdbuf(old_in_);
    std::cout.rdbuf(old_out_);
    std::cin.clear();
  }
  std::string Output() const { return out_.str(); }

 private:
  std::istringstream in_;
  std::ostringstream out_;
  std::streambuf* old_in_;
  std::streambuf* old_out_;
};

void Make(const std::string& root, const std::string& tree) {
  std::istringstream in(tree);
  for (std::string e; in >> e;) {
    const std::size_t end = e.find('=');
    fs::create_directories(fs::path(root + e.substr(0, end)).parent_path());
    if (end != std::string::npos) Write_file(root + e.substr(0, end), e.substr(end + 1));
  }
}

// The tree below root, sorted.
std::string Listing(const std::string& root) {
  std::set<std::string> entries;
  for (const auto& e : fs::recursive_directory_iterator(root)) {
    const std::string name = fs::relative(e.path(), root).string();
    entries.insert(e.is_directory() ? name + "/" : name + "=" + Read_file(e.path()));
  }
  std::string listing;
  for (const std::string& e : entries) listing += (listing.empty() ? "" : " ") + e;
  return listing;
}

std::string Text(const DirListing& listing) {
  std::string text;
  for (const auto& [name, type] : listing) text += name + ":" + type + " ";
  return text;
}

// Links are followed; a file is empty when it has no byte (the dialogues below show it), a
// directory only when it reports the size 48, which few file systems do.
TEST(PathQuery, TellsTypeEmptinessAndWhyAPathIsMissing) {
  TestDir dir;
  Make(dir / "", "full.txt=12 d/");
  fs::create_symlink(dir / "full.txt", dir / "to_file");
  std::string type, message;
  bool empty = true;
  EXPECT_TRUE(Is_there_such_path(dir / "to_file", type, empty, message) && !empty &&
              type == "file");
  EXPECT_FALSE(Is_there_such_path(dir / "full.txt/below", type, empty, message));
  EXPECT_EQ(std::tuple(type, empty, message), std::tuple("other", true, kNotDir));
  EXPECT_FALSE(Is_there_such_file(dir / "d", empty, message));
  EXPECT_EQ(message, "The path " + (dir / "d") + " is a dir.");
  EXPECT_TRUE(Is_there_such_dir(dir / "d") && !Is_there_such_dir(dir / "full.txt"));
}

// (The end-to-end cases show the failures of real paths, shortened ones among them.)
TEST(MakeDir, CreatesEveryMissingDirectoryWithMode0755AndNamesAFailedOne) {
  TestDir dir;
  const mode_t old_mask = umask(022);
  Make_dir(dir / "a/b/c");
  umask(old_mask);
  for (const std::string& p : {dir / "a", dir / "a/b", dir / "a/b/c"}) {
    EXPECT_EQ(fs::status(p).permissions(), fs::perms(0755)) << p;
  }
  Write_file(dir / "a/b/keep.txt", "kept");
  for (const std::string p : {"a/b", "x/y/", "p//q"}) Make_dir(dir / p);
  EXPECT_NO_THROW(Make_dir(""));
  EXPECT_EQ(Listing(dir.path()), "a/ a/b/ a/b/c/ a/b/keep.txt=kept p/ p/q/ x/ x/y/");
  const std::string too_long = dir / ("new/" + std::string(300, 'n') + "/z");
  EXPECT_EQ(testing::What<Xerror_msg>([&] { Make_dir(too_long); }),
            "ERROR: Make_dir() called with " + too_long + " and \npathname too long.");
  EXPECT_TRUE(fs::is_directory(dir / "new"));
  EXPECT_EQ(Make_dir_failure(std::string(4095, 'a'), 4095, ENOENT),
            "ERROR: Make_dir() called with " + std::string(4095, 'a') + " and \n" + kNoEntry);
  // Only the start of a path of billions of characters is at hand.
  EXPECT_EQ(Make_dir_failure(std::string(250, 'd'), 4294967320u, ENOENT),
            "ERROR: Make_dir() called with " + std::string(200, 'd') +
                "... (4294967120 more characters) and \n" + kNoEntry);
}

// What a run claims its results directory with: the directory above it, made if missing (a
// component that cannot be made is left to the Make_dir of the whole path), and a first file that
// only one caller can create.
TEST(DirClaim, FindsAndMakesTheParentAndCreatesAFileOnce) {
  for (const auto& [path, parent] : std::vector<std::pair<std::string, std::string>>{
           {"a/b/c", "a/b"}, {"c", "."}, {"/c", "/"}, {"a//b//", "a"}, {"/", "/"}}) {
    EXPECT_EQ(Parent_dir(path), parent) << path;
  }
  TestDir dir;
  Write_file(dir / "file", "x");
  Make_parent_dirs(dir / "a/b/res");
  Make_parent_dirs(dir / "file/b/res");
  EXPECT_EQ(Listing(dir.path()), "a/ a/b/ file=x");
  const int other = open((dir / "a").c_str(), O_RDONLY);
  {
    const DirLock lock(dir / "a");
    EXPECT_NE(flock(other, LOCK_EX | LOCK_NB), 0);
  }
  EXPECT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
  close(other);
  EXPECT_TRUE(Claim_file(dir / "a/first"));
  EXPECT_FALSE(Claim_file(dir / "a/first"));
  fs::create_symlink(dir / "nowhere", dir / "a/link");
  EXPECT_TRUE(Entry_exists(dir / "a/link"));
  EXPECT_FALSE(Claim_file(dir / "a/link"));
  EXPECT_TRUE(Claim_file(dir / "missing/first"));  // another failure is the writer's to meet
  EXPECT_EQ(Listing(dir / "a"), "b/ first= link=");
}

// Relative paths start at the working directory; a final "." or ".." is kept, and ".." also
// removes the empty first component that stands for the root.
TEST(GetTotalPath, ResolvesDotsAgainstTheWorkingDirectory) {
  const std::string cwd = fs::current_path().string();
  const std::string up = fs::current_path().parent_path().string();
  const std::pair<std::string, std::string> cases[] = {{"net.txt", cwd + "/net.txt"},
                                                       {"../bob/x", up + "/bob/x"},
                                                       {"./d/n", cwd + "/d/n"},
                                                       {"d/../e/./f", cwd + "/e/f"},
                                                       {"d/", cwd + "/d"},
                                                       {".", cwd + "/."},
                                                       {"..", cwd + "/.."},
                                                       {"/a/b/..", "/a/b/.."},
                                                       {"/a/../b", "/b"},
                                                       {"/a/b/", "/a/b"},
                                                       {"/a//b", "/a//b"},
                                                       {"/", "/"},
                                                       {"", ""},
                                                       {"/../x", "x"}};
  for (const auto& [path, expected] : cases) EXPECT_EQ(Get_total_path(path), expected) << path;
}

// Entries in alphasort order without "." and "..", types after following links; recursively,
// each subtree comes reversed in front of its directory.
TEST(ListDir, EntriesInAlphasortOrderAndSubtreesReversedInFront) {
  TestDir dir;
  Make(dir / "", "r/b= r/.hidden= r/C/ r/d/x= r/d/e/z= r/d/e/y= r/d/f/");
  fs::create_directory_symlink(dir / "r/d", dir / "r/link");
  ASSERT_EQ(mkfifo((dir / "r/pipe").c_str(), 0644), 0);
  EXPECT_EQ(Text(List_dir(dir / "r")), ".hidden:file C:dir b:file d:dir link:dir pipe:other ");
  EXPECT_EQ(Text(List_dir_rec(dir / "r/d")), "e/z:file e/y:file e:dir f:dir x:file ");
  EXPECT_EQ(testing::What<Xerror_msg>([&] { List_dir(dir / "r/b"); }),
            "ERROR: List_dir() called on " + (dir / "r/b") + " and\nThe path " + (dir / "r/b") +
                " is a file.");
  fs::create_symlink(dir / "gone", dir / "r/d/e/dangling");
  EXPECT_EQ(testing::What<Xerror_msg>([&] { List_dir(dir / "r/d/e"); }),
            "ERROR: problem with " + (dir / "r/d/e/dangling") + " in List_dir():\n" + kNoEntry);
}

// Cannot run as root: root reads every directory whatever its permissions.
TEST(ListDir, UnreadableDirectoryReportsTheScandirFailure) {
  if (geteuid() == 0) GTEST_SKIP() << "root reads every directory";
  TestDir dir;
  Make(dir / "", "locked/f=");
  ASSERT_EQ(chmod((dir / "locked").c_str(), 0), 0);
  EXPECT_EQ(
      testing::What<Xerror_msg>([&] { List_dir(dir / "locked"); }),
      "ERROR: List_dir() -> scandir() called on " + (dir / "locked") + " and\nPermission denied.");
  chmod((dir / "locked").c_str(), 0755);
}

// The recursive listing puts d2/e before d2/e/h, and q/w/e before q/w/e/r; a link inside is
// unlinked, not followed.
TEST(DeleteDir, RemovesDeepTreesAndOnlyTheirKind) {
  TestDir dir;
  Make(dir / "", "r/d2/e/h/z= r/q/w/e/r/t/ r/empty/ other=o d/f=");
  fs::create_symlink(dir / "other", dir / "r/to_file");
  Delete_dir(dir / "r");
  EXPECT_EQ(testing::What<Xerror_msg>([&] { Delete_dir(dir / "r"); }),
            "ERROR: List_dir() called on " + (dir / "r") + " and\n" + kNoEntry);
  EXPECT_THROW(Unlink_file(dir / "d"), Xerror_msg);
  EXPECT_THROW(Remove_dir(dir / "d"), Xerror_msg);
  Unlink_file(dir / "d/f");
  Remove_dir(dir / "d");
  EXPECT_EQ(Listing(dir.path()), "other=o");
}

// The directory is made (a file in its place moved aside), an old file truncated, output beyond
// the buffer written whole; a failed write throws on Close() only, an unopenable path is skipped.
TEST(ResultFile, WritesExactlyAndReportsAFailedWriteOnClose) {
  TestDir dir;
  Make(dir / "", "res/k3=old");
  ResultFile file(dir / "res/k3", "communities");
  file << "# header\n" << 12 << ' ' << "x y \n";
  file.out() << "last\n";
  file.Close();
  EXPECT_EQ(Listing(dir / "res"), "k3/ k3/communities=# header\n12 x y \nlast\n k31=old");
  ResultFile big(dir / "res/k3", "communities");
  for (int i = 0; i < 300000; ++i) big << i << " \n";
  big.Close();
  const std::string written = Read_file(dir / "res/k3/communities");
  EXPECT_TRUE(written.size() == 2288890u && written.ends_with("\n299998 \n299999 \n"));

  // The reason is the failed write's, whether that came at the close, beyond the staging buffer,
  // or in the stream's own formatting.
  for (const int how : {0, 1, 2}) {
    ResultFile full("/dev/full");
    for (int i = 0; i < (how == 0 ? 1 : 300000); ++i) {
      if (how == 2) {
        full.out() << 0.5 << ' ';
      } else {
        full << "no room for this\n";
      }
    }
    EXPECT_EQ(testing::What<Xerror_msg>([&] { full.Close(); }),
              "ERROR: could not write the whole of '/dev/full': No space left on device.")
        << how;
    EXPECT_NO_THROW(full.Close());
  }
  EXPECT_NO_THROW(ResultFile("/dev/full") << "lost in the destructor\n");
  for (const std::string& path : {dir / "missing/out.txt", dir.path()}) {
    EXPECT_NO_THROW(ResultFile(path).Close());
  }
  EXPECT_FALSE(fs::exists(dir / "missing"));
  EXPECT_EQ(testing::What<Xerror_msg>([&] { ResultFile(dir / "res/k31/x", "graph"); }),
            "ERROR: Make_dir() called with " + (dir / "res/k31/x") + " and \n" + kNotDir);
}

struct Scenario {
  std::string before;                                // the tree made first
  std::function<void(const std::string& root)> act;  // root ends with '/'
  std::string input;                                 // typed at the console; @ is root
  std::string after;                                 // the tree left
  std::string thrown = "";                           // the message of the error, if any
  std::string printed = "";  // when given or without input: exactly what was printed
};

std::string With_root(std::string text, const std::string& root) {
  for (std::size_t at; (at = text.find('@')) != std::string::npos;) text.replace(at, 1, root);
  return text;
}

const std::string kOut = "Dir_prepare():\nThe @out is already a ";
const std::string kKeepClear =
    "Do you wish to \n keep the contents (k),\n clear it (c),\n or stop (any other key)?\n";
const std::string kOverRename =
    "Do you wish to \n overwrite it (o),\n rename it (r),\n or stop (any other key)?\n";
const std::string kTaken = "Rename_path():\nThe specified new path @";
const std::string kOverChange =
    " already exists.\nDo you wish to \n overwrite (o),\n change the destination path (c),\n or "
    "stop (any other key)?\n";
const std::string kNewDestination = "Please type in the new destination path:\n";
const std::string kDelRename =
    "\nDo you wish to \n delete (d),\n rename (r), or stop (any other key)?\n";

TEST(FsutilPolicies, EachScenarioLeavesItsTreeAndSaysItsText) {
  const auto prepare = [](std::string policy) {
    return [policy](const std::string& r) { Dir_prepare(r + "out", policy); };
  };
  const auto rename = [](std::string policy) {
    return [policy](const std::string& r) { Rename_path(r + "a", r + "b", policy); };
  };
  const Scenario scenarios[] = {
      {"", prepare("tidy"), "", "", "ERROR: Dir_prepare() called with unknown flag 'tidy'"},
      {"", [](auto r) { Dir_prepare(r + "out/x", "clear"); }, "", "out/ out/x/"},
      {"out/a/f=f", prepare("keep"), "", "out/ out/a/ out/a/f=f"},
      {"out/a/f=f", prepare("clear"), "", "out/"},
      // A file in the way moves to the first free number under "keep".
      {"out=old out1=1", prepare("keep"), "", "out/ out1=1 out2=old"},
      {"out=old", prepare("clear"), "", "out/"},
      {"out/f=f", prepare("interactive"), "\n \tk", "out/ out/f=f", "",
       kOut + "dir, and it is not empty.\n" + kKeepClear},
      {"out/f=f", prepare("interactive"), "c", "out/"},
      {"out/f=f", prepare("interactive"), " \n ", "out/ out/f=f", kStopped},
      {"out=", prepare("interactive"), "o", "out/", "",
       kOut + "file, and it is empty.\n" + kOverRename},
      {"out=", prepare("interactive"), "r", "out=", kStopped},
      // The new name is taken: the rename dialogue follows.
      {"out=old b=b", prepare("interactive"), "r @b o", "b=old out/", "",
       kOut + "file, and it is not empty.\n" + kOverRename + "Please type in the new path:\n" +
           kTaken + "b" + kOverChange},
      {"", rename("tidy"), "", "", "ERROR: Rename_path() called with unknown flag'tidy'"},
      {"", rename("force"), "", "", "ERROR: Rename_path() called on @a and \n" + kNoEntry},
      {"a=a", rename("interactive"), "", "b=a"},
      {"a=new b=old", rename("force"), "", "b=new"},
      {"a=new b=old b1=1", rename("silent"), "", "b1=1 b2=old b=new"},
      {"a=new b=old", rename("interactive"), " o", "b=new", "", kTaken + "b" + kOverChange},
      {"a=new b=old c=c", rename("interactive"), "c @c c @d", "b=old c=c d=new", "",
       kTaken + "b" + kOverChange + kNewDestination + kTaken + "c" + kOverChange + kNewDestination},
      {"a=new b=old", rename("interactive"), "c", "a=new b=old", kStopped},
      {"", [](auto r) { Del_file(r + "f", "keep"); }, "", "",
       "ERROR: Del_file() called with unknown flag 'keep'."},
      {"f=x t/a=a", [](auto r) { Del_file(r + "f", "silent"), Del_dir(r + "t", "silent"); }, "",
       ""},
      {"t/a=a", [](auto r) { Del_file(r + "t", "force"); }, "", ""},
      {"t/a=a", [](auto r) { Del_file(r + "t", "silent"); }, "", "t1/ t1/a=a"},
      {"f=x", [](auto r) { Del_dir(r + "f", "force"); }, "", ""},
      {"f=x", [](auto r) { Del_dir(r + "f", "silent"); }, "", "f1=x"},
      {"t/a=a", [](auto r) { Del_file(r + "t"); }, "d", "", "",
       "Del_file():\nThe path @t  is a directory." + kDelRename},
      {"t/a=a", [](auto r) { Del_file(r + "t", "interactive"); }, "r @u", "u/ u/a=a", "",
       "Del_file():\nThe path @t  is a directory." + kDelRename + "Please type in the new name:\n"},
      {"t/a=a", [](auto r) { Del_file(r + "t"); }, "D", "t/ t/a=a", kStopped},
      {"f=x", [](auto r) { Del_dir(r + "f"); }, "\n d", "", "",
       "Del_dir():\nThe path @f  is not a directory." + kDelRename},
      {"f=x", [](auto r) { Del_dir(r + "f"); }, "x", "f=x", kStopped},
      {"f=x t/a=a", [](auto r) { Del_path(r + "f"), Del_path(r + "t"); }, "", ""},
  };
  for (const Scenario& s : scenarios) {
    testing::TestDir dir;
    const std::string root = dir.path() + "/";
    Make(root, s.before);
    ConsoleSession console(With_root(s.input, root));
    const std::string thrown = testing::What<Xerror_msg>([&] { s.act(root); });
    const std::string trace = "from '" + s.before + "' with '" + s.input + "'";
    EXPECT_EQ(thrown, s.thrown.empty() ? "no exception" : With_root(s.thrown, root)) << trace;
    EXPECT_EQ(Listing(dir.path()), s.after) << trace;
    if (!s.printed.empty() || s.input.empty()) {
      EXPECT_EQ(console.Output(), With_root(s.printed, root)) << trace;
    }
  }
}

}  // namespace
}  // namespace kcp
