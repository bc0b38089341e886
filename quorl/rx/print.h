// The host's command line, as far as one can write to it.
#pragma once

#include <functional>

#include "quorl/base/string.h"

using ZnPrintSink = std::function<void(const ZnString&)>;

// Formats as ZnString::format does ("%s" takes a wide text) and hands the text to the sink as it is,
// without adding a line end.
void znutPrintf(const wchar_t* pattern, ...);

// Where printed text goes; an empty function brings back the standard output. Returns the sink before.
ZnPrintSink znutSetPrintSink(ZnPrintSink sink);
