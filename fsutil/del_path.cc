#include "core/xerror_msg.h"
#include "fsutil/dir_prepare.h"
#include "fsutil/path_query.h"
#include "fsutil/user_answer.h"
#include "text/console.h"

namespace kcp {

namespace {

bool Is_deletion_policy(const std::string& policy) {
  return policy == "force" || policy == "interactive" || policy == "silent";
}

// The type word of what is at `path`; throws "<caller> called on <path> and \n<message>" when
// nothing is there.
std::string Existing_type(const std::string& path, const std::string& caller) {
  std::string type;
  bool empty = true;
  std::string message;
  if (!Is_there_such_path(path, type, empty, message)) {
    throw Xerror_msg("ERROR: " + caller + " called on " + path + " and \n" + message);
  }
  return type;
}

// The dialogue of Del_file_interact and Del_dir_interact: 'd' deletes with `delete_it`, 'r'
// asks for a new name and renames, anything else stops.
void Ask_about_deletion(const std::string& header, const std::string& path, const std::string& what,
                        void (*delete_it)(const std::string&)) {
  Print_line(header);
  Print_line("The path " + path + what);
  Print_line("Do you wish to \n delete (d),\n rename (r), or stop (any other key)?");
  const char answer = Read_answer_char();
  if (answer == 'd') {
    delete_it(path);
  } else if (answer == 'r') {
    Print_line("Please type in the new name:");
    Rename_path(path, Read_answer_word(), "interactive");
  } else {
    Stop_interactively();
  }
}

}  // namespace

void Del_file(const std::string& path, const std::string& policy) {
  if (!Is_deletion_policy(policy)) {
    throw Xerror_msg("ERROR: Del_file() called with unknown flag '" + policy + "'.");
  }
  if (Existing_type(path, "Del_file()") != "dir") {
    Unlink_file(path);
  } else if (policy == "force") {
    Delete_dir(path);
  } else if (policy == "silent") {
    // A directory in the way of a silent file deletion is moved aside, not deleted.
    Rename_auto(path);
  } else {
    Del_file_interact(path);
  }
}

void Del_file(const std::string& path) {
  Del_file(path, "interactive");
}

void Del_dir(const std::string& path, const std::string& policy) {
  if (!Is_deletion_policy(policy)) {
    throw Xerror_msg("ERROR: Del_dir() called with unknown flag '" + policy + "'.");
  }
  if (Existing_type(path, "Del_dir()") == "dir") {
    Delete_dir(path);
  } else if (policy == "force") {
    Unlink_file(path);
  } else if (policy == "silent") {
    Rename_auto(path);
  } else {
    Del_dir_interact(path);
  }
}

void Del_dir(const std::string& path) {
  Del_dir(path, "interactive");
}

void Del_file_interact(const std::string& path) {
  Ask_about_deletion("Del_file():", path, "  is a directory.", Delete_dir);
}

void Del_dir_interact(const std::string& path) {
  Ask_about_deletion("Del_dir():", path, "  is not a directory.", Unlink_file);
}

void Del_path(const std::string& path) {
  if (Existing_type(path, "Del_path()") == "dir") {
    Delete_dir(path);
  } else {
    Unlink_file(path);
  }
}

}  // namespace kcp
