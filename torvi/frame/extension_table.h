// The module's protocol extensions on classes of the host.
#pragma once

void addTorviExtensions();
// Deletes the extensions that it takes away.
void removeTorviExtensions();
