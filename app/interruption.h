// What becomes of files that are being written when somebody ends the program.
#pragma once

namespace app {

// From now on a signal that ends the program removes them first. Signals that were ignored when the program
// began stay so. A write beyond a limit on the size of files fails with its reason instead of ending it.
void leaveNothingOnSignals();

// From now on running out of memory ends the program with a message and the exit code for failures: to go on
// would take memory, and the files that were read are as they were.
void endWithoutMemory();
// Once the work is done, a want of memory on the way out takes nothing away from its exit code.
void endWithoutMemoryAs(int exitCode);

// Called by threads that write no files: signals go to the one that does.
void leaveSignalsToOthers();

} // namespace app
