// Counts allocations and makes one of them fail. operator new is replaced for this program; malloc,
// calloc and realloc are diverted by the linker (--wrap), so only calls of our own code count.
#include "kit/faults.h"

#include <cstdlib>
#include <new>

extern "C" {
void *__real_malloc(std::size_t size);
void *__real_calloc(std::size_t count, std::size_t size);
void *__real_realloc(void *old, std::size_t size);
void *__wrap_malloc(std::size_t size);
void *__wrap_calloc(std::size_t count, std::size_t size);
void *__wrap_realloc(void *old, std::size_t size);
}

namespace velora::kit {

namespace {

long countdown = 0;
bool happened = false;

bool fails_now() {
  if (countdown == 0 || --countdown != 0)
    return false;
  happened = true;
  return true;
}

} // namespace

void fail_allocation(long n) {
  countdown = n;
  happened = false;
}

bool allocation_failed() {
  return happened;
}

static void *allocate(std::size_t size) {
  void *p = fails_now() ? nullptr : __real_malloc(size == 0 ? 1 : size);
  if (p == nullptr)
    throw std::bad_alloc();
  return p;
}

} // namespace velora::kit

void *__wrap_malloc(std::size_t size) {
  return velora::kit::fails_now() ? nullptr : __real_malloc(size);
}
void *__wrap_calloc(std::size_t count, std::size_t size) {
  return velora::kit::fails_now() ? nullptr : __real_calloc(count, size);
}
void *__wrap_realloc(void *old, std::size_t size) {
  return velora::kit::fails_now() ? nullptr : __real_realloc(old, size);
}

void *operator new(std::size_t size) {
  return velora::kit::allocate(size);
}
void *operator new[](std::size_t size) {
  return velora::kit::allocate(size);
}
void *operator new(std::size_t size, const std::nothrow_t &) noexcept {
  return __wrap_malloc(size == 0 ? 1 : size);
}
void *operator new[](std::size_t size, const std::nothrow_t &) noexcept {
  return __wrap_malloc(size == 0 ? 1 : size);
}
void operator delete(void *p) noexcept {
  std::free(p);
}
void operator delete[](void *p) noexcept {
  std::free(p);
}
void operator delete(void *p, std::size_t) noexcept {
  std::free(p);
}
void operator delete[](void *p, std::size_t) noexcept {
  std::free(p);
}
