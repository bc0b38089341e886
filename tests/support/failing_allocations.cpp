// A library to be loaded before the program's own (LD_PRELOAD): from main on it counts the allocations of all
// libraries, and refuses one. FAIL_AT says which, from 1; with FAIL_ON set all after it are refused too.
// FAIL_COUNT names a file that gets the number of allocations at the end.
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
}

namespace {

using Main = int (*)(int, char**, char**);

std::atomic<bool> isCounting = false, goesOn = false;
std::atomic<long> count = 0, failsAt = 0;
Main programMain = nullptr;

bool isRefused() {
  if (!isCounting) return false;
  const long number = ++count;
  if (failsAt == 0 || (goesOn ? number < failsAt : number != failsAt)) return false;
  errno = ENOMEM;
  return true;
}

int countedMain(int argc, char** argv, char** environment) {
  const char* at = std::getenv("FAIL_AT");
  failsAt = at ? std::atol(at) : 0;
  goesOn = std::getenv("FAIL_ON") != nullptr;
  isCounting = true;
  const int code = programMain(argc, argv, environment);
  isCounting = false;
  if (const char* path = std::getenv("FAIL_COUNT")) {
    if (std::FILE* file = std::fopen(path, "w")) {
      std::fprintf(file, "%ld\n", count.load());
      std::fclose(file);
    }
  }
  return code;
}

} // namespace

extern "C" {

void* malloc(size_t size) { return isRefused() ? nullptr : __libc_malloc(size); }
void* calloc(size_t number, size_t size) { return isRefused() ? nullptr : __libc_calloc(number, size); }
void* realloc(void* block, size_t size) { return isRefused() ? nullptr : __libc_realloc(block, size); }

int __libc_start_main(Main main, int argc, char** argv, void (*init)(), void (*fini)(), void (*loaderFini)(),
                      void* stackEnd) {
  using Start = int (*)(Main, int, char**, void (*)(), void (*)(), void (*)(), void*);
  programMain = main;
  const auto start = reinterpret_cast<Start>(dlsym(RTLD_NEXT, "__libc_start_main"));
  return start(countedMain, argc, argv, init, fini, loaderFini, stackEnd);
}

} // extern "C"
