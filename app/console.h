// What the program says: data and notes on standard output, faults on standard error.
#pragma once

#include <string>

#include "app/failure.h"

namespace app {

class Console {
public:
  // No notes and no progress; data and faults are still told.
  void setQuiet(bool quiet) { quiet_ = quiet; }
  bool isQuiet() const { return quiet_; }
  // Standard output carries data that others read: notes go to standard error.
  void setDataOnly(bool dataOnly) { dataOnly_ = dataOnly; }

  void data(const std::string& text);    // as it is
  void finding(const std::string& line); // data, some of which may come from a damaged file
  void note(const std::string& line) const;
  void fault(const Failure& failure) const;
  void fault(const std::string& line) const;
  // Whether standard output took all data; if not, it was told.
  bool isDataThrough() const { return dataThrough_; }

private:
  bool quiet_ = false;
  bool dataOnly_ = false;
  bool dataThrough_ = true;
};

} // namespace app
