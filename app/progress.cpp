#include "app/progress.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>

#include <fmt/format.h>

#include "app/interruption.h"

namespace app {

Progress::Progress(std::string label, bool quiet)
    : label_(std::move(label)) {
  if (!quiet && isatty(fileno(stderr))) thread_ = std::thread([this] { run(); });
}

Progress::~Progress() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
  }
  ended_.notify_one();
  thread_.join();
  if (drawn_) std::fputs("\r\033[K", stderr);
}

void Progress::stage(const std::string& what) {
  const std::lock_guard lock(mutex_);
  stage_ = what;
  done_ = total_ = 0;
}

void Progress::update(size_t done, size_t total) {
  done_ = done;
  total_ = total;
}

void Progress::run() {
  leaveSignalsToOthers();
  using namespace std::chrono_literals;
  std::unique_lock lock(mutex_);
  if (ended_.wait_for(lock, 1s, [this] { return stop_; })) return;
  do draw();
  while (!ended_.wait_for(lock, 100ms, [this] { return stop_; }));
}

// With the mutex held.
void Progress::draw() {
  constexpr size_t kWidth = 30;
  const size_t total = total_, done = std::min<size_t>(done_, total);
  std::string line = fmt::format("\r{}: {}", label_, stage_);
  if (total > 0) {
    const size_t filled = done * kWidth / total;
    line += fmt::format(" [{}{}] {} of {}", std::string(filled, '='), std::string(kWidth - filled, ' '), done,
                        total);
  } else {
    line += " ...";
  }
  line += "\033[K";
  std::fputs(line.c_str(), stderr);
  std::fflush(stderr);
  drawn_ = true;
}

} // namespace app
