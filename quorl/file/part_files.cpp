#include "quorl/file/part_files.h"

#include <mutex>
#include <unistd.h>

namespace {

// Writers of files in several threads share the list; who removes does not wait for them.
std::mutex& listMutex() {
  static std::mutex mutex;
  return mutex;
}

} // namespace

ZnSignalsHeld::ZnSignalsHeld() {
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before_);
}

ZnSignalsHeld::~ZnSignalsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

ZnPartFile* ZnPartFile::first_ = nullptr;

void ZnPartFile::enter(const char* path) {
  const std::lock_guard lock(listMutex());
  path_ = path;
  next_ = first_;
  if (next_) next_->previous_ = this;
  first_ = this;
}

void ZnPartFile::leave() {
  if (!path_) return;
  const std::lock_guard lock(listMutex());
  (previous_ ? previous_->next_ : first_) = next_;
  if (next_) next_->previous_ = previous_;
  path_ = nullptr;
  previous_ = next_ = nullptr;
}

void zndbRemovePartFiles() noexcept {
  for (const ZnPartFile* file = ZnPartFile::first_; file; file = file->next_) unlink(file->path_);
}
