#include "quorl/db/core/object_pool.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <random>
#include <thread>
#include <vector>

namespace {

struct Piece {
  unsigned char* memory = nullptr;
  std::size_t size = 0;
  unsigned char filled = 0;
};

bool holds(const Piece& piece) {
  for (std::size_t i = 0; i < piece.size; ++i)
    if (piece.memory[i] != piece.filled) return false;
  return true;
}

Piece make(std::size_t size, unsigned char fill) {
  Piece piece{static_cast<unsigned char*>(ZnDbObjectPool::allocate(size)), size, fill};
  std::memset(piece.memory, fill, size);
  return piece;
}

// Pieces of all sizes, taken and given back in any order: none overlaps another, all are aligned.
TEST(ObjectPool, PiecesAreTheirOwnersAlone) {
  std::mt19937 random(7);
  std::vector<Piece> pieces;
  for (int i = 0; i < 40000; ++i) {
    if (pieces.empty() || random() % 5 < 3) {
      pieces.push_back(make(1 + random() % 1100, static_cast<unsigned char>(random())));
      ASSERT_EQ(reinterpret_cast<std::uintptr_t>(pieces.back().memory) % 16, 0u);
    } else {
      std::swap(pieces[random() % pieces.size()], pieces.back());
      ASSERT_TRUE(holds(pieces.back()));
      ZnDbObjectPool::release(pieces.back().memory, pieces.back().size);
      pieces.pop_back();
    }
  }
  ASSERT_GT(pieces.size(), 1000u);
  for (const Piece& piece : pieces) {
    EXPECT_TRUE(holds(piece));
    ZnDbObjectPool::release(piece.memory, piece.size);
  }
  ZnDbObjectPool::release(nullptr, 8);
}

// What one thread makes another may free, and may outlive both.
TEST(ObjectPool, PiecesCrossThreads) {
  std::vector<Piece> made;
  std::thread([&made] {
    for (int i = 0; i < 5000; ++i) made.push_back(make(144, static_cast<unsigned char>(i)));
  }).join();
  for (const Piece& piece : made) EXPECT_TRUE(holds(piece));
  std::thread([&made] {
    for (const Piece& piece : made) ZnDbObjectPool::release(piece.memory, piece.size);
  }).join();
  std::map<void*, int> owners;
  for (int i = 0; i < 20000; ++i) EXPECT_EQ(++owners[ZnDbObjectPool::allocate(144)], 1);
  for (const auto& [piece, owner] : owners) ZnDbObjectPool::release(piece, 144);
}

} // namespace
