#include "app/interruption.h"

#include <csignal>
#include <new>
#include <string_view>
#include <unistd.h>

#include "app/commands/command.h"
#include "quorl/file/part_files.h"

namespace app {

namespace {

constexpr int kEnding[] = {SIGHUP, SIGINT, SIGTERM, SIGQUIT, SIGPIPE, SIGXCPU};

// The default handling is back when this is called: the second signal ends the program as the first would
// have.
void clearAndEnd(int signal) {
  zndbRemovePartFiles();
  raise(signal);
}

int codeOfDoneWork = kFailed;

[[noreturn]] void endForWantOfMemory() {
  constexpr std::string_view kText = "quorl: out of memory\n";
  zndbRemovePartFiles();
  [[maybe_unused]] const ssize_t told = write(STDERR_FILENO, kText.data(), kText.size());
  _exit(kFailed);
}

} // namespace

void leaveNothingOnSignals() {
  for (const int signal : kEnding) {
    struct sigaction before {};
    if (sigaction(signal, nullptr, &before) != 0 || before.sa_handler == SIG_IGN) continue;
    struct sigaction clearing {};
    clearing.sa_handler = clearAndEnd;
    clearing.sa_flags = static_cast<int>(SA_RESETHAND);
    sigfillset(&clearing.sa_mask);
    sigaction(signal, &clearing, nullptr);
  }
  std::signal(SIGXFSZ, SIG_IGN);
}

void endWithoutMemoryAs(int exitCode) {
  codeOfDoneWork = exitCode;
  std::set_new_handler([] { _exit(codeOfDoneWork); });
}

void endWithoutMemory() { std::set_new_handler(endForWantOfMemory); }

void leaveSignalsToOthers() {
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, nullptr);
}

} // namespace app
