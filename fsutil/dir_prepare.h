// Directory preparation, listing, deletion and renaming. Dir_prepare makes a path an existing
// directory under a policy: "keep" (an existing directory stays as it is, a file in the way is
// moved aside to the first free numbered name), "clear" (the old tree or file is removed) or
// "interactive" (the user is asked on standard input). Every failure throws Xerror_msg whose
// text names the operation and ends with the Dir_error sentence; an unknown policy word throws.
// Under a JournalScope (core/output_journal.h) a directory made is noted in its journal.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kcp {

// (entry name, type word); "." and ".." are never listed.
using DirListing = std::vector<std::pair<std::string, std::string>>;

void Dir_prepare(const std::string& path, const std::string& policy);
void Dir_prepare(const std::string& path);
void Dir_prepare_interact(const std::string& path, const std::string& type, const bool& empty);

// The entries of a directory in alphasort order.
DirListing List_dir(const std::string& path);
// The whole tree below a directory; every directory comes after everything inside it.
DirListing List_dir_rec(const std::string& path);
// Deletes the tree below path and path itself.
void Delete_dir(const std::string& path);
// Moves path aside to path1, path2, ... whichever is free first.
void Rename_auto(const std::string& path);
void Rename_the_path(const std::string& from, const std::string& to);
void Unlink_file(const std::string& path);
void Remove_dir(const std::string& path);
void Rename_path(const std::string& from, const std::string& to, const std::string& policy);
void Rename_path(const std::string& from, const std::string& to);
void Rename_interact(const std::string& from, const std::string& to);

void Del_file(const std::string& path, const std::string& policy);
void Del_file(const std::string& path);
void Del_dir(const std::string& path, const std::string& policy);
void Del_dir(const std::string& path);
void Del_file_interact(const std::string& path);
void Del_dir_interact(const std::string& path);
void Del_path(const std::string& path);

}  // namespace kcp
