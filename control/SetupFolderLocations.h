#pragma once

#include "control/modDefinitions.h"

namespace tessaly {

// Checks the folders and deletes and rebuilds the output folder, without a word of warning. `CancelRequested`
// is raised at its entry and lowered only when all went well.
void SetupFolderLocations(ConversionState& state);

}  // namespace tessaly
