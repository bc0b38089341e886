// A drawing under the random editor's hands, with the look of every state that undoing leads back to.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "quorl/db/core/database.h"

// What differs is told as a text; an empty one is no complaint.
class Sheet {
public:
  Sheet();

  ZnDbDatabase& db() { return *db_; }
  // A step of the user's begins, and ends in an evaluation of what it changed.
  void begin();
  std::string end(bool asText);
  // Back by so many steps and forth again by so many.
  std::string wander(size_t back, size_t forth);
  // Goes on with what a file of the drawing holds; there is nothing to undo then.
  std::string reopen(bool asText);

  // Equal for drawings that a user can't tell apart: without the numbers that are given only once.
  static std::string look(const ZnDbDatabase& database);
  // The first line that differs; tolerant ones let reals differ by rounding.
  static std::string difference(const std::string& is, const std::string& was, bool tolerant = false);

private:
  std::string checkSound();
  std::string checkHistory(const std::string& now);
  std::string checkRebuilt(ZnDbDatabase& database);
  std::string checkFile(bool asText);
  std::string oneStep(bool back);

  std::unique_ptr<ZnDbDatabase> db_;
  std::vector<std::string> states_; // look after each step that can be undone or redone
  size_t at_ = 0;
};
