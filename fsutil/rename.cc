#include <cerrno>
#include <cstdio>

#include "core/xerror_msg.h"
#include "fsutil/dir_prepare.h"
#include "fsutil/path_query.h"
#include "fsutil/user_answer.h"
#include "text/console.h"

namespace kcp {

void Rename_auto(const std::string& path) {
  // No separator between the path and the number: "out" goes to out1, out2, ...
  unsigned long n = 1;
  std::string candidate = path + std::to_string(n);
  while (Is_there_such_path(candidate)) {
    ++n;
    candidate = path + std::to_string(n);
  }
  Rename_the_path(path, candidate);
}

void Rename_the_path(const std::string& from, const std::string& to) {
  if (std::rename(from.c_str(), to.c_str()) != 0) {
    throw Xerror_msg("ERROR: Rename_the_path() called with " + from + " and " + to + " and \n" +
                     Dir_error(errno));
  }
}

void Rename_path(const std::string& from, const std::string& to, const std::string& policy) {
  if (policy != "force" && policy != "interactive" && policy != "silent") {
    // No blank before the first quote: kept as it is.
    throw Xerror_msg("ERROR: Rename_path() called with unknown flag'" + policy + "'");
  }
  std::string message;
  if (!Is_there_such_path(from, message)) {
    throw Xerror_msg("ERROR: Rename_path() called on " + from + " and \n" + message);
  }
  if (!Is_there_such_path(to) || policy == "force") {
    Rename_the_path(from, to);
  } else if (policy == "silent") {
    Rename_auto(to);
    Rename_the_path(from, to);
  } else {
    Rename_interact(from, to);
  }
}

void Rename_path(const std::string& from, const std::string& to) {
  Rename_path(from, to, "interactive");
}

void Rename_interact(const std::string& from, const std::string& to) {
  Print_line("Rename_path():");
  Print_line("The specified new path " + to + " already exists.");
  Print_line(
      "Do you wish to \n overwrite (o),\n change the destination path (c),"
      "\n or stop (any other key)?");
  const char answer = Read_answer_char();
  if (answer == 'o') {
    Rename_the_path(from, to);
  } else if (answer == 'c') {
    Print_line("Please type in the new destination path:");
    Rename_path(from, Read_answer_word(), "interactive");
  } else {
    Stop_interactively();
  }
}

}  // namespace kcp
