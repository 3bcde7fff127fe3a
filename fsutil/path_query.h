// Path queries and directory creation over stat, mkdir and getcwd. The queries never throw: they
// answer with a bool and leave the Dir_error sentence of a failed stat in `message`. Type words
// are "file", "dir", "symlink" and "other". Make_dir creates every missing directory of a path
// (mode 0755) and throws Xerror_msg when a mkdir fails.
#pragma once

#include <cstddef>
#include <list>
#include <string>

namespace kcp {

bool Is_there_such_path(const std::string& path, std::string& type, bool& empty,
                        std::string& message);
bool Is_there_such_path(const std::string& path, std::string& message);
bool Is_there_such_path(const std::string& path);
bool Is_there_such_dir(const std::string& path, bool& empty, std::string& message);
bool Is_there_such_dir(const std::string& path);
bool Is_there_such_file(const std::string& path, bool& empty, std::string& message);
bool Is_there_such_file(const std::string& path);

void Make_dir(const std::string& path);
// The text Make_dir throws when a mkdir fails with `error_number` on `path`, a path of `length`
// characters of which `path` may hold only the start. A path of PATH_MAX characters or more,
// which no call accepts, is shown by its first 200 characters, "..." and the count of the
// characters left out.
std::string Make_dir_failure(const std::string& path, const std::size_t& length,
                             const int& error_number);

// "/home/ann" gives "", "home", "ann".
std::list<std::string> Get_path_list(const std::string& path);
// Absolute form of a path: relative paths are resolved against the working directory, "."
// components dropped and ".." components applied (a final "." or ".." is kept as it is).
std::string Get_total_path(const std::string& path);
std::string Get_current_path(const unsigned& size);

// The program's sentence for an errno value.
std::string Dir_error(const int& error_number);

}  // namespace kcp
