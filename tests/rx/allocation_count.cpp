#include "rx/allocation_count.h"

#include <cstdlib>
#include <new>

namespace {
long allocations = 0;
}

long allocationCount() { return allocations; }

void* operator new(size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, size_t) noexcept { std::free(memory); }
