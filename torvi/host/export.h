// What the module hands to others.
#pragma once

#define TORVI_EXPORT __attribute__((visibility("default")))
