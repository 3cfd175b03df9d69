// The stack of the thread that has the windows and evaluates.
#include "shell/qt/q_stack.h"

#include <algorithm>
#include <cstddef>

#include "core/events.h"

#if defined(__unix__) || defined(__APPLE__)
#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace velora::qt {

namespace {

[[maybe_unused]] constexpr std::size_t kStackBytes = std::size_t{512} << 20;
constexpr std::size_t kUsualStack = std::size_t{8} << 20;

} // namespace

#if defined(__unix__)

// The limit that a program is started with decides where its stack may grow, so raising it means
// starting anew; a second time does not come of it, since the limit then is what it should be.
void provide_stack(char **argv) {
  rlimit limit{};
  if (getrlimit(RLIMIT_STACK, &limit) != 0) {
    set_stack_limit(kUsualStack);
    return;
  }
  const rlim_t wanted =
      limit.rlim_max == RLIM_INFINITY ? kStackBytes : std::min<rlim_t>(kStackBytes, limit.rlim_max);
  if (limit.rlim_cur != RLIM_INFINITY && limit.rlim_cur < wanted) {
    limit.rlim_cur = wanted;
    char self[4096] = "";
    const ssize_t length = readlink("/proc/self/exe", self, sizeof self - 1);
    if (length > 0 && setrlimit(RLIMIT_STACK, &limit) == 0)
      execv(self, argv);
    set_stack_limit(kUsualStack); // it could not be started again
    return;
  }
  // Further threads need no more than usual.
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) == 0) {
    pthread_attr_setstacksize(&attributes, kUsualStack);
    pthread_setattr_default_np(&attributes);
    pthread_attr_destroy(&attributes);
  }
  set_stack_limit(limit.rlim_cur == RLIM_INFINITY ? kStackBytes
                                                  : static_cast<std::size_t>(limit.rlim_cur));
}

#else

// The linker has seen to it.
void provide_stack(char **) {
  set_stack_limit(kUsualStack);
}

#endif

} // namespace velora::qt
