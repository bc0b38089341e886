// Files that are being written and have not taken their place yet: what must go when the process is ended.
#pragma once

#include <csignal>

// Removes them all. Safe in a signal handler; afterwards no such file can be put in place, so the process
// should end. Threads other than the one that writes files must not run the handler.
void zndbRemovePartFiles() noexcept;

// Holds back the signals of this thread for the scope, for steps that a handler must not see half done.
class ZnSignalsHeld {
public:
  ZnSignalsHeld();
  ~ZnSignalsHeld();
  ZnSignalsHeld(const ZnSignalsHeld&) = delete;
  ZnSignalsHeld& operator=(const ZnSignalsHeld&) = delete;

private:
  sigset_t before_;
};

// One such file, known from enter to leave. The path belongs to the caller and stays where it is that long;
// the caller holds the signals back over both calls and what they go with.
class ZnPartFile {
public:
  ZnPartFile() = default;
  ~ZnPartFile() { leave(); }
  ZnPartFile(const ZnPartFile&) = delete;
  ZnPartFile& operator=(const ZnPartFile&) = delete;

  void enter(const char* path);
  void leave();

private:
  friend void zndbRemovePartFiles() noexcept;
  static ZnPartFile* first_;

  const char* path_ = nullptr; // null while unknown
  ZnPartFile *previous_ = nullptr, *next_ = nullptr;
};
