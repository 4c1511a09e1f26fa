#include "FailingAllocation.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<bool> g_counting{false};
std::atomic<long> g_count{0};
std::atomic<long> g_failing{0};
std::atomic<long> g_balance{0};

}  // namespace

// The whole program's, in every form that does not align: a sanitizer's own do not come by here.
void* operator new(std::size_t size) {
  if (g_counting && ++g_count == g_failing) throw std::bad_alloc();
  void* const block = std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) throw std::bad_alloc();
  if (g_counting) ++g_balance;
  return block;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t& nothrow) noexcept {
  return operator new(size, nothrow);
}

void operator delete(void* block) noexcept {
  if (g_counting && block != nullptr) --g_balance;
  std::free(block);
}

void operator delete(void* block, std::size_t) noexcept { operator delete(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { operator delete(block); }
void operator delete[](void* block) noexcept { operator delete(block); }
void operator delete[](void* block, std::size_t) noexcept { operator delete(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { operator delete(block); }

namespace kernel_test {

FailingAllocation::FailingAllocation(long n) {
  g_balance = 0;
  Restart(n);
  g_counting = true;
}

FailingAllocation::~FailingAllocation() { g_counting = false; }

void FailingAllocation::Restart(long n) {
  g_count = 0;
  g_failing = n;
}

long FailingAllocation::Allocations() const { return g_count; }

long FailingAllocation::Balance() const { return g_balance; }

}  // namespace kernel_test
