// The results directory's admission and the parameter record. Check_out_dir throws Xerror_msg
// when the directory exists and already holds entries, so a run never mixes with older results;
// a missing path, an empty directory or a non-directory passes, and the directory is then made
// (a file in the way moved aside) and claimed with an empty record, so that of runs started on
// it together only one passes. Kiir_params writes "input_params.txt": "# Varnel was run on links
// taken" followed by the base text, nothing more.
#pragma once

#include <string>

namespace kcp {

// Errors of the directory's creation are thrown as Dir_prepare throws them.
void Check_out_dir(const std::string& dir);
// Prepares `dir` with the policy "keep" (a file in the way is moved aside) and writes the record.
void Kiir_params(const std::string& dir, const std::string& alap_szoveg);

}  // namespace kcp
