// A painter that writes down what a form draws, for tests to read.
#pragma once

#include "ui/display_list.h"

namespace quillet::testing {

using RecordingPainter = DisplayList;

}  // namespace quillet::testing
