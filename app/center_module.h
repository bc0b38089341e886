// The way to the user's commands on center objects, which a module brings.
#pragma once

#include <functional>
#include <string>

#include "exchange/json.h"
#include "quorl/rx/command_registry.h"

namespace app {

// Loads the module of center objects if it lies on the module path, so that drawings open with what it draws.
// A program without it works on; what is missing is told when a command needs it. False where
// one lies there and there is no memory for it: then the drawing would lag behind without a word.
bool loadCenterModule();
// Lets it go; no drawing may be open.
void unloadCenterModule();

// A command's arguments and result, and who hears of its progress.
class CommandCall : public ZnRxCommandContext {
public:
  std::function<void(size_t done, size_t total)> onProgress;
  void progress(size_t done, size_t total) override {
    if (onProgress) onProgress(done, total);
  }
};

// Runs the command on the working drawing. False, with the reason: what is missing, or what the command says.
bool runCommand(const wchar_t* name, CommandCall& call, std::string& why);
// The same with what the command takes and tells, see exchange/. A result of another kind is a failure too.
template<class Wish, class Outcome>
bool runCommand(const wchar_t* name, const Wish& wish, CommandCall& call, Outcome& outcome,
                std::string& why) {
  call.arguments() = exchange::toJson(wish);
  if (!runCommand(name, call, why)) return false;
  std::string wrong;
  if (exchange::fromJson(call.result(), outcome, wrong)) return true;
  why = "the command tells \"" + wrong + "\" in another way than this program reads it";
  return false;
}
bool hasCommand(const wchar_t* name);
// What is missing for a command that is not there, in one sentence.
std::string missingCommand(const wchar_t* name);

} // namespace app
