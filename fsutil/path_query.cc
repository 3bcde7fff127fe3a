#include "fsutil/path_query.h"

#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <vector>

#include "core/xerror_msg.h"

namespace kcp {

namespace {

// An empty directory is recognised by this one size only; other file systems report other
// sizes for an empty directory, and callers then list it. Kept on purpose.
constexpr off_t kEmptyDirSize = 48;

// The working directory read through a buffer of `size` characters; empty when it does not fit
// or cannot be read (a buffer of size 0 is never handed over, as getcwd would then allocate).
std::string Working_directory(const std::size_t size) {
  if (size == 0) return std::string();
  std::vector<char> buffer(size, '\0');
  if (getcwd(buffer.data(), buffer.size()) == nullptr) return std::string();
  return std::string(buffer.data());
}

}  // namespace

bool Is_there_such_path(const std::string& path, std::string& type, bool& empty,
                        std::string& message) {
  empty = true;
  type = "other";
  struct stat info;
  if (stat(path.c_str(), &info) != 0) {
    message = Dir_error(errno);
    return false;
  }
  if (S_ISREG(info.st_mode)) {
    type = "file";
    if (info.st_size != 0) empty = false;
  } else if (S_ISDIR(info.st_mode)) {
    type = "dir";
    if (info.st_size != kEmptyDirSize) empty = false;
  } else if (S_ISLNK(info.st_mode)) {
    type = "symlink";
    if (info.st_size != 0) empty = false;
  }
  return true;
}

bool Is_there_such_path(const std::string& path, std::string& message) {
  std::string type;
  bool empty = true;
  return Is_there_such_path(path, type, empty, message);
}

bool Is_there_such_path(const std::string& path) {
  std::string message;
  return Is_there_such_path(path, message);
}

namespace {

bool Is_there_such_typed_path(const std::string& path, const std::string& wanted, bool& empty,
                              std::string& message) {
  std::string type;
  if (!Is_there_such_path(path, type, empty, message)) return false;
  if (type == wanted) return true;
  message = "The path " + path + " is a " + type + ".";
  return false;
}

}  // namespace

bool Is_there_such_dir(const std::string& path, bool& empty, std::string& message) {
  return Is_there_such_typed_path(path, "dir", empty, message);
}

bool Is_there_such_dir(const std::string& path) {
  bool empty = true;
  std::string message;
  return Is_there_such_dir(path, empty, message);
}

bool Is_there_such_file(const std::string& path, bool& empty, std::string& message) {
  return Is_there_such_typed_path(path, "file", empty, message);
}

bool Is_there_such_file(const std::string& path) {
  bool empty = true;
  std::string message;
  return Is_there_such_file(path, empty, message);
}

std::string Make_dir_failure(const std::string& path, const std::size_t& length,
                             const int& error_number) {
  constexpr std::size_t kShownStart = 200;
  std::string shown = path;
  if (length >= PATH_MAX) {
    shown.resize(std::min(shown.size(), kShownStart));
    shown += "... (" + std::to_string(length - shown.size()) + " more characters)";
  }
  return "ERROR: Make_dir() called with " + shown + " and \n" + Dir_error(error_number);
}

void Make_dir(const std::string& path) {
  // Each piece keeps its closing '/': "a/b/c" -> "a/", "b/", "c"; "/x/y/" -> "/", "x/", "y/".
  std::vector<std::string> pieces;
  std::string piece;
  for (const char c : path) {
    piece += c;
    if (c == '/') {
      pieces.push_back(piece);
      piece.clear();
    }
  }
  if (!piece.empty()) pieces.push_back(piece);

  std::string prefix;
  for (const std::string& p : pieces) {
    prefix += p;
    std::string target = prefix;
    if (target.size() > 1 && target.back() == '/') target.pop_back();
    if (!Is_there_such_path(target)) {
      if (mkdir(target.c_str(), 0755) != 0) {
        throw Xerror_msg(Make_dir_failure(path, path.size(), errno));
      }
    }
  }
}

std::list<std::string> Get_path_list(const std::string& path) {
  std::list<std::string> components;
  std::string current;
  for (const char c : path) {
    if (c == '/') {
      components.push_back(current);
      current.clear();
    } else {
      current += c;
    }
  }
  if (!current.empty()) components.push_back(current);
  return components;
}

std::string Get_total_path(const std::string& path) {
  // An unreadable working directory (longer than the buffer, or removed) counts as empty.
  const std::string working_directory = Working_directory(10000);
  std::list<std::string> components;
  if (!path.empty() && path.front() != '/') components = Get_path_list(working_directory);

  std::string current;
  for (const char c : path) {
    if (c != '/') {
      current += c;
      continue;
    }
    if (current == ".." && !components.empty()) {
      components.pop_back();
    } else if (current != ".") {
      components.push_back(current);
    }
    current.clear();
  }
  // A final "." or ".." is kept as it is, deliberately.
  if (!current.empty()) components.push_back(current);

  std::string total;
  for (const std::string& component : components) total += component + "/";
  if (total.size() > 1) total.pop_back();
  return total;
}

std::string Get_current_path(const unsigned& size) {
  return Working_directory(size);
}

std::string Dir_error(const int& error_number) {
  switch (error_number) {
    case EPERM:
      return "The filesyst. does not  support  the removal of directories.";
    case ENOENT:
      return "A component of the path file_name does not exist.";
    case EIO:
      return "An I/O error occurred.";
    case ENOMEM:
      return "Insufficient memory to complete the operation.";
    case EACCES:
      return "Permission denied.";
    case EFAULT:
      return "Bad address.";
    case EBUSY:
      return "The rename fails because oldpath or newpath is a directory "
             "that  is in use by some process.";
    case EEXIST:
      return "pathname already exists.";
    case EXDEV:
      return "oldpath and newpath are not on the same filesystem.";
    case ENOTDIR:
      return "A component of the path is not a directory.";
    case EISDIR:
      return "newpath is an existing directory, but oldpath is not a "
             "directory.";
    case EINVAL:
      return "an attempt was made to make a directory a subdirectory of "
             "itself.";
    case ENOSPC:
      return "no room for the new directory entry.";
    case EROFS:
      return "The file is on a read-only filesystem.";
    case ENAMETOOLONG:
      return "pathname too long.";
    case ENOTEMPTY:
      return "newpath is a non-empty directory, i.e., contains entries "
             "other than . and .. .";
    case ELOOP:
      return "Too  many symbolic links encountered while traversing "
             "the path.";
    default:
      return " Other error occured, errno=" + std::to_string(error_number);
  }
}

}  // namespace kcp
