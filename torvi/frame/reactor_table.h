// The module's reactors on variables, databases and the event object.
#pragma once

void attachTorviReactors();
void detachTorviReactors();
