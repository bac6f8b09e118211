#pragma once

#include <cstdint>
#include <string>

#include "cli/convert.h"
#include "cli/options.h"

namespace tessaly {

// Finishes the board whose import files lie in the folder that the operator names. Gives the program's exit
// status.
int RunFinish(const FinishWords& words);

// Finishes what a run has just left, with the note that it has gathered.
int FinishRun(const ConversionState& state, const Options& options);

}  // namespace tessaly
