#include "quorl/db/core/object_pool.h"

#include <array>
#include <cstdlib>
#include <mutex>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 21; // a huge page
constexpr std::size_t kGrain = 16;                       // alignment of what the plain allocator gives
constexpr std::size_t kLargest = std::size_t{1} << 14;   // larger ones are rare and take pages of their own
constexpr std::size_t kClasses = kLargest / kGrain;

// With the address sanitizer every object is an allocation of its own, so that it sees what is used too late.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kPooled = false;
#elif defined(__has_feature)
constexpr bool kPooled = !__has_feature(address_sanitizer);
#else
constexpr bool kPooled = true;
#endif

struct FreePiece {
  FreePiece* next = nullptr;
};
using FreeLists = std::array<FreePiece*, kClasses>;

std::size_t classOf(std::size_t size) { return (size - 1) / kGrain; }

char* newBlock() {
  void* block = std::aligned_alloc(kBlockSize, kBlockSize);
  if (!block) throw std::bad_alloc();
#if defined(__linux__)
  madvise(block, kBlockSize, MADV_HUGEPAGE); // advice: without huge pages it works as well, only slower
#endif
  return static_cast<char*>(block);
}

// What threads that have ended leave behind. Never destroyed: objects may be freed until the very end.
struct Leftovers {
  std::mutex mutex;
  FreeLists free{};
};
Leftovers& leftovers() {
  static auto* kept = new Leftovers;
  return *kept;
}

// Of one thread. The rest of its block is given up when it ends: at most one block a thread. Without a
// destructor, since objects of static lifetime may be freed after those of the thread are gone.
class Pieces {
public:
  void handOver() {
    Leftovers& kept = leftovers();
    const std::lock_guard lock(kept.mutex);
    for (std::size_t i = 0; i < kClasses; ++i) {
      while (FreePiece* piece = free_[i]) {
        free_[i] = piece->next;
        piece->next = kept.free[i];
        kept.free[i] = piece;
      }
    }
  }

  void* take(std::size_t sizeClass) {
    if (FreePiece* piece = free_[sizeClass]) {
      free_[sizeClass] = piece->next;
      return piece;
    }
    const std::size_t size = (sizeClass + 1) * kGrain;
    if (static_cast<std::size_t>(end_ - next_) < size) {
      if (takeLeftovers(sizeClass)) return take(sizeClass);
      handOverAtEnd();
      next_ = newBlock();
      end_ = next_ + kBlockSize;
    }
    void* piece = next_;
    next_ += size;
    return piece;
  }

  void give(void* memory, std::size_t sizeClass) noexcept {
    auto* piece = new (memory) FreePiece;
    piece->next = free_[sizeClass];
    free_[sizeClass] = piece;
  }

private:
  static void handOverAtEnd();
  bool takeLeftovers(std::size_t sizeClass) {
    Leftovers& kept = leftovers();
    const std::lock_guard lock(kept.mutex);
    free_[sizeClass] = kept.free[sizeClass];
    kept.free[sizeClass] = nullptr;
    return free_[sizeClass] != nullptr;
  }

  FreeLists free_{};
  char* next_ = nullptr;
  char* end_ = nullptr;
};

thread_local Pieces pieces;

struct AtThreadEnd {
  ~AtThreadEnd() { pieces.handOver(); }
  void arm() {}
};
thread_local AtThreadEnd atThreadEnd;

void Pieces::handOverAtEnd() { atThreadEnd.arm(); }

// The system ends a process that has no memory left to note such a destructor: the first thread, which loads
// this library, is noted before there is anything to lose.
[[maybe_unused]] const bool firstThreadIsArmed = (atThreadEnd.arm(), true);

} // namespace

void* ZnDbObjectPool::allocate(std::size_t size) {
  if (!kPooled || size == 0 || size > kLargest) return ::operator new(size);
  return pieces.take(classOf(size));
}

void ZnDbObjectPool::release(void* piece, std::size_t size) noexcept {
  if (!piece) return;
  if (!kPooled || size == 0 || size > kLargest)
    ::operator delete(piece);
  else
    pieces.give(piece, classOf(size));
}
