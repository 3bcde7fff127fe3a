#include <unistd.h>

#include <cerrno>

#include "core/xerror_msg.h"
#include "fsutil/dir_prepare.h"
#include "fsutil/path_query.h"

namespace kcp {

namespace {

// Removes directory i of `dirs` (names relative to `root`, in listing order), after the
// directories inside it that come later in the listing. The recursive listing puts some inner
// directories after their parent once the tree is three directories deep; removing in plain
// listing order would then fail on a non-empty parent, so such a parent waits for them. Where
// the listing already has every directory after its inner ones, this is plain listing order.
void Remove_listed_dir(const std::string& root, const std::vector<std::string>& dirs,
                       std::vector<bool>& removed, const std::size_t i) {
  const std::string inner_prefix = dirs[i] + "/";
  for (std::size_t j = i + 1; j < dirs.size(); ++j) {
    if (!removed[j] && dirs[j].starts_with(inner_prefix)) Remove_listed_dir(root, dirs, removed, j);
  }
  Remove_dir(root + "/" + dirs[i]);
  removed[i] = true;
}

}  // namespace

void Delete_dir(const std::string& path) {
  const DirListing listing = List_dir_rec(path);
  std::vector<std::string> dirs;
  for (const auto& [name, type] : listing) {
    if (type == "dir") {
      dirs.push_back(name);
    } else {
      Unlink_file(path + "/" + name);
    }
  }
  std::vector<bool> removed(dirs.size(), false);
  for (std::size_t i = 0; i < dirs.size(); ++i) {
    if (!removed[i]) Remove_listed_dir(path, dirs, removed, i);
  }
  Remove_dir(path);
}

void Unlink_file(const std::string& path) {
  if (unlink(path.c_str()) != 0) {
    // No blank between the quote and "and": kept as it is.
    throw Xerror_msg("ERROR: Unlink_file() called on '" + path + "'and \n" + Dir_error(errno));
  }
}

void Remove_dir(const std::string& path) {
  if (rmdir(path.c_str()) != 0) {
    throw Xerror_msg("ERROR: Remove_dir() called on '" + path + "' and\n" + Dir_error(errno));
  }
}

}  // namespace kcp
