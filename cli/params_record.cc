#include "cli/params_record.h"

#include "core/xerror_msg.h"
#include "fsutil/dir_prepare.h"
#include "fsutil/path_query.h"
#include "fsutil/result_file.h"

namespace kcp {

void Check_out_dir(const std::string& dir) {
  bool empty = true;
  std::string message;
  if (Is_there_such_dir(dir, empty, message) && !empty && !List_dir(dir).empty()) {
    throw Xerror_msg("ERROR: the output directory already exists and it is non-empty.\n");
  }
}

void Kiir_params(const std::string& dir, const std::string& alap_szoveg) {
  Result_file record(dir, "input_params.txt");
  record << "# Varnel was run on links taken" << alap_szoveg;
  record.Close();
}

}  // namespace kcp
