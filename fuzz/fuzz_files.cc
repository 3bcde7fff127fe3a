#include "fuzz/fuzz_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace kcp::fuzz {

namespace {

// The scratch directory, removed with everything in it when the process ends normally (a crash
// leaves it: scripts/fuzz.sh gives the targets a temporary directory of its own).
class Scratch {
 public:
  Scratch() {
    const int null = ::open("/dev/null", O_WRONLY);
    if (null >= 0) {
      std::fflush(stdout);
      ::dup2(null, STDOUT_FILENO);
      ::close(null);
    }
    const char* base = std::getenv("TMPDIR");
    path_ = std::string(base != nullptr && *base != '\0' ? base : "/tmp") + "/varnel-fuzz-XXXXXX";
    if (::mkdtemp(path_.data()) == nullptr) std::abort();
  }
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace

const std::string& Scratch_dir() {
  static const Scratch scratch;
  return scratch.Path();
}

std::string Write_scratch(const std::string& name, std::string_view bytes) {
  const std::string path = Scratch_dir() + "/" + name;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file) std::abort();
  return path;
}

std::vector<std::string_view> Split(std::string_view bytes, char separator, std::size_t limit) {
  std::vector<std::string_view> pieces;
  while (pieces.size() + 1 < limit) {
    const std::size_t at = bytes.find(separator);
    if (at == std::string_view::npos) break;
    pieces.push_back(bytes.substr(0, at));
    bytes.remove_prefix(at + 1);
  }
  pieces.push_back(bytes);
  return pieces;
}

}  // namespace kcp::fuzz
