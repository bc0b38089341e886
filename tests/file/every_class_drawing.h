// The sample drawing with associations: an object of every class of the host, and every kind of value.
#pragma once

#include "file/sample_drawing.h"

namespace fileTest {

std::unique_ptr<ZnDbDatabase> everyClassDrawing();

} // namespace fileTest
