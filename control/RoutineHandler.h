#pragma once

#include <string_view>

#include "control/modDefinitions.h"
#include "text/RunTimeError.h"

namespace tessaly {

// What every routine with a routine-wide handler does with a trapped failure: records and shows the number,
// the routine's label and the description, and asks the run to stop.
void RoutineHandler(ConversionState& state, std::u16string_view label, const RunTimeError& error);

// Whether the program runs inside the development environment, where a handler would halt.
bool InDevelopmentHost(const ConversionState& state);

}  // namespace tessaly
