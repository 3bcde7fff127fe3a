// A tmpfs of a few KiB for runs that must meet a full disk or a read-only location. Mounting
// needs root; elsewhere Error() says why there is none and the caller skips with it.
#pragma once

#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>

namespace kcp::testing {

// A tmpfs of `kib` KiB at `path`, unmounted again when the object goes.
class SmallDisk {
 public:
  SmallDisk(const std::string& path, const int kib, const bool read_only) : path_(path) {
    std::filesystem::create_directory(path);
    const std::string options = "size=" + std::to_string(kib) + "k";
    if (geteuid() != 0) {
      error_ = "mounting a small tmpfs needs root";
    } else if (mount("tmpfs", path.c_str(), "tmpfs", read_only ? MS_RDONLY : 0, options.c_str())) {
      error_ = std::string("cannot mount a tmpfs here: ") + std::strerror(errno);
    }
  }
  ~SmallDisk() {
    if (error_.empty()) umount2(path_.c_str(), MNT_DETACH);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  const std::string& Error() const { return error_; }

 private:
  std::string path_, error_;
};

// A network dense in cliques (70 nodes, each pair linked with probability 0.45): its results take
// some hundreds of kilobytes, far more than a disk of 96 KiB holds.
inline std::string Dense_clique_links() {
  std::mt19937 random(11);
  std::string links;
  for (int a = 0; a < 70; ++a) {
    for (int b = a + 1; b < 70; ++b) {
      if (random() % 100 < 45) links += "n" + std::to_string(a) + " n" + std::to_string(b) + "\n";
    }
  }
  return links;
}

}  // namespace kcp::testing
