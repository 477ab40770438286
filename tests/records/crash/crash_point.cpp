// Preloaded into a program, this kills it in front of the Nth of the calls by which it changes files. N
// stands in CRASH_AT; the counting begins with BeginToCount.
#include <dlfcn.h>
#include <signal.h>
#include <sys/types.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<long> left{-1};

void CountCall() {
  if (left.load() > 0 && left.fetch_sub(1) == 1) kill(getpid(), SIGKILL);
}

}  // namespace

extern "C" void BeginToCount() {
  const char* at = std::getenv("CRASH_AT");
  left = at == nullptr ? -1 : std::atol(at);
}

#define COUNTED(result, name, parameters, arguments)                                              \
  extern "C" result name parameters {                                                             \
    static const auto original = reinterpret_cast<result(*) parameters>(dlsym(RTLD_NEXT, #name)); \
    CountCall();                                                                                  \
    return original arguments;                                                                    \
  }

COUNTED(ssize_t, write, (int file, const void* bytes, size_t count), (file, bytes, count))
COUNTED(ssize_t, pwrite64, (int file, const void* bytes, size_t count, off64_t at), (file, bytes, count, at))
COUNTED(int, fsync, (int file), (file))
COUNTED(int, fdatasync, (int file), (file))
COUNTED(int, ftruncate, (int file, off_t size), (file, size))
COUNTED(int, ftruncate64, (int file, off64_t size), (file, size))
COUNTED(int, rename, (const char* from, const char* to), (from, to))
COUNTED(int, renameat2, (int fromDir, const char* from, int toDir, const char* to, unsigned flags),
        (fromDir, from, toDir, to, flags))
COUNTED(int, link, (const char* from, const char* to), (from, to))
COUNTED(int, unlink, (const char* name), (name))
COUNTED(ssize_t, copy_file_range,
        (int from, off64_t* fromAt, int to, off64_t* toAt, size_t count, unsigned flags),
        (from, fromAt, to, toAt, count, flags))
