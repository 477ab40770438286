#pragma once

#include <sys/resource.h>

#include <csignal>

namespace veldrin::test {

/// For the life of the object no file of this process can grow beyond a size, as on a disk that is full.
class SmallDisk {
 public:
  explicit SmallDisk(rlim_t bytes) : Handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &Before);
    const rlimit small{bytes, Before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallDisk() {
    setrlimit(RLIMIT_FSIZE, &Before);
    (void)std::signal(SIGXFSZ, Handler);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

 private:
  void (*Handler)(int);
  rlimit Before{};
};

}  // namespace veldrin::test
