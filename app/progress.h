// Shows on a terminal how far a piece of work is that takes more than a second.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace app {

// Drawn on standard error by a thread of its own, so that work that does not report shows too. Where standard
// error is no terminal, and with quiet, nothing is drawn.
class Progress {
public:
  Progress(std::string label, bool quiet);
  ~Progress(); // wipes the bar
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // What is done now; the fraction starts anew.
  void stage(const std::string& what);
  void update(size_t done, size_t total);

private:
  void run();
  void draw();

  std::string label_, stage_;
  std::mutex mutex_;
  std::condition_variable ended_;
  bool stop_ = false;
  std::atomic<size_t> done_ = 0, total_ = 0;
  bool drawn_ = false;
  std::thread thread_;
};

} // namespace app
