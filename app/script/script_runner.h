// Runs a script, line by line, on a drawing.
#pragma once

#include "app/script/script_session.h"
#include "app/script/script_text.h"

namespace app {

// Each line is one undo step, after which what is marked is evaluated. A line that fails is taken back whole
// and ends the run: false, with file, line, command and reason in the failure.
bool runScript(const std::vector<ScriptLine>& lines, const std::string& file, ScriptSession& session,
               Failure& failure);

} // namespace app
