// The commands that host and modules offer, by name.
#pragma once

#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "quorl/base/error_status.h"
#include "quorl/base/string.h"

// What passes between a running command and its caller: plain values, so that neither side needs to know the
// other's classes. Texts are UTF-8, objects of a drawing are named by handle, members keep their order. A
// command works on the working drawing.
class ZnRxCommandContext {
public:
  virtual ~ZnRxCommandContext() = default;

  using Value = nlohmann::ordered_json;

  // By name, as the command documents them; null when there is nothing to say.
  Value& arguments() { return arguments_; }
  const Value& arguments() const { return arguments_; }
  Value& result() { return result_; }
  const Value& result() const { return result_; }

  // Why the command failed, in one sentence without a full stop; hands the status on.
  Quorl::ErrorStatus fail(Quorl::ErrorStatus status, const ZnString& message) {
    message_ = message;
    return status;
  }
  const ZnString& message() const { return message_; }

  // Called by commands that take long, as often as they like.
  virtual void progress(size_t /*done*/, size_t /*total*/) {}

private:
  Value arguments_, result_;
  ZnString message_;
};

using ZnRxCommandFunction = std::function<Quorl::ErrorStatus(ZnRxCommandContext&)>;

struct ZnRxCommand {
  ZnString group;
  ZnString name;
  ZnRxCommandFunction run;
};

class ZnRxCommandRegistry {
public:
  static ZnRxCommandRegistry& instance();

  // Names are global and compared without regard to case. eDuplicateKey when the name is taken, in
  // whatever group; eInvalidInput for an empty name, group or function.
  Quorl::ErrorStatus addCommand(const ZnString& group, const ZnString& name, ZnRxCommandFunction run);
  // A module removes its group before it goes, since the functions are its code. eKeyNotFound when no
  // command is in it; group names are compared without regard to case.
  Quorl::ErrorStatus removeGroup(const ZnString& group);
  // Null when there is none; holds until commands are added or removed.
  const ZnRxCommand* find(std::wstring_view name) const;
  // Sorted by name.
  std::vector<const ZnRxCommand*> commands() const;

private:
  // Under the names in lower case.
  std::map<std::wstring, ZnRxCommand> commands_;
};
