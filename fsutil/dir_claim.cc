#include "fsutil/dir_claim.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <thread>

#include "core/xerror_msg.h"
#include "fsutil/path_query.h"

namespace kcp {

namespace {

// A run holds the lock for the few milliseconds of its check; one held for longer than this is
// not a run's, and is not waited for.
constexpr int kLockTries = 5000;
constexpr std::chrono::milliseconds kLockPause(2);

void Drop_trailing_slashes(std::string& path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
}

}  // namespace

std::string Parent_dir(const std::string& path) {
  std::string parent = path;
  Drop_trailing_slashes(parent);
  const std::size_t slash = parent.rfind('/');
  if (slash == std::string::npos) return ".";
  parent.resize(slash == 0 ? 1 : slash);
  Drop_trailing_slashes(parent);
  return parent;
}

void Make_parent_dirs(const std::string& path) {
  const std::string parent = Parent_dir(path);
  // A mkdir that another process beats fails, but the next attempt gets one directory further.
  const std::ptrdiff_t attempts = std::count(parent.begin(), parent.end(), '/') + 2;
  for (std::ptrdiff_t attempt = 0; attempt < attempts && !Is_there_such_dir(parent); ++attempt) {
    try {
      Make_dir(parent);
    } catch (const Xerror_msg&) {
    }
  }
}

DirLock::DirLock(const std::string& dir) {
  fd_ = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd_ < 0) return;
  for (int tries = 0; ::flock(fd_, LOCK_EX | LOCK_NB) != 0; ++tries) {
    if ((errno != EWOULDBLOCK && errno != EINTR) || tries == kLockTries) {
      ::close(fd_);
      fd_ = -1;
      return;
    }
    std::this_thread::sleep_for(kLockPause);
  }
}

DirLock::~DirLock() {
  if (fd_ >= 0) ::close(fd_);
}

bool Entry_exists(const std::string& path) {
  struct stat info;
  return ::lstat(path.c_str(), &info) == 0;
}

bool Claim_file(const std::string& path) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (fd < 0) return errno != EEXIST;
  ::close(fd);
  return true;
}

}  // namespace kcp
