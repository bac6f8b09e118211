#pragma once

#include "cli/options.h"

namespace tessaly {

// Plays one run over the board without writing anything, and tells what it found. Gives the program's exit
// status.
int RunCheck(const Options& options);

}  // namespace tessaly
