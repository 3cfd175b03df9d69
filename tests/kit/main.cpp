// Runs all unit tests on a thread with a stack as large as the program's own, so that deep
// structures are tested as they will be met.
#include <gtest/gtest.h>
#include <pthread.h>

#include "core/events.h"

namespace {

constexpr std::size_t kStack = std::size_t{512} << 20;
int result = 1;

void *run_tests(void *) {
  velora::set_stack_limit(kStack);
  result = RUN_ALL_TESTS();
  return nullptr;
}

} // namespace

int main(int argc, char **argv) {
  ::testing::InitGoogleTest(&argc, argv);
  pthread_attr_t attr;
  pthread_attr_init(&attr);
  pthread_attr_setstacksize(&attr, kStack);
  pthread_t thread;
  if (pthread_create(&thread, &attr, run_tests, nullptr) != 0)
    return 1;
  pthread_join(thread, nullptr);
  return result;
}
