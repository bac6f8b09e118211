#pragma once

#include "control/modDefinitions.h"

namespace tessaly {

// The whole conversion: one synchronous run from the checks to the summary. Nothing is raised by the phases;
// a failure of the run's own statements, such as a split size out of range, passes to the caller.
void cmdConvert_Click(ConversionState& state);

// Asks the run to stop as soon as possible.
void cmdCancel_Click(ConversionState& state);

}  // namespace tessaly
