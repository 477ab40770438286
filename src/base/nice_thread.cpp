#include "base/nice_thread.h"

#include <sys/resource.h>
#include <unistd.h>

namespace veldrin::base {

void BeNice(int nice) { ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), nice); }

}  // namespace veldrin::base
