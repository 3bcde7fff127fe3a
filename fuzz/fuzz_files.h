// Scratch space for the fuzz targets. The readers take file names, so each input is written to a
// file in a directory made once per process (under $TMPDIR, else /tmp) and removed when the
// process exits; standard output, where a run prints its progress and usage texts, is sent to
// /dev/null so that only the fuzzer's own report is seen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kcp::fuzz {

// The process's scratch directory (created, and stdout silenced, on the first call; removed at
// exit).
const std::string& Scratch_dir();

// Writes `bytes` to the file `name` in the scratch directory and returns its path.
std::string Write_scratch(const std::string& name, std::string_view bytes);

// The input split at `separator`, at most `limit` pieces (the last keeps the rest).
std::vector<std::string_view> Split(std::string_view bytes, char separator, std::size_t limit);

}  // namespace kcp::fuzz
