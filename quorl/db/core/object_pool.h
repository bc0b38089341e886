// Where database objects live: pieces of large blocks instead of single allocations.
#pragma once

#include <cstddef>

// A drawing is made of very many small objects that come and go together. Blocks of a huge page each keep
// neighbours in memory what was made together, and let the system map them at once: with one allocation an
// object, most of the cost of creating in a large drawing is that of fresh pages. Memory goes back to the
// pool, never to the system; the next drawing takes it. Threads have pieces of their own, and what one frees
// it may use again, wherever it was made.
namespace ZnDbObjectPool {
void* allocate(std::size_t size);
void release(void* piece, std::size_t size) noexcept; // of an allocation of that size; null does nothing
} // namespace ZnDbObjectPool

// For containers that every object of a kind has.
template<class T> struct ZnDbPoolAllocator {
  using value_type = T;
  ZnDbPoolAllocator() = default;
  template<class Other> ZnDbPoolAllocator(const ZnDbPoolAllocator<Other>&) noexcept {}
  T* allocate(std::size_t count) { return static_cast<T*>(ZnDbObjectPool::allocate(count * sizeof(T))); }
  void deallocate(T* pieces, std::size_t count) noexcept {
    ZnDbObjectPool::release(pieces, count * sizeof(T));
  }
  friend bool operator==(const ZnDbPoolAllocator&, const ZnDbPoolAllocator&) { return true; }
};
