#include "cli/params_record.h"

#include "core/xerror_msg.h"
#include "fsutil/dir_claim.h"
#include "fsutil/dir_prepare.h"
#include "fsutil/path_query.h"
#include "fsutil/result_file.h"

namespace kcp {

namespace {
constexpr const char* kRecord = "input_params.txt";
constexpr const char* kNonEmpty =
    "ERROR: the output directory already exists and it is non-empty.\n";
}  // namespace

void Check_out_dir(const std::string& dir) {
  // Runs started together on one directory pass here one after the other, under a lock on the
  // directory above it, and the first file of a run is its record: the first run takes the
  // directory, the others find it non-empty. Without the lock, creating the record only where
  // nothing stands still lets one run through.
  Make_parent_dirs(dir);
  const DirLock lock(Parent_dir(dir));
  // A directory that reports the empty size is not listed, so an old record in it goes unseen and
  // is written over, as the other files are.
  const bool old_record = Entry_exists(dir + "/" + kRecord);
  bool empty = true;
  std::string message;
  if (Is_there_such_dir(dir, empty, message) && !empty && !List_dir(dir).empty()) {
    throw Xerror_msg(kNonEmpty);
  }
  Dir_prepare(dir, "keep");
  if (!old_record && !Claim_file(dir + "/" + kRecord)) throw Xerror_msg(kNonEmpty);
}

void Kiir_params(const std::string& dir, const std::string& alap_szoveg) {
  ResultFile record(dir, kRecord);
  record << "# Varnel was run on links taken" << alap_szoveg;
  record.Close();
}

}  // namespace kcp
