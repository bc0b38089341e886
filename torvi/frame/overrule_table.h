// The module's overrules on classes of the host.
#pragma once

void addTorviOverrules();
void removeTorviOverrules();
