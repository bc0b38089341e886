// What the random editor can do to its drawings. A deed is a function of the random numbers that it draws, so
// that the same numbers do the same to the same drawings.
#pragma once

#include <array>
#include <random>
#include <string>

#include "editor/sheet.h"
#include "quorl/ge/matrix3d.h"

class Desk {
public:
  Desk();
  ~Desk();
  // One step with all laws held against it: an empty text, or what is broken.
  std::string step(std::uint32_t number);
  const std::string& story() const { return story_; } // what was done so far

private:
  friend struct DeedTable;
  using Ids = std::vector<ZnDbObjectId>;

  // Deeds
  void create();
  void createCenter();
  void createDimension();
  void createRecord();
  void transform();
  void changeTraits();
  void changeShape();
  void changeCenter();
  void changeRecord();
  void changeHeader();
  void erase();
  void unerase();
  void makeBlock();
  void insert();
  void explode();
  void copy();
  void copyAcross();
  void erasedAndChanged();
  std::string aborted();

  // Chance
  int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  double between(double low, double high);
  ZnGeMatrix3d someTransform();
  template<class List> auto one(const List& list) {
    return list[static_cast<size_t>(pick(static_cast<int>(std::size(list))))];
  }
  void tell(const std::string& text) { story_ += "  " + text + '\n'; }

  // What there is
  ZnDbDatabase& db() { return sheets_[current_]->db(); }
  Ids live(const ZnRxClass* cls);
  Ids drawn(); // by the user, not by center objects
  Ids spaces();
  ZnDbObjectId add(class ZnDbEntity* entity, ZnDbObjectId space);
  void addPart(ZnDbObjectId space);
  Ids edgesIn(ZnDbObjectId space, bool round);
  std::vector<Ids> pathsTo(ZnDbObjectId space);
  Quorl::ErrorStatus clone(const Ids& ids, ZnDbDatabase& to, ZnDbObjectId owner);
  void actOnce();

  std::mt19937 random_;
  std::array<std::unique_ptr<Sheet>, 2> sheets_;
  size_t current_ = 0;
  std::string story_;
};
