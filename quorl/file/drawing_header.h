// The values of a drawing that stand outside of its objects, as files hold them.
#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "quorl/db/core/database.h"
#include "quorl/file/file_error.h"

class ZnHandleIndex;

struct ZnDrawingHeader {
  static constexpr size_t kIds = 15;
  static constexpr size_t kUcs = 12; // three rows of four

  std::array<std::uint64_t, kIds> handles{}; // 0 for what is erased or was never set
  std::uint64_t nextHandle = 0;
  std::uint64_t objectCount = 0;
  int version = 0, maintenanceVersion = 0;
  int insertionUnits = 0;
  std::array<double, kUcs> ucs{};
  std::vector<std::pair<ZnString, ZnRxVariableValue>> variables; // by name

  // What one of the ids must name. Tables come first.
  struct Place {
    const char* name;
    ZnDbObjectId ZnDbDatabase::HeaderIds::*place;
    ZnRxClass* (*cls)();
    bool required;
    const wchar_t* record = nullptr; // the name of a record that every drawing has
    ZnDbObjectId ZnDbDatabase::HeaderIds::*substitute = nullptr;
  };
  static constexpr size_t kTables = 4, kModelSpace = 5;
  static const Place& place(size_t index);
  static const char* idName(size_t index) { return place(index).name; }
  // False when a table, a space or a standard record that no drawing can be without is missing.
  static bool of(const ZnDbDatabase& database, std::uint64_t objectCount, ZnDrawingHeader& header,
                 ZnFileError& error);
  // Takes the values over into a drawing whose objects are all in. False when a required object is missing or
  // of a wrong class. A current layer, linetype or space that is missing becomes the standard one.
  bool apply(ZnDbDatabase& database, const ZnHandleIndex& index, ZnFileError& error) const;
};
