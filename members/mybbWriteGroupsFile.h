#pragma once

#include "control/modDefinitions.h"

namespace tessaly {

// Writes a row for each group in the order of its first sighting, and finishes the family.
void mybbWriteGroupsFile(ConversionState& state);

}  // namespace tessaly
