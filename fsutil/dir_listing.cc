#include <dirent.h>

#include <cerrno>
#include <cstdlib>

#include "core/xerror_msg.h"
#include "fsutil/dir_prepare.h"
#include "fsutil/path_query.h"

namespace kcp {

namespace {

// The entry names of a directory in alphasort order, "." and ".." left out; every buffer of
// scandir is released before anything can throw.
std::vector<std::string> Scan_names(const std::string& path) {
  struct dirent** entries = nullptr;
  const int count = scandir(path.c_str(), &entries, nullptr, alphasort);
  if (count < 0) {
    throw Xerror_msg("ERROR: List_dir() -> scandir() called on " + path + " and\n" +
                     Dir_error(errno));
  }
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const std::string name = entries[i]->d_name;
    if (name != "." && name != "..") names.push_back(name);
    std::free(entries[i]);
  }
  std::free(entries);
  return names;
}

}  // namespace

DirListing List_dir(const std::string& path) {
  bool empty = true;
  std::string message;
  if (!Is_there_such_dir(path, empty, message)) {
    throw Xerror_msg("ERROR: List_dir() called on " + path + " and\n" + message);
  }
  DirListing listing;
  if (empty) return listing;
  for (const std::string& name : Scan_names(path)) {
    const std::string full_path = path + "/" + name;
    std::string type;
    bool entry_empty = true;
    std::string entry_message;
    if (!Is_there_such_path(full_path, type, entry_empty, entry_message)) {
      throw Xerror_msg("ERROR: problem with " + full_path + " in List_dir():\n" + entry_message);
    }
    listing.emplace_back(name, type);
  }
  return listing;
}

DirListing List_dir_rec(const std::string& path) {
  // Each subtree entry is inserted right before the one inserted last, starting before its
  // directory: the subtree ends up reversed in front of its directory. Built here in one pass
  // instead of by repeated insertion, with the same result.
  DirListing result;
  for (const auto& entry : List_dir(path)) {
    if (entry.second == "dir") {
      const DirListing subtree = List_dir_rec(path + "/" + entry.first);
      for (auto it = subtree.rbegin(); it != subtree.rend(); ++it) {
        result.emplace_back(entry.first + "/" + it->first, it->second);
      }
    }
    result.push_back(entry);
  }
  return result;
}

}  // namespace kcp
