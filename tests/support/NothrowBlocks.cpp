#include "support/NothrowBlocks.h"

#include <cstdlib>
#include <new>

#include "support/TestHost.h"

namespace {

// Lists of its own making: the containers would allocate through the operators below.
struct Block {
  void* memory;
  Block* next;
};

Block* g_blocks = nullptr;
bool g_counting = false;

void Remember(void* memory) {
  auto* block = static_cast<Block*>(std::malloc(sizeof(Block)));
  if (block == nullptr) std::abort();
  *block = {memory, g_blocks};
  g_blocks = block;
}

void Forget(const void* memory) {
  Block** link = &g_blocks;
  while (*link != nullptr && (*link)->memory != memory) link = &(*link)->next;
  if (*link == nullptr) return;
  Block* const block = *link;
  *link = block->next;
  std::free(block);
}

void* Allocate(std::size_t size) { return std::malloc(size == 0 ? 1 : size); }

void* AllocateOrThrow(std::size_t size) {
  void* memory = Allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void* AllocateCounted(std::size_t size) {
  support::TestHost* host = support::CurrentTestHost();
  if (host != nullptr && host->faults.Enter("new")) return nullptr;
  void* memory = Allocate(size);
  if (g_counting && memory != nullptr) Remember(memory);
  return memory;
}

void Free(void* memory) {
  Forget(memory);
  std::free(memory);
}

}  // namespace

namespace support {

std::size_t LivingBlocks() {
  std::size_t count = 0;
  for (const Block* block = g_blocks; block != nullptr; block = block->next) ++count;
  return count;
}

std::size_t TakeLostBlocks() {
  const std::size_t count = LivingBlocks();
  while (g_blocks != nullptr) Free(g_blocks->memory);
  return count;
}

void BeginBlockCount() { g_counting = true; }

std::size_t EndBlockCount() {
  g_counting = false;
  const std::size_t count = LivingBlocks();
  while (g_blocks != nullptr) Forget(g_blocks->memory);
  return count;
}

}  // namespace support

// All of them, so that whichever one is called finds what another has allocated.
void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return AllocateCounted(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return AllocateCounted(size);
}
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { Free(memory); }
