#include "fsutil/dir_prepare.h"

#include "core/output_journal.h"
#include "core/xerror_msg.h"
#include "fsutil/path_query.h"
#include "fsutil/user_answer.h"
#include "text/console.h"

namespace kcp {

void Dir_prepare(const std::string& path, const std::string& policy) {
  if (policy != "keep" && policy != "clear" && policy != "interactive") {
    throw Xerror_msg("ERROR: Dir_prepare() called with unknown flag '" + policy + "'");
  }
  std::string type;
  bool empty = true;
  std::string message;
  if (!Is_there_such_path(path, type, empty, message)) {
    if (OutputJournal* const journal = OutputJournal::Current()) journal->Directory(path);
    Make_dir(path);
    return;
  }
  if (policy == "interactive") {
    Dir_prepare_interact(path, type, empty);
    return;
  }
  if (type == "dir") {
    if (policy == "clear") {
      Delete_dir(path);
      Make_dir(path);
    }
    return;
  }
  // Whatever is in the way under "keep" is moved aside, never destroyed.
  if (policy == "keep") {
    Rename_auto(path);
  } else {
    Unlink_file(path);
  }
  Make_dir(path);
}

void Dir_prepare(const std::string& path) {
  Dir_prepare(path, "interactive");
}

void Dir_prepare_interact(const std::string& path, const std::string& type, const bool& empty) {
  Print_line("Dir_prepare():");
  Print_line("The " + path + " is already a " + type + ", and it is" +
             (empty ? " empty." : " not empty."));
  if (type == "dir") {
    Print_line(
        "Do you wish to \n keep the contents (k),\n clear it (c),\n"
        " or stop (any other key)?");
    const char answer = Read_answer_char();
    if (answer == 'c') {
      Delete_dir(path);
      Make_dir(path);
    } else if (answer != 'k') {
      Stop_interactively();
    }
    return;
  }
  Print_line(
      "Do you wish to \n overwrite it (o),\n rename it (r),\n"
      " or stop (any other key)?");
  const char answer = Read_answer_char();
  if (answer == 'o') {
    Unlink_file(path);
    Make_dir(path);
  } else if (answer == 'r') {
    Print_line("Please type in the new path:");
    Rename_path(path, Read_answer_word(), "interactive");
    Make_dir(path);
  } else {
    Stop_interactively();
  }
}

}  // namespace kcp
