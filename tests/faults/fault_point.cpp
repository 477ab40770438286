// Preloaded into a program, this lets the Nth of the calls by which it changes files fail, or kills it in
// front of that call. N stands in FAULT_AT, the number of the error in FAULT_ERROR, 0 for a kill. What is
// counted lies between BeginToCount and EndCount.
#include <dlfcn.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>

namespace {

std::atomic<long> left{-1};
std::atomic<bool> counting{false};

int ErrorOf() { return std::atoi(std::getenv("FAULT_ERROR")); }

bool IsFileOrDirectory(int file) {
  struct stat status {};
  return fstat(file, &status) == 0 && (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode));
}
bool IsFileOrDirectory(const char*) { return true; }

// True when the call is to fail.
template <class Target>
bool Fails(Target target) {
  if (!counting || left.load() <= 0) return false;
  const int before = errno;
  const bool counts = IsFileOrDirectory(target);
  errno = before;
  if (!counts || left.fetch_sub(1) != 1) return false;
  if (ErrorOf() == 0) kill(getpid(), SIGKILL);
  errno = ErrorOf();
  return true;
}

}  // namespace

extern "C" void BeginToCount() {
  const char* at = std::getenv("FAULT_AT");
  left = at == nullptr ? -1 : std::atol(at);
  counting = true;
}

// Whether the call was reached.
extern "C" bool EndCount() {
  counting = false;
  return left.load() == 0;
}

#define COUNTED(result, name, parameters, target, arguments)                                      \
  extern "C" result name parameters {                                                             \
    static const auto original = reinterpret_cast<result(*) parameters>(dlsym(RTLD_NEXT, #name)); \
    return Fails(target) ? -1 : original arguments;                                               \
  }

COUNTED(ssize_t, write, (int file, const void* bytes, size_t count), file, (file, bytes, count))
COUNTED(ssize_t, pwrite64, (int file, const void* bytes, size_t count, off64_t at), file,
        (file, bytes, count, at))
COUNTED(int, fsync, (int file), file, (file))
COUNTED(int, fdatasync, (int file), file, (file))
COUNTED(int, ftruncate, (int file, off_t size), file, (file, size))
COUNTED(int, ftruncate64, (int file, off64_t size), file, (file, size))
COUNTED(int, rename, (const char* from, const char* to), from, (from, to))
COUNTED(int, renameat2, (int fromDir, const char* from, int toDir, const char* to, unsigned flags), from,
        (fromDir, from, toDir, to, flags))
COUNTED(int, link, (const char* from, const char* to), from, (from, to))
COUNTED(int, unlink, (const char* name), name, (name))
COUNTED(ssize_t, copy_file_range,
        (int from, off64_t* fromAt, int to, off64_t* toAt, size_t count, unsigned flags), to,
        (from, fromAt, to, toAt, count, flags))
