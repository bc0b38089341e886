// How many blocks of memory the test program has asked for so far, the host's library included.
#pragma once

long allocationCount();
