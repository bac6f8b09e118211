#pragma once

#include "cli/options.h"

namespace tessaly {

enum ExitStatus : int { kAllWell = 0, kTrouble = 1, kWrongUsage = 2, kUntrapped = 3 };

// One run: the fields filled, Convert clicked once, the report written. Gives the program's exit status.
int RunConversion(const Options& options);

}  // namespace tessaly
