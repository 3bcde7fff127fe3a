// Claiming a results directory when several runs may start on it at once. A DirLock holds an
// exclusive lock on a directory, the one above the results directory, while it lives, so that one
// run checks, prepares and claims the results directory before the next one looks at it; where no
// lock can be had (an unreadable directory, a file system without locks, a lock held for seconds)
// it holds none, and Claim_file still lets only one run through. Nothing here throws.
#pragma once

#include <string>

namespace kcp {

// The directory that holds `path`: "a/b/c" gives "a/b", "c" gives ".", "/c" gives "/".
std::string Parent_dir(const std::string& path);

// Makes the missing directories above `path` with Make_dir, quietly: one that cannot be made is
// left for the Make_dir of `path` itself, which then fails on it and says why. A directory that
// another process makes at the same time is no failure.
void Make_parent_dirs(const std::string& path);

class DirLock {
 public:
  explicit DirLock(const std::string& dir);
  ~DirLock();
  DirLock(const DirLock&) = delete;
  DirLock& operator=(const DirLock&) = delete;

 private:
  int fd_ = -1;
};

// Whether anything stands at `path`; a symbolic link counts, wherever it points.
bool Entry_exists(const std::string& path);

// Creates `path` as an empty file in one step that fails if anything stands there: false in that
// case only (another got there first). A failure of any other kind returns true and leaves the
// path to the writer that opens it next.
bool Claim_file(const std::string& path);

}  // namespace kcp
